// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <string>

namespace pim::testing {

// Another program at a store's file.
class OtherProgram {
 public:
  explicit OtherProgram(const std::string& path) {
    sqlite3* opened = nullptr;
    EXPECT_EQ(sqlite3_open(path.c_str(), &opened), SQLITE_OK);
    db_.reset(opened);
  }
  void Run(const std::string& sql) {
    char* problem = nullptr;
    sqlite3_exec(db_.get(), sql.c_str(), nullptr, nullptr, &problem);
    EXPECT_STREQ(problem, nullptr) << sql;
    sqlite3_free(problem);
  }
  std::string Ask(const std::string& sql) {
    std::string answer;
    const auto take = [](void* to, int, char** values, char**) {
      *static_cast<std::string*>(to) += values[0] != nullptr ? values[0] : "NULL";
      return 0;
    };
    EXPECT_EQ(sqlite3_exec(db_.get(), sql.c_str(), take, &answer, nullptr), SQLITE_OK) << sql;
    return answer;
  }

 private:
  struct Close {
    void operator()(sqlite3* db) const { sqlite3_close(db); }
  };
  std::unique_ptr<sqlite3, Close> db_;
};

inline std::string BytesOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace pim::testing
