// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "pim/records/ContactGroups.h"
#include "pim/store/ImportHistory.h"
#include "pim/store/SqliteStore.h"
#include "tests/store/OtherProgram.h"
#include "tests/store/StoreFileFixture.h"

namespace pim {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;
using testing::BytesOf;
using testing::OtherProgram;

std::string ProblemOf(const std::string& path) {
  try {
    SqliteStore store(path, milliseconds(50));
    return {};
  } catch (const StoreError& error) {
    return error.what();
  }
}

class StoreFile : public testing::StoreFileFixture {};

TEST_F(StoreFile, FilesThatAreNoStoreStayAsTheyAre) {
  MakeStore(1);
  const std::string ours = BytesOf(path_);
  std::string newer = ours;
  newer[63] = 3;
  std::string foreign = ours;
  foreign[68] = 0;
  std::string magic = ours.substr(0, 100);
  magic[5] = 'X';
  const struct {
    std::string bytes;
    const char* problem;
  } rows[] = {
      {"BEGIN:VCARD\r\n", "not a store of this program"},
      {foreign, "not a store of this program"},
      {magic, "not a store of this program"},
      {ours.substr(0, 50), "cut off"},
      {newer, "newer than this program's"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.problem);
    Write(row.bytes);
    EXPECT_EQ(ProblemOf(path_).find(path_ + ": "), 0U);
    EXPECT_NE(ProblemOf(path_).find(row.problem), std::string::npos) << ProblemOf(path_);
    EXPECT_TRUE(BytesOf(path_) == row.bytes);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_.path()), {}), 1);
  }
  Write("");
  EXPECT_EQ(ProblemOf(path_), "");

  EXPECT_NE(ProblemOf(""), "");
  EXPECT_NE(ProblemOf(folder_.path()).find("is a folder"), std::string::npos);
  EXPECT_NE(ProblemOf(folder_.File("none/x")).find("folder doesn't exist"), std::string::npos);
  EXPECT_NE(ProblemOf(path_ + std::string("\0x", 2)).find("NUL"), std::string::npos);
  EXPECT_NE(ProblemOf("/dev/null").find("no regular file"), std::string::npos);
}

