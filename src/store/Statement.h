// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/Database.h"

namespace pim {

// One statement, prepared at its first use and kept. Parameters count from 1, columns from 0. A
// parameter keeps its value from run to run until another is bound. Operations throw StoreError.
class Statement {
 public:
  Statement(Database& db, std::string sql) : db_(db), sql_(std::move(sql)) {}

  void Bind(int index, std::int64_t value);
  void Bind(int index, double value);
  void BindNull(int index);
  void Bind(int index, std::optional<std::int64_t> value);
  // The caller keeps the bytes as they are until the statement has run.
  void BindText(int index, std::string_view text);
  void BindBytes(int index, std::string_view bytes);
  // The parameter's own work buffer, empty, and the parameter bound to what was put into it.
  std::string& Buffer(int index);
  void BindBuffer(int index);

  // True while a row stands ready; behind the last one the statement can be run again.
  [[nodiscard]] bool Step();
  // For statements without rows.
  void Run();
  // Gives the number of rows that it has changed.
  [[nodiscard]] std::size_t RunChanging();
  // Ends a reading before its last row.
  void Reset() noexcept;

  bool IsNull(int column) const { return sqlite3_column_type(ready_.get(), column) == SQLITE_NULL; }
  // SQLite's own casts: a text counts as the number it starts with.
  std::int64_t Integer(int column) const { return sqlite3_column_int64(ready_.get(), column); }
  double Real(int column) const { return sqlite3_column_double(ready_.get(), column); }
  bool IsInteger(int column) const {
    return sqlite3_column_type(ready_.get(), column) == SQLITE_INTEGER;
  }
  // Good until the next step, or another look at the same column.
  std::string_view Text(int column);
  std::string_view Bytes(int column);

 private:
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
  };
  struct Parameter {
    bool isNull = true;
    std::string buffer;
  };
  sqlite3_stmt* Ready();
  Parameter& At(int index) { return parameters_[static_cast<std::size_t>(index - 1)]; }
  void Check(int code);

  Database& db_;
  std::string sql_;
  std::unique_ptr<sqlite3_stmt, Finalize> ready_;
  std::vector<Parameter> parameters_;
};

// Ends a reading however its loop is left.
class Rows {
 public:
  explicit Rows(Statement& statement) : statement_(statement) {}
  Rows(const Rows&) = delete;
  Rows& operator=(const Rows&) = delete;
  ~Rows() { statement_.Reset(); }
  [[nodiscard]] bool Next() { return statement_.Step(); }

 private:
  Statement& statement_;
};

}  // namespace pim
