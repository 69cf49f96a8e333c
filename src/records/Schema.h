// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace pim {

// The store's tables as static rows: whatever a database keeps is made from them. The names are
// persistent, misspelt ones included.

enum class ColumnType : std::uint8_t {
  Real = 5,
  DateTime = 7,  // an OLE automation day number
  Text = 8,
  Integer = 22,
  Bytes = 128,  // in the tables of the store alone, beyond the codes of columns
};

enum class KeyMark : std::uint8_t {
  None = 0,
  Own = 1,        // the table's own key
  Reference = 2,  // the key of a row of another table
  Shared = 3,     // both: at most one row for each row of the other table
};

constexpr bool RefersToOther(KeyMark mark) {
  return mark == KeyMark::Reference || mark == KeyMark::Shared;
}

struct Column {
  std::string_view name;
  ColumnType type;
  KeyMark key = KeyMark::None;
};

struct Table {
  std::string_view name;
  std::span<const Column> columns;
};

std::span<const Table> ContactTables();
// What to-dos and memos have in `Calendars` stands among the tables under this name: they have none
// of their own.
inline constexpr std::string_view kNoTable;
// Calendars with its lists, then the message side.
std::span<const Table> CalendarTables();
// Tables that the schema names and leaves without columns.
std::span<const std::string_view> TablesWithoutColumns();

}  // namespace pim
