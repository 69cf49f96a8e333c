// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sqlite3.h>

#include <memory>
#include <vector>

#include "store/sqlite/SqliteDatabase.h"

namespace pim {

// A statement of SQLite. Numbers are read by its own casts.
class SqliteStatement final : public PreparedStatement {
 public:
  SqliteStatement(SqliteDatabase& db, const std::string& sql);

  void Bind(int index, std::int64_t value) override;
  void Bind(int index, double value) override;
  void BindNull(int index) override;
  void BindText(int index, std::string_view text) override;
  void BindBytes(int index, std::string_view bytes) override;
  std::string& Buffer(int index) override;
  void BindBuffer(int index) override;

  bool Step() override;
  void Run() override;
  std::size_t RunChanging() override;
  void Reset() noexcept override { sqlite3_reset(statement_.get()); }

  bool IsNull(int column) const override { return TypeOf(column) == SQLITE_NULL; }
  int NextFilled(int column, int end) const override {
    while (column < end && TypeOf(column) == SQLITE_NULL) ++column;
    return column;
  }
  std::int64_t Integer(int column) const override {
    return sqlite3_column_int64(statement_.get(), column);
  }
  double Real(int column) const override { return sqlite3_column_double(statement_.get(), column); }
  bool IsInteger(int column) const override { return TypeOf(column) == SQLITE_INTEGER; }
  std::string_view Text(int column) override;
  std::string_view Bytes(int column) override;

 private:
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
  };
  struct Parameter {
    bool isNull = true;
    std::string buffer;
  };
  int TypeOf(int column) const { return sqlite3_column_type(statement_.get(), column); }
  Parameter& At(int index) { return parameters_[static_cast<std::size_t>(index - 1)]; }
  void Check(int code);

  SqliteDatabase& db_;
  std::unique_ptr<sqlite3_stmt, Finalize> statement_;
  std::vector<Parameter> parameters_;
};

}  // namespace pim
