// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/postgres/CopyRows.h"

#include <algorithm>
#include <limits>

#include "store/postgres/PostgresText.h"
#include "store/postgres/WireForms.h"

namespace pim {
namespace {

constexpr std::size_t kSentAtOnce = std::size_t{256} << 10;
// The signature, no flags, no extension.
constexpr std::string_view kHead{"PGCOPY\n\xFF\r\n\0\0\0\0\0\0\0\0\0", 19};
constexpr std::uint32_t kNull = 0xFFFFFFFF;
constexpr std::uint16_t kEnd = 0xFFFF;

std::string CopySql(std::string_view table, std::span<const std::string_view> columns) {
  std::string sql = "COPY \"" + std::string(table) + "\" (";
  const char* separator = "\"";
  for (const std::string_view column : columns) {
    sql.append(separator).append(column);
    separator = "\", \"";
  }
  return PostgresSql(sql + "\") FROM STDIN (FORMAT binary)");
}

}  // namespace

CopyRows::CopyRows(PostgresConnection& connection, const TableLayout& table,
                   std::span<const std::string_view> columns)
    : connection_(connection), sql_(CopySql(table.name, columns)) {
  const std::vector<Column> layout = table.Columns();
  for (const std::string_view name : columns) {
    const ColumnType type = std::ranges::find(layout, name, &Column::name)->type;
    isReal_.push_back(type == ColumnType::Real || type == ColumnType::DateTime);
  }
}

void CopyRows::Start() {
  connection_.StartCopy(sql_);
  rows_.assign(kHead);
}

void CopyRows::StartColumn(int index) {
  if (index == 1) AppendWire(static_cast<std::uint16_t>(isReal_.size()), rows_);
}

void CopyRows::Append(std::string_view bytes) {
  if (bytes.size() > std::numeric_limits<std::int32_t>::max())
    connection_.Fail("a value is larger than the server takes");
  AppendWire(static_cast<std::uint32_t>(bytes.size()), rows_);
  rows_.append(bytes);
}

void CopyRows::Bind(int index, std::int64_t value) {
  if (isReal_[static_cast<std::size_t>(index - 1)]) return Bind(index, static_cast<double>(value));
  StartColumn(index);
  AppendWire(static_cast<std::uint32_t>(sizeof value), rows_);
  AppendWire(value, rows_);
}

void CopyRows::Bind(int index, double value) {
  StartColumn(index);
  AppendWire(static_cast<std::uint32_t>(sizeof value), rows_);
  AppendWire(value, rows_);
}

void CopyRows::BindNull(int index) {
  StartColumn(index);
  AppendWire(kNull, rows_);
}

void CopyRows::BindText(int index, std::string_view text) {
  StartColumn(index);
  if (IsPlainText(text)) return Append(text);
  kept_.clear();
  AppendKeptText(text, kept_);
  Append(kept_);
}

void CopyRows::BindBytes(int index, std::string_view bytes) {
  StartColumn(index);
  Append(bytes);
}

std::string& CopyRows::Buffer(int) {
  buffer_.clear();
  return buffer_;
}

void CopyRows::EndRow() {
  if (rows_.size() < kSentAtOnce) return;
  connection_.PutCopy(rows_);
  rows_.clear();
}

void CopyRows::Finish() {
  AppendWire(kEnd, rows_);
  connection_.PutCopy(rows_);
  rows_.clear();
  connection_.EndCopy();
}

}  // namespace pim
