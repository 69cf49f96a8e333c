// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>
#include <libpq-fe.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <string>

namespace pim::testing {

// Another program at a PostgreSQL server, connected as whoever the URL names.
class ServerProgram {
 public:
  explicit ServerProgram(const std::string& url) : connection_(PQconnectdb(url.c_str())) {
    EXPECT_EQ(PQstatus(connection_.get()), CONNECTION_OK) << PQerrorMessage(connection_.get());
    PQsetNoticeProcessor(
        connection_.get(), [](void*, const char*) {}, nullptr);
  }
  void Run(const std::string& sql) { Ask(sql); }
  // What fails, or "".
  std::string Try(const std::string& sql) {
    const Result result(PQexec(connection_.get(), sql.c_str()));
    return PQresultErrorMessage(result.get());
  }
  // The values of all rows, one behind the other.
  std::string Ask(const std::string& sql) {
    const Result result(PQexec(connection_.get(), sql.c_str()));
    EXPECT_STREQ(PQresultErrorMessage(result.get()), "") << sql;
    std::string answer;
    for (int row = 0; row < PQntuples(result.get()); ++row) {
      for (int column = 0; column < PQnfields(result.get()); ++column)
        answer += PQgetvalue(result.get(), row, column);
    }
    return answer;
  }

 private:
  struct Close {
    void operator()(PGconn* connection) const { PQfinish(connection); }
    void operator()(PGresult* result) const { PQclear(result); }
  };
  using Result = std::unique_ptr<PGresult, Close>;

  std::unique_ptr<PGconn, Close> connection_;
};

// A schema of a test's own in the server of tests/postgres, gone with it.
class TestSchema {
 public:
  TestSchema() : name_("test_" + std::to_string(getpid()) + "_" + std::to_string(++count)) {
    ServerProgram(ServerUrl()).Run("CREATE SCHEMA " + name_);
  }
  TestSchema(const TestSchema&) = delete;
  TestSchema& operator=(const TestSchema&) = delete;
  ~TestSchema() { ServerProgram(ServerUrl()).Run("DROP SCHEMA " + name_ + " CASCADE"); }

  const std::string& name() const { return name_; }
  // `more` are further parameters, "&user=ann".
  std::string Url(const std::string& more = "") const {
    return ServerUrl() + "&options=-csearch_path%3D" + name_ + more;
  }

 private:
  static std::string ServerUrl() {
    const char* url = std::getenv("PIM_TEST_POSTGRES");
    EXPECT_NE(url, nullptr) << "PIM_TEST_POSTGRES names no server; ctest starts one";
    return url != nullptr ? url : "postgresql:///";
  }

  static inline int count = 0;
  std::string name_;
};

}  // namespace pim::testing
