// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "records/StoreLayout.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace pim {

namespace {

// Columns named ..._exact hold a time that whole seconds can't: see RecordMap.h.
constexpr Column kContactsOwn[] = {
    {"phonetic_prefix", ColumnType::Text},          {"phonetic_suffix", ColumnType::Text},
    {"created_time_exact", ColumnType::DateTime},   {"modified_time_exact", ColumnType::DateTime},
    {"xmodified_time_exact", ColumnType::DateTime},
};

// The name in one letter case, by which groups are found.
constexpr Column kContactGroupsOwn[] = {{"group_name_folded", ColumnType::Text}};

constexpr Column kContactEventsOwn[] = {{"event_date_exact", ColumnType::DateTime}};

constexpr Column kContactLinksOwn[] = {
    {"link_id", ColumnType::Integer, KeyMark::Own},
    {"contact_id", ColumnType::Integer, KeyMark::Reference},
    {"group_id", ColumnType::Integer, KeyMark::Reference},
};

constexpr Column kContactXItemsOwn[] = {
    {"xitem_id", ColumnType::Integer, KeyMark::Own},
    {"contact_id", ColumnType::Integer, KeyMark::Reference},
    {"name", ColumnType::Text},
    {"value", ColumnType::Text},
    {"params", ColumnType::Integer},
};

// The names of priority, status and color are those of the to-do and memo lists; color is a text
// here, as records keep it.
constexpr Column kCalendarsOwn[] = {
    {"xmodified_time_exact", ColumnType::DateTime},
    {"due", ColumnType::DateTime},
    {"completed", ColumnType::DateTime},
    {"priority", ColumnType::Integer},
    {"status", ColumnType::Integer},
    {"color", ColumnType::Text},
    {"tz_offset", ColumnType::Real},
    {"daylight_offset", ColumnType::Real},
    {"daylight_start", ColumnType::DateTime},
    {"daylight_end", ColumnType::DateTime},
    {"standard_name", ColumnType::Text},
    {"daylight_name", ColumnType::Text},
};

constexpr Column kCalendarAlarmsOwn[] = {
    {"reminder_type", ColumnType::Integer}, {"value_type", ColumnType::Integer},
    {"alarm_type", ColumnType::Integer},    {"snooze", ColumnType::Real},
    {"repeat_count", ColumnType::Integer},  {"display_text", ColumnType::Text},
};

constexpr Column kCalendarRecurrencesOwn[] = {
    {"recurrence_time_exact", ColumnType::DateTime},
    {"day_list", ColumnType::Text},
    {"position_list", ColumnType::Text},
};

constexpr Column kCalendarExceptionRulesOwn[] = {
    {"exception_rule_id", ColumnType::Integer, KeyMark::Own},
    {"calendar_id", ColumnType::Integer, KeyMark::Reference},
    {"recurrence_type", ColumnType::Integer},
    {"recurrence_count", ColumnType::Integer},
    {"recurrence_time", ColumnType::Integer},
    {"recurrence_value", ColumnType::Integer},
    {"recurrence_time_exact", ColumnType::DateTime},
    {"day_list", ColumnType::Text},
    {"position_list", ColumnType::Text},
};

constexpr Column kCalendarXItemsOwn[] = {
    {"xitem_id", ColumnType::Integer, KeyMark::Own},
    {"calendar_id", ColumnType::Integer, KeyMark::Reference},
    {"name", ColumnType::Text},
    {"value", ColumnType::Text},
    {"params", ColumnType::Integer},
};

// How the store came to what it holds: one row for each run of an import and one for each of its
// files. Originals are the files' contents, each once, in compressed parts (OriginalTable.h).
constexpr Column kImportsOwn[] = {
    {"import_id", ColumnType::Integer, KeyMark::Own},
    {"command", ColumnType::Text},
    {"options", ColumnType::Text},        // one a line
    {"began", ColumnType::Integer},       // seconds since 1970
    {"process", ColumnType::Text},        // who is at it; NULL: done, empty: interrupted
    {"undone", ColumnType::Integer},      // seconds since 1970
    {"taken_back", ColumnType::Integer},  // records
    {"stayed", ColumnType::Integer},      // records and groups
};

constexpr Column kImportFilesOwn[] = {
    {"import_file_id", ColumnType::Integer, KeyMark::Own},
    {"import_id", ColumnType::Integer, KeyMark::Reference},
    {"original_id", ColumnType::Integer, KeyMark::Reference},
    {"name", ColumnType::Text},
    {"in_file", ColumnType::Integer},
    {"stored", ColumnType::Integer},
    {"refused", ColumnType::Integer},
    {"other_kind", ColumnType::Integer},
    {"lines", ColumnType::Integer},
    {"lines_not_kept", ColumnType::Integer},
};

constexpr Column kOriginalsOwn[] = {
    {"original_id", ColumnType::Integer, KeyMark::Own},
    {"sha256", ColumnType::Bytes},
    {"bytes", ColumnType::Integer},
    {"is_kept", ColumnType::Integer},
    {"content", ColumnType::Bytes},  // the first part; most have no other
};

constexpr Column kOriginalPartsOwn[] = {
    {"original_part_id", ColumnType::Integer, KeyMark::Own},
    {"original_id", ColumnType::Integer, KeyMark::Reference},
    {"content", ColumnType::Bytes},
};

// Where a record came from, and the fingerprint that it had then.
constexpr Column kContactOriginsOwn[] = {
    {"contact_id", ColumnType::Integer, KeyMark::Shared},
    {"import_file_id", ColumnType::Integer, KeyMark::Reference},
    {"first_line", ColumnType::Integer},
    {"last_line", ColumnType::Integer},
    {"fingerprint", ColumnType::Bytes},
};
constexpr Column kCalendarOriginsOwn[] = {
    {"calendar_id", ColumnType::Integer, KeyMark::Shared},
    {"import_file_id", ColumnType::Integer, KeyMark::Reference},
    {"first_line", ColumnType::Integer},
    {"last_line", ColumnType::Integer},
    {"fingerprint", ColumnType::Bytes},
};

constexpr Column kImportedGroupsOwn[] = {
    {"group_id", ColumnType::Integer, KeyMark::Shared},
    {"import_id", ColumnType::Integer, KeyMark::Reference},
    {"name", ColumnType::Text},  // that it had then
};

// Links that an import made of contacts that it hasn't brought.
constexpr Column kImportedLinksOwn[] = {
    {"imported_link_id", ColumnType::Integer, KeyMark::Own},
    {"import_id", ColumnType::Integer, KeyMark::Reference},
    {"contact_id", ColumnType::Integer, KeyMark::Reference},
    {"group_id", ColumnType::Integer, KeyMark::Reference},
};

// Contacts' pictures, each content once, and the names under which contacts have them. A name
// without content is that of a file that is to be removed, if it holds what the digest says.
constexpr Column kPicturesOwn[] = {
    {"picture_id", ColumnType::Integer, KeyMark::Own},
    {"sha256", ColumnType::Bytes},
    {"content", ColumnType::Bytes},
};
constexpr Column kPictureNamesOwn[] = {
    {"picture_name_id", ColumnType::Integer, KeyMark::Own},
    {"name", ColumnType::Text},
    {"picture_id", ColumnType::Integer, KeyMark::Reference},
    {"left_sha256", ColumnType::Bytes},
};

constexpr Column kStoreSettingsOwn[] = {
    {"setting_id", ColumnType::Integer, KeyMark::Own},
    {"name", ColumnType::Text},
    {"value", ColumnType::Bytes},
};

constexpr Column kContactContentsOwn[] = {
    {"contact_id", ColumnType::Integer, KeyMark::Shared},
    {"content", ColumnType::Bytes},
};
constexpr Column kCalendarContentsOwn[] = {
    {"calendar_id", ColumnType::Integer, KeyMark::Shared},
    {"content", ColumnType::Bytes},
};
constexpr Column kOutsideChangesOwn[] = {{"change_id", ColumnType::Integer, KeyMark::Own}};
constexpr Column kLastCommitsOwn[] = {
    {"connection_id", ColumnType::Integer, KeyMark::Own},
    {"number", ColumnType::Integer},  // of the connection's commits
};
constexpr Column kStoreVersionsOwn[] = {{"version", ColumnType::Integer, KeyMark::Own}};

constexpr Table kOwnColumns[] = {
    {"Contacts", kContactsOwn},
    {"ContactGroups", kContactGroupsOwn},
    {"ContactEvents", kContactEventsOwn},
    {"Calendars", kCalendarsOwn},
    {"CalendarAlarms", kCalendarAlarmsOwn},
    {"CalendarRecurrences", kCalendarRecurrencesOwn},
};

constexpr Table kOwnTables[] = {
    {"Contacts_ContactGroups", kContactLinksOwn},
    {"ContactXItems", kContactXItemsOwn},
    {"CalendarExceptionRules", kCalendarExceptionRulesOwn},
    {"CalendarXItems", kCalendarXItemsOwn},
    {"Imports", kImportsOwn},
    {"Originals", kOriginalsOwn},
    {"OriginalParts", kOriginalPartsOwn},
    {"ImportFiles", kImportFilesOwn},
    {"ContactOrigins", kContactOriginsOwn},
    {"CalendarOrigins", kCalendarOriginsOwn},
    {"ImportedGroups", kImportedGroupsOwn},
    {"ImportedLinks", kImportedLinksOwn},
    {"Pictures", kPicturesOwn},
    {"PictureNames", kPictureNamesOwn},
    {"StoreSettings", kStoreSettingsOwn},
};

constexpr Table kServerTables[] = {
    {kContactContents, kContactContentsOwn}, {kCalendarContents, kCalendarContentsOwn},
    {kOutsideChanges, kOutsideChangesOwn},   {kLastCommits, kLastCommitsOwn},
    {kStoreVersions, kStoreVersionsOwn},
};

std::vector<TableLayout> MakeStoreTables() {
  std::vector<TableLayout> tables;
  for (const auto schema : {ContactTables(), CalendarTables()}) {
    for (const Table& table : schema) {
      if (table.name == kNoTable) continue;
      const auto own = std::ranges::find(kOwnColumns, table.name, &Table::name);
      tables.push_back({table.name, table.columns,
                        own == std::end(kOwnColumns) ? std::span<const Column>{} : own->columns});
    }
  }
  for (const Table& table : kOwnTables) tables.push_back({table.name, {}, table.columns});
  return tables;
}

}  // namespace