TEST_F(StoreFile, AnotherProgramsRowsReadAsTheNearest) {
  MakeStore(1);
  OtherProgram other(path_);
  other.Run(
      "PRAGMA foreign_keys=OFF;"
      "INSERT INTO Contacts (contact_id, photo, given_name, favorite, created_time, blood_type) "
      "VALUES (9, '../../etc/passwd', x'FF00C1', '12 apples', 9e99, -99999999999),"
      " (9223372036854775807, '..', 3.5, x'31', 'text', NULL), (65535, 'a\\b', NULL, NULL, 1, 1),"
      " (-9223372036854775807, NULL, NULL, NULL, NULL, NULL);"
      "INSERT INTO ContactNumbers (number_id, contact_id, number_type, number) VALUES "
      "(9223372036854775807, 9, 99999999999, NULL), (70, 777, 1, '1'), (71, NULL, 1, '1'),"
      " (72, 'x', -5, 2);"
      "INSERT INTO Contacts_ContactGroups (contact_id, group_id) VALUES (5, 6), (NULL, 'x');"
      "INSERT INTO ContactGroups (group_id, group_name) VALUES (3, 'Ann'), (2147483647, x'00'),"
      " (-7, 'Bob'), (9999999999, 'Eve');"
      "INSERT INTO Calendars (calendar_id, calendar_type, start_time, due, class) VALUES "
      "(1, 1, 'tomorrow', -9e999, 1.9), (2, 257, 1, 1, 1), (3, 1.0, NULL, 1e99, '2'),"
      "(4, NULL, 1, 1, 1);"
      "INSERT INTO CalendarCategories (calendar_id, category_name) VALUES (1.5, 'x'), ('1x', 'y');"
      "INSERT INTO CalendarRecurrences (calendar_id, recurrence_type, day_list) VALUES "
      "(1, 99, '1'), (1, 2, '-1,3,3,x'), (1, 1, NULL), (4, 1, NULL);");
  SqliteStore store(path_);
  CContacts contacts;
  ASSERT_EQ(store.LoadContacts(contacts), 5);
  EXPECT_EQ(contacts[0].tag, 0);  // no other record's
  EXPECT_EQ(contacts[4].tag, 0);
  const CContact& nine = contacts[2];
  EXPECT_TRUE(nine.photo.empty() && contacts[3].photo.empty() && contacts[4].photo.empty());
  EXPECT_EQ(nine.favorite, 12);
  EXPECT_EQ(nine.blood_type, -2147483647 - 1);
  ASSERT_EQ(nine.GetTelephoneCount(), 1);
  EXPECT_EQ(nine.GetTelephone(0).GetType(), 0xFFFFFFFF);
  std::int32_t visited = 0;
  EXPECT_EQ(store.VisitContacts([&](CContact& contact) {
    testing::ExpectContact(contact, contacts[visited++]);
    return true;
  }),
            5);
  CCalendars items;
  ASSERT_EQ(store.LoadCalendars(CalendarType::Event, items), 2);
  EXPECT_EQ(items[0].due.status, StatusInvalid);
  EXPECT_TRUE(items[0].categories.empty());
  EXPECT_EQ(store.VisitCalendars(CalendarType::Event,
                                 [&](CCalendar& item) {
                                   EXPECT_TRUE(item.categories.empty());
                                   return false;
                                 }),
            1);
  EXPECT_EQ(store.CountItemsWithoutKind(), 2);
  ASSERT_NE(items[0].recurrence.GetRecurrenceData(), nullptr);
  EXPECT_EQ(dynamic_cast<const WeeklyData&>(*items[0].recurrence.GetRecurrenceData()).days,
            (RecurrenceList{0, 3, -1}));
  CContactGroupPairs pairs;
  EXPECT_EQ(store.LoadContactGroupPairs(pairs), 1);

  CContactGroups groups;  // the other program's group is found; keys go on in the gaps
  for (const char16_t* name : {u"ANN", u"Bob", u"Eve", u"Joe"}) groups.AddNew().group_name = name;
  EXPECT_EQ(store.SaveContactGroups(groups, true), 3) << store.LastError();
  EXPECT_EQ(groups[0].group_id, 3);
  EXPECT_EQ(groups[1].group_id, 1);
  EXPECT_EQ(groups[3].group_id, 4);
  other.Run("UPDATE ContactGroups SET group_name = 'Zoe' WHERE group_id = 3");
  CContactGroups renamed;
  for (const char16_t* name : {u"zoe", u"Ann"}) renamed.AddNew().group_name = name;
  EXPECT_EQ(store.SaveContactGroups(renamed, true), 1) << store.LastError();
  EXPECT_EQ(renamed[0].group_id, 3);
  // New records are possible, an update keeps the columns that aren't ours.
  CContacts more;
  more.AddNew();
  EXPECT_EQ(store.SaveContacts(more, 0, false), 1) << store.LastError();
  other.Run("UPDATE ContactNumbers SET speed_dial = 7 WHERE contact_id = 9");
  more[0].tag = 9;
  more[0].NewTelephone(u"5", 1, false, -1);
  EXPECT_EQ(store.SaveContacts(more, 0, false), 1) << store.LastError();
  EXPECT_EQ(other.Ask("SELECT number || speed_dial FROM ContactNumbers WHERE contact_id=9"), "57");
}

// Where another program has used the last key, those of the gaps are given once too.
TEST_F(StoreFile, GapsAreGivenOnce) {
  MakeStore(1);
  OtherProgram(path_).Run("INSERT INTO Contacts (contact_id) VALUES (2147483647)");
  SqliteStore store(path_);
  CContacts undone;
  undone.AddNew();
  {
    const StoreTransaction rolledBack(store);
    EXPECT_EQ(store.SaveContacts(undone, 0, true), 1);
  }
  CContacts kept;
  kept.AddNew();
  EXPECT_EQ(store.SaveContacts(kept, 0, true), 1);
  EXPECT_NE(kept[0].tag, undone[0].tag);
  EXPECT_EQ(store.SaveContacts(undone, 0, true), 1);
  CContacts all;
  EXPECT_EQ(store.LoadContacts(all), 4);
  // Nor is a deleted one's.
  const std::int32_t deleted[] = {undone[0].tag};
  std::vector<WideString> pictures;
  EXPECT_EQ(store.DeleteContacts(deleted, pictures), 1);
  EXPECT_EQ(store.SaveContacts(undone, 0, true), 1) << store.LastError();
  EXPECT_NE(undone[0].tag, deleted[0]);
}

