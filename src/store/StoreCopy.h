// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "store/Statement.h"

namespace pim {

// Copies all tables of one store into another, which must hold no records: columns that no field
// goes to as well. Runs inside a transaction of the target, which nobody else writes to.
class StoreCopy {
 public:
  StoreCopy(Database& source, Database& target) : source_(source), target_(target) {}

  // Gives the number of rows. `goesOn` is told it now and then; when it gives false, the copy ends
  // with StoreError.
  std::int64_t Run(const std::function<bool(std::int64_t rows)>& goesOn);

 private:
  void CheckEmpty();
  void CopyTable(const TableLayout& table, const std::function<bool(std::int64_t rows)>& goesOn);
  std::vector<Column> ColumnsOf(const TableLayout& table);
  void BindRowOf(const TableLayout& table, std::span<const Column> columns, Statement& row,
                 Parameters& place);
  void BindText(const TableLayout& table, const Column& kind, std::string_view text, int column,
                Parameters& place);

  Database& source_;
  Database& target_;
  std::int64_t copied_ = 0;
  std::set<std::string, std::less<>> foldedNames_;  // of groups
};

}  // namespace pim
