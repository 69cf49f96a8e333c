// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "pim/platform/Host.h"
#include "pim/records/Calendar.h"
#include "pim/records/ContactGroups.h"
#include "pim/store/ImportHistory.h"
#include "pim/store/SqliteStore.h"
#include "tests/store/OtherProgram.h"
#include "tests/store/SampleRecords.h"
#include "tests/store/TemporaryFolder.h"

namespace pim {
namespace {

using testing::OtherProgram;

// The history of a store whose file other programs write too.
class HistoryFile : public ::testing::Test {
 protected:
  HistoryFile() { SetAppDataFolder(folder_.File("data")); }
  ~HistoryFile() override { SetAppDataFolder({}); }

  // Imports a contact and an event that hold something in every field, into a group of their own.
  void Import(SqliteStore& store) {
    ImportHistory& history = *store.History();
    ASSERT_GT(history.BeginImport({"contacts import", {}}), 0);
    StoreTransaction transaction(store);
    ASSERT_TRUE(history.BeginFile("a.vcf", ""));
    CContactGroups groups;
    groups.AddNew().group_name = u"Made";
    ASSERT_GE(store.SaveContactGroups(groups, true), 0);
    CContacts contacts;
    testing::FillContact(contacts.AddNew());
    ASSERT_EQ(store.SaveContacts(contacts, groups[0].group_id, true), 1);
    CCalendars items;
    testing::FillItem(items.AddNew(), RECUR_WEEKLY);
    ASSERT_EQ(store.SaveCalendars(items, true), 1);
    ASSERT_TRUE(history.EndFile({}, true) && transaction.Commit() && history.EndImport());
  }

  testing::TemporaryFolder folder_;
  std::string path_ = folder_.File("pim.db");
};

// Whatever another program has changed, in columns too that this one doesn't use, is a change.
TEST_F(HistoryFile, OtherProgramsChangesAreSeen) {
  const struct {
    const char* change;
    std::size_t kept;
  } rows[] = {
      {"UPDATE Contacts SET created_time = 5, modified_time = NULL", 0},  // stamps are none
      {"UPDATE ContactNumbers SET speed_dial = 3", 1},
      {"UPDATE ContactNumbers SET number = number || '1' WHERE number_id = 1", 1},
      {"UPDATE Contacts SET call_sound = 'x'", 1},
      {"UPDATE Contacts SET photo = 'other.jpg'", 1},
      {"UPDATE Contacts SET default_number_id = 1", 1},
      {"UPDATE Contacts SET hobby = NULL", 1},
      {"UPDATE ContactAddresses SET address_label = 'x'", 1},
      {"DELETE FROM ContactXItems", 1},
      {"UPDATE Calendars SET outlook_id = 'x'", 1},
      {"UPDATE Calendars SET due = 1", 1},
      {"INSERT INTO CalendarAttendees (calendar_id) SELECT calendar_id FROM Calendars", 1},
      {"UPDATE CalendarRecurrences SET day_list = '1'", 1},
      {"UPDATE Contacts SET sms_sound = ''; UPDATE Calendars SET summary = 'x'", 2},
  };
  SqliteStore store(path_);
  OtherProgram other(path_);
  for (const auto& row : rows) {
    SCOPED_TRACE(row.change);
    Import(store);
    other.Run(row.change);
    UndoResult result;
    ASSERT_EQ(store.History()->Undo({}, result), 0) << store.LastError();
    EXPECT_EQ(result.keptRecords.size(), row.kept);
    ASSERT_EQ(store.History()->Undo({result.import, true, false}, result), row.kept == 0 ? -1 : 0);
  }
}

// Numbers go on where rows refer to them, though another program has deleted the history's.
TEST_F(HistoryFile, NumbersOutliveTheirRows) {
  SqliteStore store(path_);
  Import(store);
  OtherProgram(path_).Run("DELETE FROM Imports; DELETE FROM ImportFiles");
  Import(store);
  UndoResult result;
  ASSERT_EQ(store.History()->Undo({}, result), 0);
  EXPECT_EQ(result.import, 2);
  EXPECT_EQ(result.contacts, 1);
  EXPECT_EQ(store.CountContacts(), 1);

  OtherProgram(path_).Run("DELETE FROM Originals; DELETE FROM Pictures");
  SqliteStore other(path_);
  other.SetPictureReader([](WideStringView) { return NarrowString("another"); });
  Import(other);
  EXPECT_FALSE(other.History()->ReadOriginal(1, [](NarrowStringView) { return true; }));
  OtherProgram(path_).Run("UPDATE Imports SET import_id = 2147483647 WHERE import_id = 3");
  EXPECT_EQ(other.History()->BeginImport({}), -1);
  EXPECT_NE(other.LastError().find("no number is left"), std::string::npos);
}

// An import that was taken for given up, and undone, can't go on.
TEST_F(HistoryFile, UndoneMeanwhile) {
  for (const char* change : {"UPDATE Imports SET process = ''", "UPDATE Imports SET undone = 1"}) {
    SqliteStore store(path_);
    ImportHistory& history = *store.History();
    ASSERT_GT(history.BeginImport({}), 0);
    OtherProgram(path_).Run(change);
    {
      StoreTransaction transaction(store);
      EXPECT_FALSE(history.BeginFile("a.vcf", ""));
    }
    EXPECT_FALSE(history.EndImport());
    EXPECT_NE(store.LastError().find("undone, meanwhile"), std::string::npos) << store.LastError();
  }
}

}  // namespace
}  // namespace pim
