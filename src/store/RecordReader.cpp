// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/RecordReader.h"

#include <limits>

#include "records/StoreLayout.h"
#include "store/SqlText.h"

namespace pim {

RecordReader::RecordReader(Database& db, const RecordMap& map, std::string_view filter)
    : RecordReader(db, map, KeyOf(StoreTable(map.table)), filter) {}

RecordReader::RecordReader(Database& db, const RecordMap& map, std::string_view key,
                           std::string_view filter)
    : filtered_(!filter.empty()),
      records_(db, SelectRecordsSql(map.table, key, map.fields, filter)),
      rows_(db, map) {
  for (const ListMap& list : map.lists) {
    const std::string_view rowKey = KeyOf(StoreTable(list.table));
    lists_.push_back({list, Statement(db, SelectEntriesSql(list.table, rowKey, key, list.fields)),
                      Statement(db, SelectRangeSql(list.table, rowKey, key, list.fields))});
  }
  if (db.IsShared()) stream_.emplace(db, map, filter);
}

void RecordReader::ReadAll(std::int64_t filter, const NewRecord& newRecord) {
  StartAll(filter);
  if (stream_) {
    while (stream_->Read(newRecord)) {
    }
    return;
  }
  ReadRecords(filter, std::numeric_limits<std::int64_t>::max(), newRecord);
  if (rows_.keys().empty()) return;
  for (ListReader& list : lists_) rows_.TakeEntries(list.map, list.all);
}

void RecordReader::StartAll(std::int64_t filter) {
  next_ = kFirstKey;
  if (stream_) stream_->Start(filter);
}

bool RecordReader::ReadNext(std::int64_t filter, const NewRecord& newRecord) {
  constexpr std::int32_t kReadAtOnce = 1024;
  return stream_ ? stream_->Read(newRecord) : ReadSome(filter, kReadAtOnce, newRecord);
}

bool RecordReader::ReadSome(std::int64_t filter, std::int32_t limit, const NewRecord& newRecord) {
  ReadRecords(filter, limit, newRecord);
  if (rows_.keys().empty()) return false;
  for (ListReader& list : lists_) {
    list.ofRange.Bind(1, rows_.keys().front());
    list.ofRange.Bind(2, rows_.keys().back());
    list.ofRange.Start();
  }
  for (ListReader& list : lists_) rows_.TakeEntries(list.map, list.ofRange);
  return true;
}

bool RecordReader::ReadOne(std::int32_t key, const NewRecord& newRecord) {
  next_ = key;
  return ReadSome(0, 1, newRecord) && rows_.keys().front() == key;
}

void RecordReader::ReadRecords(std::int64_t filter, std::int64_t limit,
                               const NewRecord& newRecord) {
  if (!next_) return rows_.Forget();
  records_.Bind(1, *next_);
  records_.Bind(2, limit);
  if (filtered_) records_.Bind(3, filter);
  rows_.TakeRecords(records_, *next_, newRecord);
  if (rows_.keys().empty()) return;
  const std::int64_t last = rows_.keys().back();
  next_ = last == std::numeric_limits<std::int64_t>::max() ? std::nullopt : std::optional(last + 1);
}

}  // namespace pim
