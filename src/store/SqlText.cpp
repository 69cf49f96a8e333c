// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/SqlText.h"

namespace pim {

namespace {

std::string Quoted(std::string_view name) { return '"' + std::string(name) + '"'; }

std::string ColumnSql(const Column& column) {
  std::string sql = Quoted(column.name);
  switch (column.type) {
    case ColumnType::Integer:
      sql += " INTEGER";
      break;
    case ColumnType::Text:
      sql += " TEXT";
      break;
    case ColumnType::Real:
    case ColumnType::DateTime:
      sql += " REAL";
      break;
    case ColumnType::Bytes:
      sql += " BLOB";
      break;
  }
  if (column.key == KeyMark::Own || column.key == KeyMark::Shared) sql += " PRIMARY KEY";
  if (!RefersToOther(column.key)) return sql;
  if (const std::string_view owner = OwnerOf(column); !owner.empty())
    sql += " REFERENCES " + Quoted(owner) + " ON DELETE CASCADE";
  return sql;
}

std::string JoinedNames(std::string_view key, std::span<const FieldMap> fields) {
  std::string names = Quoted(key);
  for (const FieldMap& field : fields) names += ", " + Quoted(field.column);
  return names;
}

// "(?, ?), (?, ?)"
std::string RowsOfMarks(std::size_t rows, std::size_t columns) {
  std::string row = "(?";
  for (std::size_t i = 1; i < columns; ++i) row += ", ?";
  row += ")";
  std::string marks = row;
  for (std::size_t i = 1; i < rows; ++i) marks += ", " + row;
  return marks;
}

// "SELECT column, another FROM table WHERE column", to be continued.
std::string SelectTwoSql(std::string_view table, std::string_view column,
                         std::string_view another) {
  return "SELECT " + Quoted(column) + ", " + Quoted(another) + " FROM " + Quoted(table) +
         " WHERE " + Quoted(column);
}

}  // namespace

std::string CreateTableSql(const TableLayout& table) {
  std::string sql = "CREATE TABLE IF NOT EXISTS " + Quoted(table.name) + " (";
  bool first = true;
  for (const Column& column : table.Columns()) {
    if (!first) sql += ", ";
    sql += ColumnSql(column);
    first = false;
  }
  return sql + ")";
}

std::string AddColumnSql(const TableLayout& table, const Column& column) {
  return "ALTER TABLE " + Quoted(table.name) + " ADD COLUMN " + ColumnSql(column);
}

std::string CreateIndexSql(const IndexLayout& index) {
  std::string name = "Index_" + std::string(index.table);
  std::string columns;
  for (const std::string_view column : index.columns) {
    name += '_' + std::string(column);
    if (!columns.empty()) columns += ", ";
    columns += Quoted(column);
  }
  std::string sql =
      "CREATE INDEX IF NOT EXISTS " + Quoted(name) + " ON " + Quoted(index.table) + " (" + columns;
  sql += ")";
  if (index.onlyFilled) sql += " WHERE " + Quoted(index.columns.front()) + " IS NOT NULL";
  return sql;
}

std::string InsertSql(std::string_view table, std::span<const std::string_view> columns,
                      std::size_t rows) {
  std::string names;
  for (const std::string_view column : columns)
    names.append(names.empty() ? "" : ", ").append(Quoted(column));
  return "INSERT INTO " + Quoted(table) + " (" + names + ") VALUES " +
         RowsOfMarks(rows, columns.size());
}

std::string InsertReferencesSql(std::string_view table, std::span<const FieldMap> references,
                                std::size_t rows) {
  const std::string_view key = references.front().column;
  std::string sql = "INSERT INTO " + Quoted(table) + " (" +
                    JoinedNames(key, references.subspan(1)) + ") SELECT * FROM (VALUES " +
                    RowsOfMarks(rows, references.size()) + ") AS given WHERE ";
  for (std::size_t i = 0; i < references.size(); ++i) {
    if (i > 0) sql += " AND ";
    const std::string_view column = references[i].column;
    // Row by row, so that the rows keep their order.
    sql += "(" + SelectSql(OwnerOf({column, ColumnType::Integer, KeyMark::Reference}), column, {}) +
           " WHERE " + Quoted(column) + " = column" + std::to_string(i + 1) + ") IS NOT NULL";
  }
  return sql;
}

std::string UpdateSql(std::string_view table, std::string_view key,
                      std::span<const FieldMap> fields) {
  std::string sql = "UPDATE " + Quoted(table) + " SET ";
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (i > 0) sql += ", ";
    sql += Quoted(fields[i].column) + " = ?" + std::to_string(i + 2);
  }
  return sql + " WHERE " + Quoted(key) + " = ?1";
}

std::string SelectSql(std::string_view table, std::string_view key,
                      std::span<const FieldMap> fields) {
  return "SELECT " + JoinedNames(key, fields) + " FROM " + Quoted(table);
}

std::string SelectByKeySql(std::string_view table, std::string_view key,
                           std::span<const FieldMap> fields) {
  return SelectSql(table, key, fields) + " WHERE " + Quoted(key) + " = ?";
}

