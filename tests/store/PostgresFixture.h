// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include "pim/platform/Host.h"
#include "pim/records/ContactGroups.h"
#include "pim/records/Contacts.h"
#include "pim/store/PostgresStore.h"
#include "tests/store/TemporaryFolder.h"
#include "tests/store/TestSchema.h"

namespace pim::testing {

// A schema of the test's own, and another program at it.
class PostgresFixture : public ::testing::Test {
 protected:
  PostgresFixture() { SetAppDataFolder(folder_.path()); }
  ~PostgresFixture() override { SetAppDataFolder({}); }

  // Saves a new contact and gives the result of that.
  static std::int32_t Save(RecordStore& store, WideStringView name, bool saveFlag = true) {
    CContacts contacts;
    contacts.AddNew().formatted_name = name;
    return store.SaveContacts(contacts, 0, saveFlag);
  }
  // Gives its key, or -1.
  static std::int32_t SaveGroup(RecordStore& store, WideStringView name) {
    CContactGroups groups;
    groups.AddNew().group_name = name;
    return store.SaveContactGroups(groups, true) < 0 ? -1 : groups[0].group_id;
  }
  static std::string ProblemOf(const std::string& url, StoreAccess access = StoreAccess::Create) {
    try {
      const PostgresStore store(url, access);
      return {};
    } catch (const StoreError& error) {
      return error.what();
    }
  }
  // The same schema for another role.
  std::string UrlFor(const std::string& role) const {
    std::string url = schema_.Url();
    return url.replace(url.find("user=pim"), 8, "user=" + role);
  }

  TemporaryFolder folder_;
  TestSchema schema_;
  ServerProgram other_{schema_.Url()};
};

// Runs the work on so many threads, each of which is told its number.
template <class Work>
void AtOnce(int threads, Work work) {
  std::vector<std::thread> running;
  for (int i = 0; i < threads; ++i) running.emplace_back(work, i);
  for (std::thread& thread : running) thread.join();
}

}  // namespace pim::testing