std::vector<Column> TableLayout::Columns() const {
  std::vector<Column> all(schema.begin(), schema.end());
  all.insert(all.end(), own.begin(), own.end());
  return all;
}

const std::vector<TableLayout>& StoreTables() {
  static const std::vector<TableLayout> tables = MakeStoreTables();
  return tables;
}

const std::vector<TableLayout>& ServerTables() {
  static const std::vector<TableLayout> tables = [] {
    std::vector<TableLayout> all = StoreTables();
    for (const Table& table : kServerTables) all.push_back({table.name, {}, table.columns});
    return all;
  }();
  return tables;
}

std::vector<IndexLayout> StoreIndexes(const std::vector<TableLayout>& tables) {
  constexpr bool kOnlyFilled = true;
  constexpr bool kUnique = true;
  std::vector<IndexLayout> indexes = {
      {"Contacts", {"photo"}, kOnlyFilled},
      {"ContactGroups", {"group_name_folded"}, false, kUnique},
      {"Contacts_ContactGroups", {"contact_id", "group_id"}},
      {"ImportedLinks", {"contact_id", "group_id"}},
      {"Originals", {"sha256"}, false, kUnique},
      {"Pictures", {"sha256"}, false, kUnique},
      {"PictureNames", {"name"}},
      {kContactContents, {"content"}},
      {kCalendarContents, {"content"}},
  };
  std::erase_if(indexes, [&](const IndexLayout& index) {
    return std::ranges::find(tables, index.table, &TableLayout::name) == tables.end();
  });
  for (const TableLayout& table : tables) {
    for (const Column& column : table.Columns()) {
      if (column.key != KeyMark::Reference || OwnerOf(column).empty()) continue;
      const auto serves = [&](const IndexLayout& index) {
        return index.table == table.name && index.columns.front() == column.name;
      };
      if (std::ranges::none_of(indexes, serves))
        indexes.push_back({table.name, {column.name}, false});
    }
  }
  return indexes;
}

const TableLayout& StoreTable(std::string_view name) {
  const auto found = std::ranges::find(StoreTables(), name, &TableLayout::name);
  if (found == StoreTables().end())
    throw std::logic_error("no table is called " + std::string(name));
  return *found;
}

std::string_view KeyOf(const TableLayout& table) {
  const std::span<const Column> columns = table.schema.empty() ? table.own : table.schema;
  const auto isKey = [](const Column& column) {
    return column.key == KeyMark::Own || column.key == KeyMark::Shared;
  };
  return std::ranges::find_if(columns, isKey)->name;
}

std::string_view OwnerOf(const Column& reference) {
  const auto owner = std::ranges::find_if(
      StoreTables(), [&](const TableLayout& table) { return KeyOf(table) == reference.name; });
  return owner == StoreTables().end() ? std::string_view{} : owner->name;
}

}  // namespace pim
