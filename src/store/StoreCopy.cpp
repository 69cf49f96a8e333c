// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/StoreCopy.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "records/RecordMap.h"
#include "store/FieldIo.h"
#include "store/SqlText.h"

namespace pim {
namespace {

constexpr std::string_view kSettings = "StoreSettings";

// A table of bytes has large rows.
std::int64_t RowsAtOnce(std::span<const Column> columns) {
  const auto isLarge = [](const Column& column) { return column.name == "content"; };
  return std::ranges::any_of(columns, isLarge) ? 4 : 2048;
}

std::vector<std::string_view> NamesOf(std::span<const Column> columns) {
  std::vector<std::string_view> names;
  for (const Column& column : columns) names.push_back(column.name);
  return names;
}

}  // namespace

std::int64_t StoreCopy::Run(const std::function<bool(std::int64_t rows)>& goesOn) {
  const ReadTransaction reading(source_);
  CheckEmpty();
  Statement(target_, "DELETE FROM StoreSettings").Run();
  for (const TableLayout& table : StoreTables()) CopyTable(table, goesOn);
  // Whoever was at an import there isn't here.
  Statement(target_, "UPDATE Imports SET process = '' WHERE process IS NOT NULL").Run();
  target_.AdoptKeys();
  return copied_;
}

void StoreCopy::CheckEmpty() {
  for (const TableLayout& table : StoreTables()) {
    if (table.name == kSettings) continue;
    Statement first(target_, SelectSql(table.name, KeyOf(table), {}) + " LIMIT 1");
    if (Rows rows(first); rows.Next()) {
      target_.Fail("holds something already (" + std::string(table.name) +
                   "); a store is copied into an empty one");
    }
  }
}

// Those that the source has: it may be of an earlier version.
std::vector<Column> StoreCopy::ColumnsOf(const TableLayout& table) {
  std::set<std::string, std::less<>> present;
  Statement names(source_, source_.SelectColumnNamesSql());
  names.BindText(1, table.name);
  for (Rows rows(names); rows.Next();) present.emplace(names.Text(0));
  std::vector<Column> columns = table.Columns();
  std::erase_if(columns, [&](const Column& column) { return !present.contains(column.name); });
  const auto key = std::ranges::find(columns, KeyOf(table), &Column::name);
  if (key != columns.end()) std::iter_swap(key, columns.begin());
  return columns;
}

void StoreCopy::CopyTable(const TableLayout& table,
                          const std::function<bool(std::int64_t rows)>& goesOn) {
  const std::vector<Column> columns = ColumnsOf(table);
  if (columns.empty()) return;
  const std::vector<std::string_view> names = NamesOf(columns);
  Statement select(source_, SelectRowsSql(table.name, names));
  Statement insert(target_, InsertSql(table.name, names, 1));
  const std::unique_ptr<BulkRows> bulk = target_.RowsInto(table.name, names);
  const std::int64_t atOnce = RowsAtOnce(columns);
  std::int64_t rowsRead = atOnce;
  std::int64_t next = std::numeric_limits<std::int64_t>::min();
  while (rowsRead == atOnce) {
    rowsRead = 0;
    select.Bind(1, next);
    select.Bind(2, atOnce);
    if (bulk) bulk->Start();
    for (Rows rows(select); rows.Next(); ++rowsRead) {
      next = select.Integer(0);
      BindRowOf(table, columns, select, bulk ? *bulk : insert.parameters());
      bulk ? bulk->EndRow() : insert.Run();
    }
    if (bulk) bulk->Finish();
    copied_ += rowsRead;
    if (!goesOn(copied_)) target_.Fail("the copy was ended");
    if (next == std::numeric_limits<std::int64_t>::max()) return;
    ++next;
  }
}

// Values of another type than their column's are read as records read them.
void StoreCopy::BindRowOf(const TableLayout& table, std::span<const Column> columns, Statement& row,
                          Parameters& place) {
  int column = 0;
  for (const Column& kind : columns) {
    const int from = column++;
    const bool isReference = RefersToOther(kind.key);
    if (row.IsNull(from) || (isReference && !row.IsInteger(from))) {
      place.BindNull(column);
      continue;
    }
    switch (kind.type) {
      case ColumnType::Integer:
        place.Bind(column, row.Integer(from));
        break;
      case ColumnType::Real:
      case ColumnType::DateTime:
        place.Bind(column, row.Real(from));
        break;
      case ColumnType::Text:
        BindText(table, kind, row.Text(from), column, place);
        break;
      case ColumnType::Bytes:
        place.BindBytes(column, row.Bytes(from));
        break;
    }
  }
}

// Another program may have given two groups one name, which a server's index refuses; the second
// is found by its key alone, as in a file.
void StoreCopy::BindText(const TableLayout& table, const Column& kind, std::string_view text,
                         int column, Parameters& place) {
  const bool isFolded = table.name == kGroupTable && kind.name == "group_name_folded";
  if (isFolded && !foldedNames_.emplace(text).second) return place.BindNull(column);
  place.BindText(column, text);
}

}  // namespace pim
