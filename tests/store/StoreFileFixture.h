// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "pim/platform/Host.h"
#include "pim/store/SqliteStore.h"
#include "tests/store/SampleRecords.h"
#include "tests/store/TemporaryFolder.h"

namespace pim::testing {

// A store's file, in a folder of its own.
class StoreFileFixture : public ::testing::Test {
 protected:
  StoreFileFixture() { SetAppDataFolder(folder_.File("data")); }
  ~StoreFileFixture() override { SetAppDataFolder({}); }
  void MakeStore(std::int32_t contacts) {
    SqliteStore store(path_);
    CContacts records;
    for (std::int32_t i = 0; i < contacts; ++i) FillContact(records.AddNew());
    ASSERT_EQ(store.SaveContacts(records, 0, true), contacts);
  }
  void Write(const std::string& bytes) { std::ofstream(path_, std::ios::binary) << bytes; }

  TemporaryFolder folder_;
  std::string path_ = folder_.File("pim.db");
};

}  // namespace pim::testing
