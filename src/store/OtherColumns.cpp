// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/OtherColumns.h"

#include <algorithm>
#include <vector>

#include "records/StoreLayout.h"
#include "store/SqlText.h"
#include "store/StoredForms.h"

namespace pim {
namespace {

// Tables that refer to records and are the store's own.
constexpr std::string_view kOwnTables[] = {kLinkTable,      "ContactOrigins", "CalendarOrigins",
                                           "ImportedLinks", kContactContents, kCalendarContents};

// The fields of a record's own table or of a list's; none for a table that the map doesn't name.
std::span<const FieldMap> FieldsOf(const RecordMap& map, std::string_view table) {
  if (table == map.table) return map.fields;
  const auto list = std::ranges::find(map.lists, table, &ListMap::table);
  return list == map.lists.end() ? std::span<const FieldMap>{} : list->fields;
}

std::vector<std::string_view> ColumnsBeside(std::span<const FieldMap> fields,
                                            const TableLayout& table) {
  std::vector<std::string_view> columns;
  for (const Column& column : table.Columns()) {
    const bool isKey = column.key != KeyMark::None && !OwnerOf(column).empty();
    if (isKey || column.name == KeyOf(table)) continue;
    if (std::ranges::find(fields, column.name, &FieldMap::column) == fields.end())
      columns.push_back(column.name);
  }
  return columns;
}

}  // namespace

OtherColumns::OtherColumns(Database& db, const RecordMap& map) {
  const std::string_view key = KeyOf(StoreTable(map.table));
  for (const TableLayout& table : db.Tables()) {
    if (std::ranges::find(kOwnTables, table.name) != std::end(kOwnTables)) continue;
    const bool refers = std::ranges::any_of(table.Columns(), [&](const Column& column) {
      return column.name == key && (table.name == map.table || OwnerOf(column) == map.table);
    });
    if (!refers) continue;
    // A table that the map doesn't name holds nothing but what others put there.
    const std::span<const FieldMap> fields = FieldsOf(map, table.name);
    const auto columns = ColumnsBeside(fields, table);
    if (!fields.empty() && columns.empty()) continue;
    filled_.emplace_back(
        db, SelectFilledSql(table.name, key, fields.empty() ? decltype(columns){} : columns));
  }
}

void OtherColumns::Visit(std::int32_t first, std::int32_t last,
                         const std::function<void(std::int32_t key)>& visitor) {
  for (Statement& statement : filled_) {
    statement.Bind(1, std::int64_t{first});
    statement.Bind(2, std::int64_t{last});
    for (Rows rows(statement); rows.Next();) visitor(KeyFromStored(statement.Integer(0)));
  }
}

}  // namespace pim
