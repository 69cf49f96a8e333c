// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/store/StoreFixture.h"

namespace pim {
namespace {

using testing::ExpectContact;
using testing::ExpectItem;
using testing::FillContact;
using testing::FillItem;

// What every store promises, whichever it is.
class StoreContract : public testing::StoreFixture {};

INSTANTIATE_TEST_SUITE_P(Stores, StoreContract, testing::AllStores(), testing::NameOfStore);

TEST_P(StoreContract, VisitsByKeyInTheirOrder) {
  CCalendars items;
  for (const CalendarType kind : {CalendarType::Event, CalendarType::Memo})
    items.AddNew().calendar_type = static_cast<std::uint8_t>(kind);
  ASSERT_EQ(store->SaveCalendars(items, true), 2);
  CContacts contacts;
  for (const char16_t* name : {u"a", u"b", u"c"}) contacts.AddNew().formatted_name = name;
  FillContact(contacts.AddNew());
  ASSERT_EQ(store->SaveContacts(contacts, 0, true), 4);
  const std::int32_t full = contacts[3].tag;
  std::string names;
  const std::int32_t keys[] = {3, 99, 1, -1, 0, 3};
  EXPECT_EQ(store->VisitContacts(keys,
                                 [&](CContact& contact) {
                                   names += static_cast<char>(contact.formatted_name.view()[0]);
                                   return names.size() < 3;
                                 }),
            3);
  EXPECT_EQ(names, "cac");
  EXPECT_EQ(store->VisitContacts({&full, 1},
                                 [&](CContact& contact) {
                                   ExpectContact(contact, contacts[3]);
                                   return true;
                                 }),
            1);
  const std::int32_t both[] = {2, 1};
  std::string kinds;
  EXPECT_EQ(store->VisitCalendars(both,
                                  [&](CCalendar& item) {
                                    kinds += std::to_string(item.calendar_type);
                                    return true;
                                  }),
            2);
  EXPECT_EQ(kinds, "31");
  const auto throws = [](CContact&) -> bool { throw 7; };
  EXPECT_THROW(static_cast<void>(store->VisitContacts(keys, throws)), int);
}

TEST_P(StoreContract, DeletesWithAllThatBelongsToARecord) {
  CContacts contacts;
  FillContact(contacts.AddNew());
  contacts[0].photo = u"shared";
  FillContact(contacts.AddNew());
  contacts[1].photo = u"own";
  contacts[1].hobby = u"another";
  contacts.AddNew().photo = u"shared";
  ASSERT_EQ(store->SaveContacts(contacts, SaveGroup(u"g"), false), 3);
  const std::int32_t keys[] = {contacts[0].tag, 99, contacts[1].tag, contacts[0].tag};
  std::vector<WideString> pictures;
  {
    const StoreTransaction undone(*store);
    EXPECT_EQ(store->DeleteContacts(keys, pictures), 2);
    EXPECT_EQ(CountContacts(), 1);
    EXPECT_EQ(CountLinks(), 1);
  }
  EXPECT_EQ(CountContacts(), 3);
  EXPECT_EQ(CountLinks(), 3);
  EXPECT_EQ(pictures, std::vector<WideString>{u"own"});
  pictures.clear();
  EXPECT_EQ(store->DeleteContacts(keys, pictures), 2);
  EXPECT_EQ(pictures, std::vector<WideString>{u"own"});
  EXPECT_EQ(CountLinks(), 1);
  // what was deleted isn't there any more, and no key is given twice
  CContacts again;
  FillContact(again.AddNew());
  EXPECT_EQ(store->SaveContacts(again, 0, false), 1);
  EXPECT_EQ(again[0].tag, 4);
  CContacts loaded;
  ASSERT_EQ(store->LoadContacts(loaded), 2);
  ExpectContact(loaded[1], again[0]);
}

TEST_P(StoreContract, DeletesItems) {
  CCalendars items;
  FillItem(items.AddNew(), RECUR_WEEKLY);
  FillItem(items.AddNew(), RECUR_WEEKLY);
  ASSERT_EQ(store->SaveCalendars(items, true), 2);
  const std::int32_t highest = items[1].tag;
  EXPECT_EQ(store->DeleteCalendars({&highest, 1}), 1);
  EXPECT_EQ(store->DeleteCalendars({&highest, 1}), 0);
  const StoreReading reading(*store);
  EXPECT_EQ(store->DeleteCalendars({&highest, 1}), -1);
}

TEST_P(StoreContract, ContactsComeBackWhole) {
  CContacts saved;
  FillContact(saved.AddNew());
  saved.AddNew();
  FillContact(saved.AddNew());
  saved[0].NewGroup(u"Friends");
  for (std::int32_t i = 0; i < 3; ++i) saved[i].tag = kUnsavedTag;
  ASSERT_EQ(store->SaveContacts(saved, 0, true), 3) << store->LastError();
  // Now the other way round: what goes away and what grows.
  saved[1].NewNickname(u"new");
  saved[1].NewTelephone(u"3", 0, false, -1);
  CContacts changed;
  changed.AddNew().tag = saved[2].tag;
  changed[0].NewTelephone(u"4", 1, false, -1);
  ASSERT_EQ(store->SaveContacts(saved, 0, true), 3);
  ASSERT_EQ(store->SaveContacts(changed, 0, false), 1);

  CContacts read;
  ASSERT_EQ(store->LoadContacts(read), 3);
  const CContact* expected[] = {&saved[0], &saved[1], &changed[0]};
  std::int32_t visited = 0;
  for (std::int32_t i = 0; i < 3; ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(read[i].tag, i + 1);
    EXPECT_EQ(read[i].GetGroupCount(), 0);
    ExpectContact(read[i], *expected[i]);
  }
  EXPECT_EQ(store->VisitContacts([&](CContact& contact) {
    ExpectContact(contact, *expected[visited]);
    return ++visited < 2;
  }),
            2);
  EXPECT_THROW(static_cast<void>(store->VisitContacts([](CContact&) -> bool { throw 7; })), int);
  EXPECT_THROW(static_cast<void>(
                   store->VisitContacts([](CContact&) -> bool { throw std::runtime_error(""); })),
               std::runtime_error);
  EXPECT_EQ(
      store->VisitContacts([&](CContact&) { return store->SaveContacts(saved, 0, true) > 0; }), 1);
  EXPECT_TRUE(store->Begin());
  EXPECT_TRUE(store->Commit());
}

TEST_P(StoreContract, ItemsComeBackWhole) {
  CCalendars saved;
  for (std::int32_t type = 0; type <= 6; ++type) FillItem(saved.AddNew(), type);
  saved.AddNew().calendar_type = 2;
  saved.AddNew();
  ASSERT_EQ(store->SaveCalendars(saved, true), 9) << store->LastError();
  CCalendars read;
  ASSERT_EQ(store->LoadCalendars(CalendarType::Event, read), 7);
  for (std::int32_t i = 0; i < 7; ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(read[i].tag, saved[i].tag);
    ExpectItem(read[i], saved[i]);
  }
  ASSERT_EQ(store->VisitCalendars(CalendarType::Todo,
                                  [&](CCalendar& item) {
                                    ExpectItem(item, saved[7]);
                                    return true;
                                  }),
            1);
  EXPECT_EQ(store->LoadCalendars(CalendarType::Memo, read), 0);
  EXPECT_EQ(store->SaveCalendars(read, true), 7);  // the same again, under their keys
  EXPECT_EQ(store->LoadCalendars(CalendarType::Event, read), 7);
}

// However many there are, and whatever their lists' lengths: stores write many rows at once.
TEST_P(StoreContract, EachKeepsItsOwnLists) {
  CContacts saved;
  for (std::int32_t i = 0; i < 333; ++i) {
    CContact& contact = saved.AddNew();
    const WideString name(1, static_cast<char16_t>(u'A' + i % 99));
    contact.formatted_name = i % 7 == 0 ? WideString{} : name;
    for (std::int32_t n = 0; n < i % 5; ++n)
      contact.NewTelephone((name + static_cast<char16_t>(u'0' + n)).c_str(), 1, false, -1);
    if (i == 100) contact.NewNickname(u"the only one");
  }
  ASSERT_EQ(store->SaveContacts(saved, 0, true), 333) << store->LastError();
  CContacts read;
  ASSERT_EQ(store->LoadContacts(read), 333);
  for (std::int32_t i = 0; i < 333; ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(read[i].tag, i + 1);
    ExpectContact(read[i], saved[i]);
  }
}

TEST_P(StoreContract, KeysAreGivenOnce) {
  CContacts contacts;
  for (const std::int32_t tag : {0, -1, 65535, 77, 2}) contacts.AddNew().tag = tag;
  ASSERT_EQ(store->SaveContacts(contacts, -1, true), 5);  // 2 was no one's before
  for (std::int32_t i = 0; i < 5; ++i) EXPECT_EQ(contacts[i].tag, i + 1);
  CContacts many;
  for (std::int32_t i = 0; i < 65540; ++i) many.AddNew();
  ASSERT_EQ(store->SaveContacts(many, -1, true), 65540);
  EXPECT_EQ(many[65528].tag, 65534);
  EXPECT_EQ(many[65529].tag, 65536);
  Open();
  const std::int32_t last[] = {many[65539].tag};
  std::vector<WideString> pictures;
  EXPECT_EQ(store->DeleteContacts(last, pictures), 1);
  contacts[0].tag = 0;
  EXPECT_EQ(store->SaveContacts(contacts, -1, true), 5);
  EXPECT_EQ(contacts[0].tag, last[0] + 1);
}

TEST_P(StoreContract, LeavesOutWhatIsThere) {
  const auto contact = [](CContacts& contacts, WideStringView name, WideStringView photo) {
    contacts.AddNew().formatted_name = name;
    contacts[contacts.GetCount() - 1].photo = photo;
  };
  CContacts first;
  contact(first, u"Ann", u"1.x");
  contact(first, u"Ann", u"2.x");  // one name, one picture
  contact(first, u"Ann", u"2.y");
  contact(first, u"Ann", u"gone");
  contact(first, u"Ann", u"");  // a picture that isn't there is none
  contact(first, u"ann", u"");
  EXPECT_EQ(store->SaveContacts(first, 0, false), 4);
  EXPECT_EQ(first[1].tag, first[0].tag);
  EXPECT_EQ(first[4].tag, first[3].tag);

  CContacts again;
  contact(again, u"Ann", u"3.y");
  contact(again, u"Bob", u"");
  again[0].created_time = testing::Moment(2024, 1, 1);
  EXPECT_EQ(store->SaveContacts(again, 0, false), 1);
  EXPECT_EQ(again[0].tag, first[2].tag);
  again[1].formatted_name = u"Rob";  // stored as Rob, so that Bob is new again
  EXPECT_EQ(store->SaveContacts(again, 0, true), 2);
  {
    StoreTransaction undone(*store);
    CContacts gone;
    contact(gone, u"Eve", u"");
    EXPECT_EQ(store->SaveContacts(gone, 0, false), 1);
  }
  CContacts last;
  for (const char16_t* name : {u"Rob", u"Bob", u"Eve"}) contact(last, name, u"");
  EXPECT_EQ(store->SaveContacts(last, 0, false), 2);
  EXPECT_EQ(last[0].tag, again[1].tag);

  CCalendars items;
  FillItem(items.AddNew(), RECUR_MONTHLY_BY_POS);
  FillItem(items.AddNew(), RECUR_MONTHLY_BY_POS);
  FillItem(items.AddNew(), RECUR_WEEKLY);
  EXPECT_EQ(store->SaveCalendars(items, false), 2);
  EXPECT_EQ(items[1].tag, items[0].tag);
}

TEST_P(StoreContract, NothingIsWrittenWhileReading) {
  EXPECT_EQ(SaveOne(u"before"), 1);
  {
    const StoreReading outer(*store);
    const StoreReading inner(*store);
    EXPECT_TRUE(outer.IsOpen() && inner.IsOpen());
    EXPECT_EQ(SaveOne(u"not now"), -1);
    EXPECT_FALSE(StoreTransaction(*store).IsOpen());
    EXPECT_EQ(CountContacts(), 1);
  }
  EXPECT_EQ(SaveOne(u"behind"), 1);
}

// What a save updates is no longer there for its new records to equal.
TEST_P(StoreContract, UpdatesComeFirst) {
  EXPECT_EQ(SaveOne(u"X"), 1);
  CContacts both;
  both.AddNew().formatted_name = u"X";
  both.AddNew().formatted_name = u"Y";
  both[1].tag = 1;
  EXPECT_EQ(store->SaveContacts(both, 0, false), 2);
  EXPECT_EQ(both[0].tag, 2);
  CContactGroups groups;
  groups.AddNew().group_name = u"A";
  groups.AddNew().group_name = u"B";
  groups[1].group_id = SaveGroup(u"A");
  EXPECT_EQ(store->SaveContactGroups(groups, true), 2);
  EXPECT_NE(groups[0].group_id, groups[1].group_id);
}

// Nothing that was undone is taken for stored, and no key of it for another record's.
TEST_P(StoreContract, RollbacksAreForgotten) {
  CContacts stored;
  for (const char16_t* name : {u"a", u"b", u"c"}) stored.AddNew().formatted_name = name;
  EXPECT_EQ(store->SaveContacts(stored, 0, false), 3);
  stored.Delete(2);
  EXPECT_EQ(store->SaveContacts(stored, 0, false), 2);
  CContacts undone;
  undone.AddNew().formatted_name = u"new";
  {
    StoreTransaction outer(*store);
    EXPECT_EQ(store->SaveContacts(undone, 0, false), 1);
    {
      StoreTransaction inner(*store);
      EXPECT_EQ(SaveOne(u"x"), 1);
    }
    EXPECT_EQ(SaveOne(u"newer"), 1);
  }
  EXPECT_EQ(SaveOne(u"newer"), 1);
  EXPECT_EQ(store->SaveContacts(undone, 0, false), 1);
  EXPECT_EQ(CountContacts(), 5);

  CContacts broken;
  broken.AddNew().photo = u"broken";
  EXPECT_EQ(store->SaveContacts(broken, 0, true), 1);
  broken[0].tag = 0;
  EXPECT_EQ(SaveOne(u"before", true), 1);
  broken.AddNew().photo = u"other";
  broken.AddNew().formatted_name = u"ahead of it";
  std::swap(broken[0].formatted_name, broken[2].formatted_name);
  std::swap(broken[0].photo, broken[2].photo);
  picturesBreak = true;
  EXPECT_THROW(static_cast<void>(store->SaveContacts(broken, 0, false)), int);
  EXPECT_FALSE(store->Rollback());
  EXPECT_EQ(CountContacts(), 7);
  EXPECT_EQ(SaveOne(u"ahead of it"), 1);
}

TEST_P(StoreContract, RollbacksBringDuplicatesBack) {
  ASSERT_EQ(SaveOne(u"Ann", true), 1);
  const std::int32_t keys[] = {1};
  std::vector<WideString> pictures;
  {
    StoreTransaction transaction(*store);
    EXPECT_EQ(store->DeleteContacts(keys, pictures), 1);
    CContacts none;
    EXPECT_EQ(store->SaveContacts(none, 0, false), 0);  // looks at what is stored
  }
  EXPECT_EQ(SaveOne(u"Ann"), 0);
  EXPECT_FALSE(store->Commit());
  EXPECT_EQ(store->LastError().find("damaged"), std::string::npos);
}

TEST_P(StoreContract, TransactionsNest) {
  CContacts contacts;
  contacts.AddNew();
  {
    StoreTransaction outer(*store);
    EXPECT_EQ(store->SaveContacts(contacts, 0, true), 1);
    {
      StoreTransaction inner(*store);
      contacts[0].tag = 0;
      EXPECT_EQ(store->SaveContacts(contacts, 0, true), 1);
      SaveGroup(u"gone");
    }
    StoreTransaction kept(*store);
    SaveGroup(u"kept");
    EXPECT_TRUE(kept.Commit());
    EXPECT_TRUE(outer.Commit());
    EXPECT_FALSE(outer.Commit());
  }
  {
    StoreTransaction outer(*store);
    StoreTransaction inner(*store);
    SaveGroup(u"gone with the outer one");
    contacts[0].hobby = u"gone";
    contacts[0].tag = 1;
    EXPECT_EQ(store->SaveContacts(contacts, 0, true), 1);
    EXPECT_TRUE(inner.Commit());
  }
  CContactGroups groups;
  CContacts read;
  EXPECT_EQ(store->LoadContactGroups(groups), 1);
  EXPECT_EQ(store->LoadContacts(read), 1);
  EXPECT_TRUE(read[0].hobby.empty());
  EXPECT_FALSE(store->Rollback());
}

}  // namespace
}  // namespace pim
