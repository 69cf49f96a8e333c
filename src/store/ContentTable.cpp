// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/ContentTable.h"

#include <algorithm>
#include <cstring>

#include "records/StoreLayout.h"
#include "store/SqlText.h"
#include "store/StoredForms.h"

namespace pim {
namespace {

constexpr std::string_view kContent = "content";
constexpr std::size_t kSoughtAtOnce = 256;

std::string_view PrintBytes(const Fingerprint& print) {
  return {reinterpret_cast<const char*>(&print), sizeof print};
}

// Parameters: so many fingerprints.
std::string FindSql(const ContentTable::Names& names, std::string_view photoColumn) {
  std::string sql = "SELECT " + names.key + ", content";
  if (!photoColumn.empty()) sql.append(", ").append(photoColumn);
  sql += " FROM " + names.table;
  if (!photoColumn.empty()) sql += " JOIN " + names.records + " USING (" + names.key + ")";
  sql += " WHERE content IN (?";
  for (std::size_t i = 1; i < kSoughtAtOnce; ++i) sql += ", ?";
  return sql + ")";
}

Fingerprint PrintIn(Statement& row, int column) {
  Fingerprint print;
  const std::string_view bytes = row.Bytes(column);
  if (bytes.size() == sizeof print) std::memcpy(&print, bytes.data(), sizeof print);
  return print;
}

}  // namespace

ContentTable::ContentTable(Database& db, const RecordMap& map, std::string_view photoColumn)
    : ContentTable(
          db,
          {std::string(map.table == ContactMap().table ? kContactContents : kCalendarContents),
           std::string(map.table), std::string(KeyOf(StoreTable(map.table)))},
          photoColumn) {}

ContentTable::ContentTable(Database& db, const Names& names, std::string_view photoColumn)
    : hasPhotos_(!photoColumn.empty()),
      insert_(db, names.table, {names.key, kContent}),
      change_(db, "UPDATE " + names.table + " SET content = ?2 WHERE " + names.key + " = ?1"),
      find_(db, FindSql(names, photoColumn)),
      between_(db, "SELECT " + names.key + ", content FROM " + names.table + " WHERE " + names.key +
                       " BETWEEN ? AND ?") {}

void ContentTable::Insert(std::span<const Row> rows) {
  insert_.Start(rows.size());
  for (const Row& row : rows) {
    insert_.AddRow([&](Parameters& place, int index) {
      place.Bind(index, std::int64_t{row.key});
      place.BindBytes(index + 1, PrintBytes(row.print));
    });
  }
}

void ContentTable::Change(const Row& row) {
  change_.Bind(1, std::int64_t{row.key});
  change_.BindBytes(2, PrintBytes(row.print));
  if (change_.RunChanging() == 0) Insert({&row, 1});
}

void ContentTable::Find(std::span<const Fingerprint> prints,
                        const std::function<void(const Found&)>& visitor) {
  while (!prints.empty()) {
    const auto some = prints.first(std::min(kSoughtAtOnce, prints.size()));
    prints = prints.subspan(some.size());
    for (std::size_t i = 0; i < kSoughtAtOnce; ++i) {
      // The last one stands for those that are too few.
      const Fingerprint& print = some[std::min(i, some.size() - 1)];
      find_.BindBytes(static_cast<int>(i) + 1, PrintBytes(print));
    }
    for (Rows rows(find_); rows.Next();) {
      Found found{{KeyFromStored(find_.Integer(0)), PrintIn(find_, 1)}, {}};
      if (WideText photo; hasPhotos_ && !find_.IsNull(2)) {
        fields_.Read(find_.row(), 2, PictureName{&photo});
        found.photo = photo.str();
      }
      visitor(found);
    }
  }
}

std::map<std::int32_t, Fingerprint> ContentTable::Between(std::int32_t first, std::int32_t last) {
  std::map<std::int32_t, Fingerprint> prints;
  between_.Bind(1, std::int64_t{first});
  between_.Bind(2, std::int64_t{last});
  for (Rows rows(between_); rows.Next();)
    prints.emplace(KeyFromStored(between_.Integer(0)), PrintIn(between_, 1));
  return prints;
}

}  // namespace pim
