// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "records/Schema.h"

namespace pim {

// Which form of the tables this is. A new form is made from the rows by adding what an older one
// lacks; a change of another kind needs a step of its own where each database is opened.
inline constexpr std::int32_t kStoreVersion = 2;

// One table as a database makes it: the schema's columns, then the store's own, which hold what a
// record has and the schema has no column for.
struct TableLayout {
  std::string_view name;
  std::span<const Column> schema;
  std::span<const Column> own;

  std::vector<Column> Columns() const;
};

// All tables that a database makes, owners before their lists.
const std::vector<TableLayout>& StoreTables();

// The tables of a store in a server, where many programs write at once: all of those, and what
// they need beside.
const std::vector<TableLayout>& ServerTables();
// What records hold, by their fingerprints.
inline constexpr std::string_view kContactContents = "ContactContents";
inline constexpr std::string_view kCalendarContents = "CalendarContents";
// A row for each change by programs that know nothing of this one.
inline constexpr std::string_view kOutsideChanges = "OutsideChanges";
// A row for each connection whose last commit may have to be found out.
inline constexpr std::string_view kLastCommits = "LastCommits";
inline constexpr std::string_view kStoreVersions = "StoreVersions";

// An index speeds up a search by its columns, which are one table's. There is one for each
// reference to a known owner, and for what the store itself looks up.
struct IndexLayout {
  std::string_view table;
  std::vector<std::string_view> columns;
  bool onlyFilled = false;  // leaves out the rows in which the first column is NULL
  // In a server no two rows hold the same there, which a file's one writer sees to itself.
  bool isUnique = false;
};
std::vector<IndexLayout> StoreIndexes(const std::vector<TableLayout>& tables);

// The table of that name, which must be one of them.
const TableLayout& StoreTable(std::string_view name);

// The column that is the table's own key.
std::string_view KeyOf(const TableLayout& table);

// The table whose key a reference holds, or empty where the schema tells none: the keys of a
// contact's default entries and of a profile are other programs' business.
std::string_view OwnerOf(const Column& reference);

}  // namespace pim
