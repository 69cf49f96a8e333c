// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <filesystem>

#include "tests/store/OtherProgram.h"
#include "tests/store/StoreFileFixture.h"

namespace pim {
namespace {

class StoreDamage : public testing::StoreFileFixture {};

// A store that lost its end or holds garbage is told; what is read is all or nothing.
TEST_F(StoreDamage, DamageIsTold) {
  MakeStore(200);
  const std::string whole = testing::BytesOf(path_);
  int told = 0;
  for (std::size_t at = 4096; at < whole.size(); at += 4096) {
    for (const bool cut : {false, true}) {
      SCOPED_TRACE(at);
      std::string bytes = cut ? whole.substr(0, at + 1000) : whole;
      if (!cut) bytes.replace(at, 4096, 4096, '\xA5');
      std::filesystem::remove(path_ + "-wal");
      Write(bytes);
      std::int32_t read = -1;
      CContacts contacts;
      contacts.AddNew();
      try {
        SqliteStore store(path_);
        read = store.LoadContacts(contacts);
        if (read < 0) {
          EXPECT_NE(store.LastError().find("damaged"), std::string::npos);
        }
      } catch (const StoreError&) {
      }
      told += read < 0 ? 1 : 0;
      EXPECT_TRUE(read == 200 || read == -1) << read;
      EXPECT_EQ(contacts.GetCount(), read < 0 ? 1 : 201);
    }
  }
  EXPECT_GT(told, 10);
}

// So is one whose tables aren't as they were made.
TEST_F(StoreDamage, OtherTablesAreTold) {
  const struct {
    const char* sql;
    const char* problem;
  } rows[] = {
      {"ALTER TABLE Contacts DROP COLUMN hobby", "damaged (no such column: hobby)"},
      {"ALTER TABLE ContactNumbers DROP COLUMN number", "damaged (no such column: number)"},
      {"DROP TABLE ContactNumbers", "damaged (no such table: ContactNumbers)"},
      {"ALTER TABLE Contacts RENAME COLUMN contact_id TO id;"
       "ALTER TABLE Contacts ADD COLUMN contact_id TEXT; UPDATE Contacts SET contact_id = id",
       "damaged (the keys of Contacts aren't in order)"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.sql);
    std::filesystem::remove(path_);
    MakeStore(12);
    testing::OtherProgram(path_).Run(row.sql);
    SqliteStore store(path_);
    CContacts contacts;
    EXPECT_EQ(store.LoadContacts(contacts), -1);
    EXPECT_EQ(contacts.GetCount(), 0);
    EXPECT_EQ(store.VisitContacts([](CContact&) { return true; }), -1);
    EXPECT_EQ(store.LastError(), path_ + ": " + row.problem);
  }
}

}  // namespace
}  // namespace pim
