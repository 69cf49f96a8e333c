// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/ContentTable.h"

#include <algorithm>
#include <cstring>
#include <unordered_map>

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
      find_(db, SelectAmongSql(names.table, kContent, names.key, kSoughtAtOnce)),
      photos_(db, names.records, names.key, hasPhotos_ ? photoColumn : names.key),
      between_(db, "SELECT " + names.key + ", content FROM " + names.table + " WHERE " + names.key +
                       " BETWEEN ? AND ?"),
      sweep_(db, "DELETE FROM " + names.table + " WHERE NOT EXISTS (SELECT 1 FROM " +
                     names.records + " WHERE " + names.records + "." + names.key + " = " +
                     names.table + "." + names.key + ")") {}

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

std::vector<ContentTable::Found> ContentTable::Find(std::span<const Fingerprint> prints) {
  std::vector<Found> found;
  while (!prints.empty()) {
    const auto some = prints.first(std::min(kSoughtAtOnce, prints.size()));
    prints = prints.subspan(some.size());
    // The last one stands for those that are too few.
    for (std::size_t i = 0; i < kSoughtAtOnce; ++i)
      find_.BindBytes(static_cast<int>(i) + 1, PrintBytes(some[std::min(i, some.size() - 1)]));
    for (Rows rows(find_); rows.Next();)
      found.push_back({{KeyFromStored(find_.Integer(1)), PrintIn(find_, 0)}, {}});
  }
  if (hasPhotos_) AddPhotos(found);
  return found;
}

// By a statement of its own: a join of the two tables would be planned for tables of another size.
void ContentTable::AddPhotos(std::span<Found> records) {
  std::vector<std::int32_t> keys;
  for (const Found& record : records) keys.push_back(record.row.key);
  std::unordered_map<std::int32_t, WideText> photos;
  photos_.Visit(std::move(keys), [&](Statement& row) {
    if (row.IsNull(1)) return;
    fields_.Read(row.row(), 1, PictureName{&photos[KeyFromStored(row.Integer(0))]});
  });
  for (Found& record : records) {
    if (const auto photo = photos.find(record.row.key); photo != photos.end())
      record.photo = photo->second.str();
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
