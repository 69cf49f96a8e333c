// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "store/Database.h"

namespace pim {

// One statement, prepared at its first use and kept: see PreparedStatement. Operations throw
// StoreError.
class Statement {
 public:
  Statement(Database& db, std::string sql) : db_(db), sql_(std::move(sql)) {}

  void Bind(int index, std::int64_t value) { Ready().Bind(index, value); }
  void Bind(int index, double value) { Ready().Bind(index, value); }
  void BindNull(int index) { Ready().BindNull(index); }
  void Bind(int index, std::optional<std::int64_t> value) {
    value ? Bind(index, *value) : BindNull(index);
  }
  void BindText(int index, std::string_view text) { Ready().BindText(index, text); }
  void BindBytes(int index, std::string_view bytes) { Ready().BindBytes(index, bytes); }
  std::string& Buffer(int index) { return Ready().Buffer(index); }
  void BindBuffer(int index) { Ready().BindBuffer(index); }
  Parameters& parameters() { return Ready(); }

  void Start() { Ready().Start(); }
  [[nodiscard]] bool Step() { return Ready().Step(); }
  void Run() { Ready().Run(); }
  [[nodiscard]] std::size_t RunChanging() { return Ready().RunChanging(); }
  void Reset() noexcept {
    if (ready_ != nullptr) ready_->Reset();
  }

  bool IsNull(int column) const { return ready_->IsNull(column); }
  std::int64_t Integer(int column) const { return ready_->Integer(column); }
  double Real(int column) const { return ready_->Real(column); }
  bool IsInteger(int column) const { return ready_->IsInteger(column); }
  int NextFilled(int column, int end) const { return ready_->NextFilled(column, end); }
  std::string_view Text(int column) { return ready_->Text(column); }
  std::string_view Bytes(int column) { return ready_->Bytes(column); }
  // The row that stands ready.
  PreparedStatement& row() { return *ready_; }

 private:
  PreparedStatement& Ready() {
    if (ready_ == nullptr) ready_ = db_.Prepare(sql_);
    return *ready_;
  }

  Database& db_;
  std::string sql_;
  std::unique_ptr<PreparedStatement> ready_;
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
