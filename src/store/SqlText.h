// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "records/RecordMap.h"
#include "records/StoreLayout.h"

namespace pim {

// All SQL on records' tables, made from the rows that describe them.

std::string CreateTableSql(const TableLayout& table);
std::string AddColumnSql(const TableLayout& table, const Column& column);
std::string CreateIndexSql(const IndexLayout& index);

// Rows of these columns.
std::string InsertSql(std::string_view table, std::span<const std::string_view> columns,
                      std::size_t rows);
// The same for rows of nothing but references, the key's column included: leaves out those that
// lead nowhere.
std::string InsertReferencesSql(std::string_view table, std::span<const FieldMap> references,
                                std::size_t rows);
// Parameter 1 is the row's key, the fields follow.
std::string UpdateSql(std::string_view table, std::string_view key,
                      std::span<const FieldMap> fields);
// The row of one key.
std::string SelectByKeySql(std::string_view table, std::string_view key,
                           std::span<const FieldMap> fields);
// "SELECT key, fields FROM table", to be continued.
std::string SelectSql(std::string_view table, std::string_view key,
                      std::span<const FieldMap> fields);

// Records by ascending key; parameters: the first key, how many at most, and the filter column's
// number where there is a filter.
std::string SelectRecordsSql(std::string_view table, std::string_view key,
                             std::span<const FieldMap> fields, std::string_view filter);
// The same for keys from parameter 1 to parameter 2, the filter's number being parameter 3.
std::string SelectRecordRangeSql(std::string_view table, std::string_view key,
                                 std::span<const FieldMap> fields, std::string_view filter);
// The lowest key from parameter 1 on, and the highest one of all.
std::string NextKeySql(std::string_view table, std::string_view key);
std::string LastKeySql(std::string_view table, std::string_view key);
// A list's rows, the owner's key first: all in the order in which they were stored, or those of the
// owners from parameter 1 to parameter 2.
std::string SelectEntriesSql(std::string_view table, std::string_view rowKey,
                             std::string_view owner, std::span<const FieldMap> fields);
std::string SelectRangeSql(std::string_view table, std::string_view rowKey, std::string_view owner,
                           std::span<const FieldMap> fields);
// Whole rows by ascending key, the first of the columns; parameters: the first key, how many at
// most.
std::string SelectRowsSql(std::string_view table, std::span<const std::string_view> columns);
// The number of rows in which the fields are the parameters.
std::string CountSql(std::string_view table, std::span<const FieldMap> fields);
// The keys of the rows whose `column` is parameter 1, ascending.
std::string SelectKeysSql(std::string_view table, std::string_view key, std::string_view column);
// The keys from parameter 1 to parameter 2 of the rows in which one of the columns holds something;
// of all rows where no columns are named.
std::string SelectFilledSql(std::string_view table, std::string_view key,
                            std::span<const std::string_view> columns);
std::string DeleteSql(std::string_view table, std::string_view key);
// From parameter 1 to parameter 2.
std::string DeleteRangeSql(std::string_view table, std::string_view key);
// The highest key that fits 32 bits, or NULL.
std::string HighestKeySql(std::string_view table, std::string_view key);
// The highest number, 0 for none, that a column of that name holds in any of the tables: new ones
// go on where rows still refer to one whose own row another program has deleted.
std::string HighestNumberSql(std::string_view column,
                             std::initializer_list<std::string_view> tables);
// Two columns of the rows in which the first is one of so many parameters.
std::string SelectAmongSql(std::string_view table, std::string_view column,
                           std::string_view another, std::size_t parameters);
// The same for a first column from parameter 1 to parameter 2.
std::string SelectBetweenSql(std::string_view table, std::string_view column,
                             std::string_view another);
// The number of rows in whose column stands none of the numbers.
std::string CountOthersSql(std::string_view table, std::string_view column,
                           std::initializer_list<std::int32_t> numbers);

}  // namespace pim
