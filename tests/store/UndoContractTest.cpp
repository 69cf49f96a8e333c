// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <memory>

#include "tests/store/HistoryFixture.h"

namespace pim {
namespace {

// What every store's history promises of taking imports back, whichever it is.
class UndoContract : public testing::HistoryFixture {
 protected:
  // All that the store holds but its history: of a file, every row of every other table.
  std::string Content();

  void Expect(const UndoResult& result, std::int64_t contacts, std::int64_t links,
              std::int64_t groups, std::int64_t pictures) {
    EXPECT_EQ(result.contacts, contacts);
    EXPECT_EQ(result.links, links);
    EXPECT_EQ(result.groups, groups);
    EXPECT_EQ(result.pictures, pictures);
  }
};

std::string UndoContract::Content() {
  std::string content;
  const auto add = [&](std::int32_t key, WideStringView text) {
    content += std::to_string(key) + ' ' + NarrowString(text.begin(), text.end()) + '\n';
  };
  CContactGroups groups;
  CContactGroupPairs pairs;
  EXPECT_GE(store->VisitContacts([&](CContact& contact) {
    add(contact.tag, contact.formatted_name.view());
    return true;
  }),
            0);
  for (std::int32_t i = 0; i < store->LoadContactGroups(groups); ++i)
    add(groups[i].group_id, groups[i].group_name.view());
  for (std::int32_t i = 0; i < store->LoadContactGroupPairs(pairs); ++i)
    add(pairs[i].contact_id, std::u16string(1, static_cast<char16_t>(u'0' + pairs[i].group_id)));
  if (!IsFile()) return content;
  sqlite3* opened = nullptr;
  EXPECT_EQ(sqlite3_open(StorePath().c_str(), &opened), SQLITE_OK);
  const std::unique_ptr<sqlite3, int (*)(sqlite3*)> db(opened, sqlite3_close);
  const auto ask = [&](const std::string& sql) {
    std::string rows;
    const auto take = [](void* to, int columns, char** values, char**) {
      for (int i = 0; i < columns; ++i)
        *static_cast<std::string*>(to) += values[i] != nullptr ? values[i] : "NULL";
      return 0;
    };
    EXPECT_EQ(sqlite3_exec(db.get(), sql.c_str(), take, &rows, nullptr), SQLITE_OK) << sql;
    return rows;
  };
  EXPECT_EQ(ask("PRAGMA foreign_key_check"), "");
  return content + ask(ask("SELECT group_concat('SELECT * FROM \"' || name || '\"', ';') FROM "
                           "sqlite_schema WHERE type = 'table' AND name NOT IN "
                           "('Imports', 'ImportFiles', 'Originals', 'OriginalParts')"));
}

INSTANTIATE_TEST_SUITE_P(Stores, UndoContract, testing::StoresWithHistory(), testing::NameOfStore);

// All that an import can make: records with pictures, groups, links of its own contacts and others.
TEST_P(UndoContract, LeavesTheStoreAsItWas) {
  const std::int32_t group = SaveGroup(u"Friends");
  Save({u"Ann1", u"Bob2"}, group);
  ImportNames({u"Zoe"});
  const std::string before = Content();
  const std::int32_t import = Import("text", [&] {
    Save({u"Ann1", u"Cid3"}, SaveGroup(u"New"));
    Save({u"Dan4"}, group);
    CContacts named;  // a picture that another contact names
    named.AddNew().photo = u"Bob2";
    EXPECT_EQ(store->SaveContacts(named, 0, false), 1);
    CCalendars items;
    testing::FillItem(items.AddNew(), RECUR_WEEKLY);
    EXPECT_EQ(store->SaveCalendars(items, false), 1);
    CContactGroupPairs pairs;
    for (const int count : {1, 2}) Link(pairs, count, group);  // one is there already
    Link(pairs, 1, group);
    EXPECT_EQ(store->SaveContactGroupPairs(pairs), 1);
  });
  const std::string behind = Content();
  for (const bool dryRun : {true, false}) {
    const UndoResult result = Undo({{}, false, dryRun});
    EXPECT_EQ(result.import, import);
    Expect(result, 3, 2, 1, 2);
    EXPECT_EQ(result.items, 1);
    EXPECT_TRUE(result.IsWhole());
    if (dryRun) {
      EXPECT_EQ(Content(), behind);
      EXPECT_EQ(Entry(import).state, ImportState::Done);
    }
  }
  if (auto* file = dynamic_cast<SqliteStore*>(store.get())) {
    EXPECT_EQ(file->RemoveLeftPictures(), 2);  // copies that Content has made
  }
  EXPECT_EQ(Content(), before);
  EXPECT_EQ(Entry(import).state, ImportState::Undone);
  EXPECT_EQ(Entry(import).takenBack, 4);
  EXPECT_GE(Entry(import).undone, Entry(import).began);
  EXPECT_EQ(Undo().import, import - 1);  // the last that stands
}

// What makes a record one that stays.
TEST_P(UndoContract, LeavesWhatWasChanged) {
  const struct {
    const char* change;
    void (*make)(CContact& contact);
    bool stays;
  } rows[] = {
      {"nothing", [](CContact&) {}, false},
      {"stamps", [](CContact& contact) { contact.modified_time = testing::Moment(2024, 1, 1); },
       false},
      {"a field", [](CContact& contact) { contact.hobby = u"new"; }, true},
      {"a list", [](CContact& contact) { contact.NewNickname(u"new"); }, true},
      {"another picture", [](CContact& contact) { contact.photo = u"2"; }, true},
      {"no picture", [](CContact& contact) { contact.photo = u""; }, true},
      {"the same picture by another name", [](CContact& contact) { contact.photo = u"x1"; }, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.change);
    CContacts saved;
    const std::int32_t import = Import("", [&] { saved = Save({u"Ann1", u"Bob2"}); });
    row.make(saved[0]);
    ASSERT_EQ(store->SaveContacts(saved, 0, true), 2);
    const UndoResult result = Undo();
    EXPECT_EQ(result.contacts, row.stays ? 1 : 2);
    EXPECT_EQ(CountContacts(), row.stays ? 1 : 0);
    if (!row.stays) continue;
    ASSERT_EQ(result.keptRecords.size(), 1U);
    EXPECT_EQ(result.keptRecords[0].kind, StoredKind::Contact);
    EXPECT_EQ(result.keptRecords[0].key, saved[0].tag);
    EXPECT_EQ(result.keptRecords[0].name, u"Ann1");
    EXPECT_EQ(Entry(import).state, ImportState::UndoneInPart);
    EXPECT_EQ(Undo().keptRecords.size(), 1U);  // it stands in part, and no other one is taken back
    EXPECT_EQ(Undo({{}, true, false}).contacts, 1);
    EXPECT_EQ(CountContacts(), 0);
    EXPECT_EQ(Entry(import).state, ImportState::Undone);
    EXPECT_EQ(Entry(import).takenBack, 2);
  }
}

TEST_P(UndoContract, SeesAPictureThatTheHostChanged) {
  pictureBytes[u"p"] = "before";
  CContacts saved;
  const std::int32_t import = Import("", [&] { saved = Save({u"p"}); });
  pictureBytes[u"p"] = "behind";
  ASSERT_EQ(store->SaveContacts(saved, 0, true), 1);
  EXPECT_EQ(Undo({{}, false, true}).keptRecords.size(), 1U);
  pictureBytes[u"p"] = "before";
  ASSERT_EQ(store->SaveContacts(saved, 0, true), 1);
  EXPECT_EQ(Undo({import, false, false}).contacts, 1);
}

// Records that another one has taken the place of are none of the import's.
TEST_P(UndoContract, LeavesWhatCameLater) {
  CContacts saved;
  CCalendars items;
  items.AddNew().summary = u"changed";
  Import("", [&] {
    saved = Save({u"a", u"b"});
    EXPECT_EQ(store->SaveCalendars(items, false), 1);
  });
  const std::int32_t last = saved[1].tag;
  std::vector<WideString> pictures;
  ASSERT_EQ(store->DeleteContacts({&last, 1}, pictures), 1);
  Open();  // a file gives the key again
  EXPECT_EQ(Save({u"new"})[0].tag, IsFile() ? last : last + 1);
  items[0].summary = u"";
  items[0].description = u"told";
  ASSERT_EQ(store->SaveCalendars(items, true), 1);
  const UndoResult result = Undo();
  EXPECT_EQ(result.contacts, 1);
  EXPECT_EQ(CountContacts(), 1);
  ASSERT_EQ(result.keptRecords.size(), 1U);
  EXPECT_EQ(result.keptRecords[0].kind, StoredKind::Item);
  EXPECT_EQ(result.keptRecords[0].name, u"told");
}

TEST_P(UndoContract, LeavesGroupsWithOtherMembers) {
  Save({u"stored"});
  std::int32_t group = 0;
  const std::int32_t first = Import("", [&] {
    Save({u"stored", u"a"}, group = SaveGroup(u"Made"));
    SaveGroup(u"Empty");
  });
  const std::int32_t second = ImportNames({u"b"}, group);
  UndoResult result = Undo({first, false, false});
  Expect(result, 1, 1, 1, 1);
  EXPECT_EQ(result.keptGroups, std::vector<WideString>{u"Made"});
  EXPECT_EQ(CountLinks(), 1);
  EXPECT_EQ(Entry(first).state, ImportState::UndoneInPart);

  {
    const StoreTransaction undone(*store);
    Expect(Undo({first, true, false}), 0, 0, 1, 0);
    EXPECT_EQ(CountLinks(), 0);
  }
  CContactGroupPairs pairs;
  EXPECT_EQ(store->LoadContactGroupPairs(pairs), 1);
  EXPECT_EQ(store->SaveContactGroupPairs(pairs), 0);  // which is there still
  result = Undo();  // the second one: the first doesn't stand any more
  EXPECT_EQ(result.import, second);
  Expect(result, 1, 0, 0, 1);
  Expect(Undo({first, false, false}), 0, 0, 1, 0);
  EXPECT_EQ(Entry(first).state, ImportState::Undone);
  CContactGroups groups;
  EXPECT_EQ(store->LoadContactGroups(groups), 0);
}

TEST_P(UndoContract, MayBeGivenUp) {
  ImportNames({u"a", u"b"});
  UndoResult result;
  for (const bool dryRun : {true, false}) {
    std::int64_t told = 0;
    const auto giveUp = [&told](std::int64_t records) {
      told = records;
      if (records == 2) throw 7;
    };
    EXPECT_THROW(static_cast<void>(history().Undo({{}, false, dryRun, giveUp}, result)), int);
    EXPECT_EQ(told, 2);
  }
  EXPECT_EQ(CountContacts(), 2);
  EXPECT_EQ(Undo().contacts, 2);
}

TEST_P(UndoContract, LeavesGroupsThatWereRenamed) {
  CContactGroups made;
  for (const char16_t* name : {u"Plain", u"Renamed", u"Back"}) made.AddNew().group_name = name;
  Import("", [&] { EXPECT_EQ(store->SaveContactGroups(made, true), 3); });
  for (const char16_t* name : {u"X", u"BACK", u"Back"}) {
    made[name == WideStringView(u"X") ? 1 : 2].group_name = name;
    EXPECT_GT(store->SaveContactGroups(made, true), 0);
  }
  EXPECT_EQ(Undo().keptGroups, std::vector<WideString>{u"X"});
  Expect(Undo({{}, true, false}), 0, 0, 1, 0);
}

// A record that stays does so with its links, also in groups that have got another name.
TEST_P(UndoContract, WhatStaysKeepsItsGroups) {
  const std::int32_t friends = SaveGroup(u"Friends");
  CContacts saved;
  CContactGroups made;
  made.AddNew().group_name = u"Made";
  Import("", [&] {
    ASSERT_EQ(store->SaveContactGroups(made, true), 1);
    saved = Save({u"a"}, friends);
    Save({u"a"}, made[0].group_id);
  });
  saved[0].hobby = u"new";
  ASSERT_EQ(store->SaveContacts(saved, 0, true), 1);
  made[0].group_name = u"Renamed";
  ASSERT_EQ(store->SaveContactGroups(made, true), 1);
  const UndoResult result = Undo();
  Expect(result, 0, 0, 0, 0);
  EXPECT_EQ(result.keptGroups, std::vector<WideString>{u"Renamed"});
  EXPECT_EQ(CountLinks(), 2);
  Expect(Undo({result.import, true, false}), 1, 0, 1, 1);
  EXPECT_EQ(CountLinks(), 0);
}

// One link more of the same contact, made by hand, is another member.
TEST_P(UndoContract, CountsLinksOfOneContact) {
  Save({u"stored"});
  std::int32_t group = 0;
  Import("", [&] { Save({u"stored"}, group = SaveGroup(u"Made")); });
  CContactGroupPairs pairs;
  Link(pairs, 1, group);
  Link(pairs, 1, group);
  ASSERT_EQ(store->SaveContactGroupPairs(pairs), 1);
  const UndoResult result = Undo();
  Expect(result, 0, 1, 0, 0);
  EXPECT_EQ(result.keptGroups.size(), 1U);
  EXPECT_EQ(CountLinks(), 1);
}

TEST_P(UndoContract, RollbacksTakeTheHistoryAlong) {
  const std::string empty = Content();
  {
    const StoreTransaction undone(*store);
    ImportNames({u"a"}, SaveGroup(u"g"));
    ASSERT_EQ(history().BeginImport({}), 2);
  }
  EXPECT_EQ(Content(), empty);
  EXPECT_EQ(history().VisitFiles({}, [](const ImportedFile&) { return true; }), 0);

  const std::int32_t import = history().BeginImport({});  // none is under way
  ASSERT_GE(import, 1);
  {
    StoreTransaction transaction(*store);
    {
      const StoreTransaction undone(*store);
      ASSERT_TRUE(history().BeginFile("undone", "bytes"));
      const RecordLines lines{Save({u"a"})[0].tag, 1, 3};
      ASSERT_TRUE(history().AddLines({&lines, 1}));
    }
    ASSERT_TRUE(history().BeginFile("kept", "bytes"));
    Save({u"b"});
    ASSERT_TRUE(history().EndFile({}, false));
    ASSERT_TRUE(transaction.Commit());
  }
  {
    const StoreTransaction undone(*store);
    ASSERT_TRUE(history().AddRefusedFile("undone", "bytes", {}));
  }
  ASSERT_TRUE(history().EndImport());
  EXPECT_EQ(Entry(import).files, 1);
  const std::string kept = Content();
  {
    const StoreTransaction undone(*store);
    ASSERT_EQ(Undo().contacts, 1);
    ASSERT_TRUE(history().SetKeepsOriginals(false));
  }
  EXPECT_EQ(Content(), kept);
  EXPECT_TRUE(history().KeepsOriginals());
  EXPECT_EQ(Entry(import).state, ImportState::Done);
  EXPECT_EQ(Undo().contacts, 1);
}

}  // namespace
}  // namespace pim
