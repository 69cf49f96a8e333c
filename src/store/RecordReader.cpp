// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/RecordReader.h"

#include <algorithm>

#include "records/StoreLayout.h"
#include "store/SqlText.h"
#include "store/StoredForms.h"

namespace pim {

RecordReader::RecordReader(Database& db, const RecordMap& map, std::string_view filter)
    : RecordReader(db, map, KeyOf(StoreTable(map.table)), filter) {}

RecordReader::RecordReader(Database& db, const RecordMap& map, std::string_view key,
                           std::string_view filter)
    : db_(db),
      map_(map),
      filtered_(!filter.empty()),
      records_(db, SelectRecordsSql(map.table, key, map.fields, filter)) {
  for (const ListMap& list : map.lists) {
    const std::string_view rowKey = KeyOf(StoreTable(list.table));
    lists_.push_back({list, Statement(db, SelectEntriesSql(list.table, rowKey, key, list.fields)),
                      Statement(db, SelectRangeSql(list.table, rowKey, key, list.fields))});
  }
}

void RecordReader::ReadAll(std::int64_t filter, const NewRecord& newRecord) {
  Restart();
  if (const std::int32_t some = db_.RecordsAtOnce(); some > 0) {
    while (ReadSome(filter, some, newRecord)) {
    }
    return;
  }
  ReadRecords(filter, std::numeric_limits<std::int64_t>::max(), newRecord);
  if (owners_.keys.empty()) return;
  for (ListReader& list : lists_) ReadEntries(list.map, list.all);
}

bool RecordReader::ReadSome(std::int64_t filter, std::int32_t limit, const NewRecord& newRecord) {
  ReadRecords(filter, limit, newRecord);
  if (owners_.keys.empty()) return false;
  for (ListReader& list : lists_) {
    list.ofRange.Bind(1, owners_.keys.front());
    list.ofRange.Bind(2, owners_.keys.back());
    list.ofRange.Start();
  }
  for (ListReader& list : lists_) ReadEntries(list.map, list.ofRange);
  return true;
}

bool RecordReader::ReadOne(std::int32_t key, const NewRecord& newRecord) {
  next_ = key;
  return ReadSome(0, 1, newRecord) && owners_.keys.front() == key;
}

void RecordReader::ReadRecords(std::int64_t filter, std::int64_t limit,
                               const NewRecord& newRecord) {
  owners_ = {};
  if (!next_) return;
  records_.Bind(1, *next_);
  records_.Bind(2, limit);
  if (filtered_) records_.Bind(3, filter);
  for (Rows rows(records_); rows.Next();) {
    const std::int64_t key = records_.Integer(0);
    // Where the key's column isn't as it was made, reading on might never end.
    if (key < *next_ || (!owners_.keys.empty() && key <= owners_.keys.back()))
      db_.Fail("damaged (the keys of " + std::string(map_.table) + " aren't in order)");
    void* record = newRecord(KeyFromStored(key));
    ReadFields(records_.row(), map_.fields, record);
    owners_.keys.push_back(key);
    owners_.records.push_back(record);
  }
  if (owners_.keys.empty()) return;
  const std::int64_t last = owners_.keys.back();
  next_ = last == std::numeric_limits<std::int64_t>::max() ? std::nullopt : std::optional(last + 1);
}

void RecordReader::ReadEntries(const ListMap& list, Statement& statement) {
  owners_.last = 0;
  for (Rows rows(statement); rows.Next();) {
    if (!statement.IsInteger(0)) continue;  // of no record
    void* record = owners_.Find(statement.Integer(0));
    void* entry = record != nullptr ? list.add(record, work_) : nullptr;
    if (entry == nullptr) continue;
    ReadFields(statement.row(), list.fields, entry);
    if (list.finish != nullptr) list.finish(record, work_);
  }
}

// Most columns of most rows are NULL, which leaves a field as it is.
void RecordReader::ReadFields(PreparedStatement& row, std::span<const FieldMap> fields,
                              void* entry) {
  const int end = static_cast<int>(fields.size()) + 1;
  for (int column = row.NextFilled(1, end); column < end; column = row.NextFilled(column + 1, end))
    fields_.Read(row, column, fields[static_cast<std::size_t>(column - 1)].field(entry));
}

// Rows come mostly in their owners' order, so the last one or its neighbour is looked at first.
void* RecordReader::Owners::Find(std::int64_t key) {
  for (std::size_t near = last; near < std::min(last + 3, keys.size()); ++near) {
    if (keys[near] != key) continue;
    last = near;
    return records[near];
  }
  const auto found = std::ranges::lower_bound(keys, key);
  if (found == keys.end() || *found != key) return nullptr;
  last = static_cast<std::size_t>(found - keys.begin());
  return records[last];
}

}  // namespace pim