std::string SelectRecordsSql(std::string_view table, std::string_view key,
                             std::span<const FieldMap> fields, std::string_view filter) {
  std::string sql = SelectSql(table, key, fields) + " WHERE " + Quoted(key) + " >= ?1";
  if (!filter.empty()) sql += " AND " + Quoted(filter) + " = ?3";
  return sql + " ORDER BY " + Quoted(key) + " LIMIT ?2";
}

std::string SelectRecordRangeSql(std::string_view table, std::string_view key,
                                 std::span<const FieldMap> fields, std::string_view filter) {
  std::string sql = SelectSql(table, key, fields) + " WHERE " + Quoted(key) + " BETWEEN ?1 AND ?2";
  if (!filter.empty()) sql += " AND " + Quoted(filter) + " = ?3";
  return sql + " ORDER BY " + Quoted(key);
}

std::string NextKeySql(std::string_view table, std::string_view key) {
  return SelectSql(table, key, {}) + " WHERE " + Quoted(key) + " >= ? ORDER BY 1 LIMIT 1";
}

std::string LastKeySql(std::string_view table, std::string_view key) {
  return SelectSql(table, key, {}) + " ORDER BY 1 DESC LIMIT 1";
}

std::string SelectEntriesSql(std::string_view table, std::string_view rowKey,
                             std::string_view owner, std::span<const FieldMap> fields) {
  return SelectSql(table, owner, fields) + " ORDER BY " + Quoted(rowKey);
}

std::string SelectRangeSql(std::string_view table, std::string_view rowKey, std::string_view owner,
                           std::span<const FieldMap> fields) {
  return SelectSql(table, owner, fields) + " WHERE " + Quoted(owner) +
         " BETWEEN ?1 AND ?2 ORDER BY " + Quoted(owner) + ", " + Quoted(rowKey);
}

std::string SelectRowsSql(std::string_view table, std::span<const std::string_view> columns) {
  const std::string key = Quoted(columns.front());
  std::string names = key;
  for (const std::string_view column : columns.subspan(1)) names += ", " + Quoted(column);
  return "SELECT " + names + " FROM " + Quoted(table) + " WHERE " + key + " >= ?1 ORDER BY " + key +
         " LIMIT ?2";
}

std::string CountSql(std::string_view table, std::span<const FieldMap> fields) {
  std::string sql = "SELECT count(*) FROM " + Quoted(table);
  const char* separator = " WHERE ";
  for (const FieldMap& field : fields) {
    sql += separator + Quoted(field.column) + " = ?";
    separator = " AND ";
  }
  return sql;
}

std::string SelectKeysSql(std::string_view table, std::string_view key, std::string_view column) {
  return SelectSql(table, key, {}) + " WHERE " + Quoted(column) + " = ? ORDER BY 1";
}

std::string SelectFilledSql(std::string_view table, std::string_view key,
                            std::span<const std::string_view> columns) {
  std::string sql = SelectSql(table, key, {}) + " WHERE " + Quoted(key) + " BETWEEN ?1 AND ?2";
  const char* separator = " AND (";
  for (const std::string_view column : columns) {
    sql += separator + Quoted(column) + " IS NOT NULL";
    separator = " OR ";
  }
  return columns.empty() ? sql : sql + ")";
}

std::string DeleteSql(std::string_view table, std::string_view key) {
  return "DELETE FROM " + Quoted(table) + " WHERE " + Quoted(key) + " = ?";
}

std::string DeleteRangeSql(std::string_view table, std::string_view key) {
  return "DELETE FROM " + Quoted(table) + " WHERE " + Quoted(key) + " BETWEEN ? AND ?";
}

std::string HighestKeySql(std::string_view table, std::string_view key) {
  return SelectSql(table, key, {}) + " WHERE " + Quoted(key) +
         " BETWEEN 1 AND 2147483647 ORDER BY 1 DESC LIMIT 1";
}

std::string HighestNumberSql(std::string_view column,
                             std::initializer_list<std::string_view> tables) {
  std::string sql = "max(0";
  for (const std::string_view table : tables)
    sql += ", coalesce((SELECT max(" + Quoted(column) + ") FROM " + Quoted(table) + "), 0)";
  return sql + ")";
}

std::string SelectAmongSql(std::string_view table, std::string_view column,
                           std::string_view another, std::size_t parameters) {
  return SelectTwoSql(table, column, another) + " IN " + RowsOfMarks(1, parameters);
}

std::string SelectBetweenSql(std::string_view table, std::string_view column,
                             std::string_view another) {
  return SelectTwoSql(table, column, another) + " BETWEEN ? AND ?";
}

std::string CountOthersSql(std::string_view table, std::string_view column,
                           std::initializer_list<std::int32_t> numbers) {
  std::string known;
  for (const std::int32_t number : numbers)
    known.append(known.empty() ? "" : ", ").append(std::to_string(number));
  return "SELECT count(*) FROM " + Quoted(table) + " WHERE " + Quoted(column) + " IS NULL OR " +
         Quoted(column) + " NOT IN (" + known + ")";
}

}  // namespace pim
