// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "store/Prepared.h"
#include "store/postgres/PostgresConnection.h"

namespace pim {

// A statement of PostgreSQL, prepared on each connection at its first run there, when the kinds of
// its parameters are known. All of a result is held at once.
class PostgresStatement final : public PreparedStatement, private ResultTaker {
 public:
  // `name` is the statement's alone.
  PostgresStatement(PostgresConnection& connection, std::string name, const std::string& sql);
  PostgresStatement(const PostgresStatement&) = delete;
  PostgresStatement& operator=(const PostgresStatement&) = delete;
  ~PostgresStatement() override;

  void Bind(int index, std::int64_t value) override;
  void Bind(int index, double value) override;
  void BindNull(int index) override;
  void BindText(int index, std::string_view text) override;
  void BindBytes(int index, std::string_view bytes) override;
  std::string& Buffer(int index) override;
  void BindBuffer(int index) override;

  void Start() override;
  bool Step() override;
  void Run() override;
  std::size_t RunChanging() override;
  void Reset() noexcept override;

  bool IsNull(int column) const override { return PQgetisnull(result_.get(), row_, column) != 0; }
  int NextFilled(int column, int end) const override {
    while (column < end && IsNull(column)) ++column;
    return column;
  }
  std::int64_t Integer(int column) const override;
  double Real(int column) const override;
  bool IsInteger(int column) const override;
  std::string_view Text(int column) override;
  std::string_view Bytes(int column) override { return Value(column); }

 private:
  // Whether the server has the statement.
  class Preparation final : public ResultTaker {
   public:
    void Take(PostgresResult) noexcept override { isDone_ = true; }
    bool IsDone() const noexcept { return isDone_; }
    void Restart() noexcept { isDone_ = false; }

   private:
    bool isDone_ = false;
  };
  void Take(PostgresResult result) noexcept override { result_ = std::move(result); }
  WireValue& At(int index);
  void Prepare();
  void Send(ResultTaker* taker);
  std::string_view Value(int column) const {
    return {PQgetvalue(result_.get(), row_, column),
            static_cast<std::size_t>(PQgetlength(result_.get(), row_, column))};
  }

  PostgresConnection& connection_;
  std::string name_;
  std::string sql_;
  Preparation preparation_;
  std::uint64_t preparedOn_ = 0;  // the connection's generation
  std::uint64_t failures_ = 0;    // of the connection before
  std::vector<Oid> types_;        // of the parameters, as the server knows them
  std::vector<WireValue> values_;
  PostgresResult result_;
  int row_ = -1;
  bool hasStarted_ = false;
  std::string kept_;                // work
  std::vector<std::string> texts_;  // of columns that are kept in another form
};

}  // namespace pim
