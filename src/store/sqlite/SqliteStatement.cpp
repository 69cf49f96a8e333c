// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/sqlite/SqliteStatement.h"

namespace pim {

SqliteStatement::SqliteStatement(SqliteDatabase& db, const std::string& sql) : db_(db) {
  sqlite3_stmt* prepared = nullptr;
  Check(sqlite3_prepare_v3(db_.handle(), sql.data(), static_cast<int>(sql.size()),
                           SQLITE_PREPARE_PERSISTENT, &prepared, nullptr));
  statement_.reset(prepared);
  parameters_.resize(static_cast<std::size_t>(sqlite3_bind_parameter_count(prepared)));
}

void SqliteStatement::Check(int code) {
  if (code != SQLITE_OK) db_.Fail(code);
}

void SqliteStatement::Bind(int index, std::int64_t value) {
  Check(sqlite3_bind_int64(statement_.get(), index, value));
  At(index).isNull = false;
}

void SqliteStatement::Bind(int index, double value) {
  Check(sqlite3_bind_double(statement_.get(), index, value));
  At(index).isNull = false;
}

void SqliteStatement::BindNull(int index) {
  if (At(index).isNull) return;
  Check(sqlite3_bind_null(statement_.get(), index));
  At(index).isNull = true;
}

void SqliteStatement::BindText(int index, std::string_view text) {
  Check(sqlite3_bind_text64(statement_.get(), index, text.data(), text.size(), SQLITE_STATIC,
                            SQLITE_UTF8));
  At(index).isNull = false;
}

// Without an address SQLite would take them for NULL.
void SqliteStatement::BindBytes(int index, std::string_view bytes) {
  const char* first = bytes.data() != nullptr ? bytes.data() : "";
  Check(sqlite3_bind_blob64(statement_.get(), index, first, bytes.size(), SQLITE_STATIC));
  At(index).isNull = false;
}

std::string& SqliteStatement::Buffer(int index) {
  std::string& buffer = At(index).buffer;
  buffer.clear();
  return buffer;
}

void SqliteStatement::BindBuffer(int index) {
  Parameter& parameter = At(index);
  // The buffer is changed only when the parameter is bound anew.
  Check(sqlite3_bind_text64(statement_.get(), index, parameter.buffer.data(),
                            parameter.buffer.size(), SQLITE_STATIC, SQLITE_UTF8));
  parameter.isNull = false;
}

bool SqliteStatement::Step() {
  const int code = sqlite3_step(statement_.get());
  if (code == SQLITE_ROW) return true;
  if (code == SQLITE_DONE) {
    Reset();
    return false;
  }
  try {
    db_.Fail(code);
  } catch (...) {
    Reset();
    throw;
  }
}

void SqliteStatement::Run() {
  if (Step()) Reset();
}

std::size_t SqliteStatement::RunChanging() {
  Run();
  return static_cast<std::size_t>(sqlite3_changes64(db_.handle()));
}

std::string_view SqliteStatement::Text(int column) {
  const unsigned char* text = sqlite3_column_text(statement_.get(), column);
  if (text == nullptr) {
    if (sqlite3_errcode(db_.handle()) == SQLITE_NOMEM) db_.Fail(SQLITE_NOMEM);
    return {};
  }
  return {reinterpret_cast<const char*>(text),
          static_cast<std::size_t>(sqlite3_column_bytes(statement_.get(), column))};
}

std::string_view SqliteStatement::Bytes(int column) {
  const void* bytes = sqlite3_column_blob(statement_.get(), column);
  if (bytes == nullptr) {
    if (sqlite3_errcode(db_.handle()) == SQLITE_NOMEM) db_.Fail(SQLITE_NOMEM);
    return {};
  }
  return {static_cast<const char*>(bytes),
          static_cast<std::size_t>(sqlite3_column_bytes(statement_.get(), column))};
}

}  // namespace pim
