// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/Statement.h"

namespace pim {

sqlite3_stmt* Statement::Ready() {
  if (ready_ == nullptr) {
    sqlite3_stmt* prepared = nullptr;
    Check(sqlite3_prepare_v3(db_.handle(), sql_.data(), static_cast<int>(sql_.size()),
                             SQLITE_PREPARE_PERSISTENT, &prepared, nullptr));
    ready_.reset(prepared);
    parameters_.resize(static_cast<std::size_t>(sqlite3_bind_parameter_count(prepared)));
  }
  return ready_.get();
}

void Statement::Check(int code) {
  if (code != SQLITE_OK) db_.Fail(code);
}

void Statement::Bind(int index, std::int64_t value) {
  Check(sqlite3_bind_int64(Ready(), index, value));
  At(index).isNull = false;
}

void Statement::Bind(int index, double value) {
  Check(sqlite3_bind_double(Ready(), index, value));
  At(index).isNull = false;
}

void Statement::BindNull(int index) {
  sqlite3_stmt* statement = Ready();
  if (At(index).isNull) return;
  Check(sqlite3_bind_null(statement, index));
  At(index).isNull = true;
}

void Statement::BindText(int index, std::string_view text) {
  Check(sqlite3_bind_text64(Ready(), index, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8));
  At(index).isNull = false;
}

void Statement::Bind(int index, std::optional<std::int64_t> value) {
  if (value) {
    Bind(index, *value);
  } else {
    BindNull(index);
  }
}

// Without an address SQLite would take them for NULL.
void Statement::BindBytes(int index, std::string_view bytes) {
  const char* first = bytes.data() != nullptr ? bytes.data() : "";
  Check(sqlite3_bind_blob64(Ready(), index, first, bytes.size(), SQLITE_STATIC));
  At(index).isNull = false;
}

std::string& Statement::Buffer(int index) {
  Ready();
  std::string& buffer = At(index).buffer;
  buffer.clear();
  return buffer;
}

void Statement::BindBuffer(int index) {
  Parameter& parameter = At(index);
  // The buffer is changed only when the parameter is bound anew.
  Check(sqlite3_bind_text64(ready_.get(), index, parameter.buffer.data(), parameter.buffer.size(),
                            SQLITE_STATIC, SQLITE_UTF8));
  parameter.isNull = false;
}

bool Statement::Step() {
  const int code = sqlite3_step(Ready());
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

void Statement::Run() {
  if (Step()) Reset();
}

std::size_t Statement::RunChanging() {
  Run();
  return static_cast<std::size_t>(sqlite3_changes64(db_.handle()));
}

void Statement::Reset() noexcept { sqlite3_reset(ready_.get()); }

std::string_view Statement::Text(int column) {
  const unsigned char* text = sqlite3_column_text(ready_.get(), column);
  if (text == nullptr) {
    if (sqlite3_errcode(db_.handle()) == SQLITE_NOMEM) db_.Fail(SQLITE_NOMEM);
    return {};
  }
  return {reinterpret_cast<const char*>(text),
          static_cast<std::size_t>(sqlite3_column_bytes(ready_.get(), column))};
}

std::string_view Statement::Bytes(int column) {
  const void* bytes = sqlite3_column_blob(ready_.get(), column);
  if (bytes == nullptr) {
    if (sqlite3_errcode(db_.handle()) == SQLITE_NOMEM) db_.Fail(SQLITE_NOMEM);
    return {};
  }
  return {static_cast<const char*>(bytes),
          static_cast<std::size_t>(sqlite3_column_bytes(ready_.get(), column))};
}

}  // namespace pim