TEST_F(StoreFile, GapsAreGivenBehindTheLastKeys) {
  MakeStore(1);
  OtherProgram(path_).Run("INSERT INTO Contacts (contact_id) VALUES (2147483645)");
  SqliteStore store(path_);
  for (const std::int32_t count : {1, 2}) {
    CContacts contacts;
    for (std::int32_t i = 0; i < count; ++i) contacts.AddNew();
    EXPECT_EQ(store.SaveContacts(contacts, 0, true), count) << store.LastError();
  }
}

// Waiting for a lock ends, and at once for all tries behind the first.
TEST_F(StoreFile, WaitsForALockOnlySoLong) {
  MakeStore(1);
  OtherProgram other(path_);
  SqliteStore store(path_, milliseconds(200));
  CContacts contacts;
  contacts.AddNew();
  ASSERT_EQ(store.SaveContacts(contacts, 0, false), 1);
  other.Run("BEGIN EXCLUSIVE; INSERT INTO Contacts (formatted_name) VALUES ('Ann')");
  contacts.AddNew().formatted_name = u"Ann";
  EXPECT_FALSE(store.Begin());
  EXPECT_EQ(store.SaveContacts(contacts, 0, true), -1);
  EXPECT_NE(store.LastError().find(path_ + ": locked"), std::string::npos) << store.LastError();
  EXPECT_EQ(contacts[1].tag, 0);
  EXPECT_EQ(store.LoadContacts(contacts), 2);  // reading goes on
  other.Run("COMMIT");
  CContacts again;
  again.AddNew().formatted_name = u"Ann";
  EXPECT_EQ(store.SaveContacts(again, 0, false), 0);  // the other program's is known
  EXPECT_EQ(again[0].tag, 3);
}

TEST_F(StoreFile, FullDiskLeavesTheStoreAsItWas) {
  MakeStore(1);
  SqliteStore store(path_);
  CContacts contacts;
  for (int i = 0; i < 2000; ++i) testing::FillContact(contacts.AddNew());
  OtherProgram(path_).Run(
      "CREATE TRIGGER t BEFORE INSERT ON ContactComments WHEN NEW.contact_id = "
      "1500 BEGIN SELECT RAISE(ROLLBACK, 'no space'); END");
  {
    StoreTransaction outer(store);
    EXPECT_EQ(store.SaveContacts(contacts, 0, true), -1);
    EXPECT_NE(store.LastError().find("no space"), std::string::npos) << store.LastError();
    EXPECT_EQ(contacts[0].tag, 0);
    CContactGroups groups;  // SQLite has undone all: nothing may go in outside of a transaction
    groups.AddNew();
    EXPECT_EQ(store.SaveContactGroups(groups, true), -1);
    EXPECT_EQ(store.LoadContacts(contacts), -1);
    EXPECT_FALSE(outer.Commit());
  }
  CContacts read;
  EXPECT_EQ(store.LoadContacts(read), 1);
  OtherProgram(path_).Run("DROP TRIGGER t");
  EXPECT_EQ(store.SaveContacts(contacts, 0, true), 2000) << store.LastError();
  EXPECT_EQ(OtherProgram(path_).Ask("PRAGMA integrity_check; PRAGMA foreign_key_check"), "ok");
}

// A list made while another program imports shows one state.
TEST_F(StoreFile, ReadersSeeOneState) {
  MakeStore(1100);
  SqliteStore reader(path_);
  SqliteStore writer(path_);
  CContacts more;
  more.AddNew();
  std::int32_t seen = 0;
  EXPECT_EQ(reader.VisitContacts([&](CContact&) {
    if (seen++ == 0) {
      EXPECT_EQ(writer.SaveContacts(more, 0, true), 1);
    }
    return true;
  }),
            1100);
  CContacts contacts;
  EXPECT_EQ(reader.LoadContacts(contacts), 1101);
  const StoreReading reading(reader);  // of several lists
  EXPECT_EQ(reader.LoadContacts(contacts), 1101);
  more[0].tag = 0;
  EXPECT_EQ(writer.SaveContacts(more, 0, true), 1);
  EXPECT_EQ(reader.LoadContacts(contacts), 1101);
}

