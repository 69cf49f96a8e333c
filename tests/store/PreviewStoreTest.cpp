// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <initializer_list>
#include <utility>
#include <vector>

#include "pim/records/Calendar.h"
#include "pim/records/ContactGroups.h"
#include "pim/records/Contacts.h"
#include "pim/records/MemoryStore.h"
#include "pim/records/PreviewStore.h"

namespace pim {
namespace {

// A preview over a store that has one contact, Ann, with a picture, and one group.
class Preview : public ::testing::Test {
 protected:
  Preview() {
    const auto pictures = [](WideStringView name) {
      return NarrowString(1, static_cast<char>(name.front()));
    };
    stored_.SetPictureReader(pictures);
    preview_.SetPictureReader(pictures);
    preview_.OnSaved(
        [this](const CContact& contact, bool isNew) { told_.emplace_back(contact.tag, isNew); },
        [this](const CCalendar& item, bool isNew) { told_.emplace_back(item.tag, isNew); });
    Save(stored_, {u"Ann"});
    CContactGroups groups;
    groups.AddNew().group_name = u"Friends";
    EXPECT_EQ(stored_.SaveContactGroups(groups, true), 1);
  }

  // Contacts of these names, each with a picture that its name's first letter tells.
  static std::int32_t Save(RecordStore& store, std::initializer_list<const char16_t*> names,
                           bool saveFlag = false) {
    CContacts contacts;
    for (const char16_t* name : names) {
      CContact& contact = contacts.AddNew();
      contact.formatted_name = name;
      contact.photo = name;
    }
    return store.SaveContacts(contacts, 0, saveFlag);
  }
  using Told = std::vector<std::pair<std::int32_t, bool>>;
  Told TakeTold() { return std::exchange(told_, {}); }

  MemoryStore stored_;
  PreviewStore preview_{stored_};
  Told told_;
};

// Each record is compared with the stored ones and with those ahead of it, and gets the key that
// it would get.
TEST_F(Preview, TellsWhatSavingWouldDo) {
  EXPECT_EQ(Save(preview_, {u"Bob", u"Ann", u"Bob", u"Eve"}), 2);
  EXPECT_EQ(TakeTold(), (Told{{2, true}, {1, false}, {2, false}, {3, true}}));
  EXPECT_EQ(Save(preview_, {u"Eve", u"Ann"}), 0);
  EXPECT_EQ(TakeTold(), (Told{{3, false}, {1, false}}));
  EXPECT_EQ(Save(preview_, {u"Ann"}, true), 1);
  EXPECT_TRUE(TakeTold().front().second);
  CCalendars items;
  for (int i = 0; i < 2; ++i) items.AddNew().summary = u"lunch";
  EXPECT_EQ(preview_.SaveCalendars(items, false), 1);
  EXPECT_EQ(TakeTold(), (Told{{1, true}, {1, false}}));

  CContacts contacts;
  EXPECT_EQ(preview_.LoadContacts(contacts), 1);  // nothing is kept
  EXPECT_EQ(stored_.LoadContacts(contacts), 1);
}

TEST_F(Preview, ForgetsWhatIsRolledBack) {
  CContactGroups groups;
  for (const char16_t* name : {u"FRIENDS", u"Work"}) groups.AddNew().group_name = name;
  {
    const StoreTransaction undone(preview_);
    EXPECT_EQ(Save(preview_, {u"Bob"}), 1);
    EXPECT_EQ(preview_.SaveContactGroups(groups, true), 1);
    CContactGroups all;
    EXPECT_EQ(preview_.LoadContactGroups(all), 2);
  }
  TakeTold();
  EXPECT_EQ(Save(preview_, {u"Bob"}), 1);
  EXPECT_EQ(TakeTold(), (Told{{3, true}}));  // no key is given twice
  CContactGroups left;
  EXPECT_EQ(preview_.LoadContactGroups(left), 1);
  EXPECT_FALSE(preview_.Commit());
  EXPECT_FALSE(preview_.Rollback());
}

TEST_F(Preview, RefusesWhatCannotBeShown) {
  const std::int32_t key = 1;
  std::vector<WideString> pictures;
  EXPECT_EQ(preview_.DeleteContacts({&key, 1}, pictures), -1);
  EXPECT_EQ(preview_.DeleteCalendars({&key, 1}), -1);
  EXPECT_NE(preview_.LastError(), "");
  CContacts contacts;
  contacts.AddNew();
  EXPECT_EQ(preview_.SaveContacts(contacts, 99, true), -1);
  EXPECT_NE(preview_.LastError().find("no group 99"), std::string::npos);
  EXPECT_TRUE(TakeTold().empty());
  EXPECT_EQ(preview_.History(), nullptr);
}

}  // namespace
}  // namespace pim
