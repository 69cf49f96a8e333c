// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <set>

#include "records/RecordMap.h"
#include "records/StoreLayout.h"

namespace pim {
namespace {

// A slip in the rows would become a column's name for ever.
TEST(Schema, RowsAreWhole) {
  std::size_t columns = 0;
  for (const auto tables : {ContactTables(), CalendarTables()})
    for (const Table& table : tables) columns += table.columns.size();
  EXPECT_EQ(columns, 97U + 50U + 14U + 10U);
  std::set<std::string_view> names;
  for (const TableLayout& table : StoreTables()) {
    SCOPED_TRACE(table.name);
    EXPECT_TRUE(names.insert(table.name).second);
    std::set<std::string_view> own;
    int keys = 0;
    for (const Column& column : table.Columns()) {
      EXPECT_TRUE(own.insert(column.name).second) << column.name;
      keys += column.key == KeyMark::Own || column.key == KeyMark::Shared ? 1 : 0;
    }
    EXPECT_EQ(keys, 1);
  }
  EXPECT_EQ(OwnerOf({"contact_id", ColumnType::Integer, KeyMark::Reference}), "Contacts");
  EXPECT_EQ(OwnerOf({"message_id", ColumnType::Integer, KeyMark::Reference}), "Messages");
  EXPECT_EQ(OwnerOf({"profile_id", ColumnType::Integer, KeyMark::Reference}), "");
}

// Each field that a record names has a column in the tables, and no two share one.
TEST(RecordMap, EveryFieldHasItsColumn) {
  const auto check = [](std::string_view table, std::span<const FieldMap> fields) {
    std::set<std::string_view> columns;
    for (const Column& column : StoreTable(table).Columns()) columns.insert(column.name);
    for (const FieldMap& field : fields)
      EXPECT_EQ(columns.erase(field.column), 1U) << table << '.' << field.column;
  };
  for (const RecordMap* map : {&ContactMap(), &CalendarMap()}) {
    check(map->table, map->fields);
    for (const ListMap& list : map->lists) check(list.table, list.fields);
  }
  check(kGroupTable, GroupFields());
  check(kLinkTable, LinkFields());
}

}  // namespace
}  // namespace pim