// Each version that was ever released opens, with what it held. Version 2 is this one.
TEST_F(StoreFile, EarlierVersionsOpen) {
  int versions = 0;
  for (const auto& entry : fs::directory_iterator(PIM_TEST_DATA)) {
    if (entry.path().extension() != ".db") continue;
    ++versions;
    SCOPED_TRACE(entry.path().string());
    fs::copy_file(entry.path(), path_, fs::copy_options::overwrite_existing);
    SqliteStore store(path_);
    CContacts contacts;
    CContact expectedContact;
    testing::FillContact(expectedContact);
    ASSERT_EQ(store.LoadContacts(contacts), 1);
    testing::ExpectContact(contacts[0], expectedContact);
    CCalendars items;
    CCalendar expectedItem;
    testing::FillItem(expectedItem, RECUR_MONTHLY_BY_POS);
    ASSERT_EQ(store.LoadCalendars(CalendarType::Event, items), 1);
    testing::ExpectItem(items[0], expectedItem);
    CContactGroupPairs pairs;
    EXPECT_EQ(store.LoadContactGroupPairs(pairs), 1);
    // Version 2 remembers that all of this was imported.
    UndoResult result;
    const bool isImported = store.History()->Undo({}, result) == 0;
    EXPECT_EQ(isImported, entry.path().filename() == "store-v2.db") << store.LastError();
    EXPECT_EQ(result.contacts + result.items + result.groups, isImported ? 3 : 0);
    EXPECT_EQ(result.pictures, isImported ? 1 : 0);
  }
  EXPECT_EQ(versions, 2);
}

// A version that lacks a table, a column and an index grows them and keeps its rows.
TEST_F(StoreFile, AddsWhatAVersionLacks) {
  MakeStore(1);
  OtherProgram(path_).Run(
      "ALTER TABLE Contacts DROP COLUMN phonetic_suffix; DROP TABLE ContactXItems;"
      "DROP INDEX Index_ContactNumbers_contact_id; PRAGMA user_version=0");
  SqliteStore store(path_);
  CContacts contacts;
  ASSERT_EQ(store.LoadContacts(contacts), 1);
  EXPECT_EQ(contacts[0].GetXItemCount(), 0);
  EXPECT_EQ(store.SaveContacts(contacts, 0, true), 1);
  EXPECT_EQ(OtherProgram(path_).Ask("PRAGMA user_version"), "2");
}

TEST_F(StoreFile, ReadingMakesNoStore) {
  for (const StoreAccess access : {StoreAccess::ReadOnly, StoreAccess::Existing}) {
    EXPECT_THROW(SqliteStore(folder_.File("none.db"), access), NoStoreError);
    std::ofstream(folder_.File("empty.db"));
    EXPECT_THROW(SqliteStore(folder_.File("empty.db"), access), NoStoreError);
  }
  EXPECT_FALSE(fs::exists(folder_.File("none.db")));
  EXPECT_EQ(fs::file_size(folder_.File("empty.db")), 0U);
  // names that mean something in a URI, and rows of every table that deleting must reach
  const std::string path = folder_.File("a b%20?mode=memory#\xC3\xA4.db");
  {
    SqliteStore store(path);
    CContacts contacts;
    testing::FillContact(contacts.AddNew());
    CContactGroups groups;
    groups.AddNew().group_name = u"g";
    ASSERT_EQ(store.SaveContactGroups(groups, true), 1);
    ASSERT_EQ(store.SaveContacts(contacts, groups[0].group_id, true), 1);
    CCalendars items;
    testing::FillItem(items.AddNew(), RECUR_WEEKLY);
    ASSERT_EQ(store.SaveCalendars(items, true), 1);
  }
  ASSERT_TRUE(fs::exists(path));
  {
    SqliteStore store(path, StoreAccess::ReadOnly);
    CContacts contacts;
    EXPECT_EQ(store.LoadContacts(contacts), 1);
    contacts.AddNew();
    EXPECT_EQ(store.SaveContacts(contacts, 0, true), -1);
    EXPECT_NE(store.LastError(), "");
  }
  SqliteStore store(path, StoreAccess::Existing);
  const std::int32_t key = 1;
  std::vector<WideString> pictures;
  EXPECT_EQ(store.DeleteContacts({&key, 1}, pictures), 1);
  EXPECT_EQ(store.DeleteCalendars({&key, 1}), 1);
  OtherProgram other(path);
  const std::string tables =
      "SELECT group_concat('SELECT count(*) AS n FROM \"' || name || '\"', "
      "' UNION ALL ') FROM sqlite_schema WHERE type = 'table'";
  EXPECT_EQ(store.RemoveLeftPictures(), 0);
  EXPECT_EQ(other.Ask("SELECT sum(n) FROM (" + other.Ask(tables) + ")"), "2")
      << "the group and the store's secret";
}

}  // namespace
}  // namespace pim
