// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/RecordWriter.h"

#include <algorithm>
#include <limits>
#include <vector>

#include "records/StoreLayout.h"
#include "store/FieldIo.h"
#include "store/SqlText.h"

namespace pim {

namespace {

// Their rows are written table by table; so many stay in the processor's cache meanwhile. A server
// takes more time to be asked than that gains.
constexpr std::size_t kRecordsAtOnce = 128;

}  // namespace

RecordWriter::RecordWriter(Database& db, const RecordMap& map)
    : RecordWriter(db, map, KeyOf(StoreTable(map.table))) {}

RecordWriter::RecordWriter(Database& db, const RecordMap& map, std::string_view key)
    : map_(map),
      recordsAtOnce_(db.IsShared() ? std::numeric_limits<std::size_t>::max() : kRecordsAtOnce),
      holds_(db, SelectKeysSql(map.table, key, key)),
      highest_(db, HighestKeySql(map.table, key)),
      insert_(db, map.table, key, map.fields),
      update_(db, UpdateSql(map.table, key, map.fields)) {
  for (const ListMap& list : map.lists)
    lists_.emplace_back(db, list, KeyOf(StoreTable(list.table)), key);
}

bool RecordWriter::Holds(std::int32_t key) {
  holds_.Bind(1, std::int64_t{key});
  Rows rows(holds_);
  return rows.Next();
}

std::int32_t RecordWriter::HighestKey() {
  Rows rows(highest_);
  return rows.Next() ? static_cast<std::int32_t>(highest_.Integer(0)) : 0;
}

void RecordWriter::Insert(std::span<const KeyedRecord> records) {
  while (!records.empty()) {
    const auto some = records.first(std::min(recordsAtOnce_, records.size()));
    records = records.subspan(some.size());
    insert_.Start(some.size());
    for (const KeyedRecord& row : some) insert_.Add(row.key, map_.fields, row.record);
    for (ListWriter& list : lists_) list.InsertEntries(some, 0, work_);
  }
}

void RecordWriter::Update(std::int32_t key, void* record) {
  BindRow(update_.parameters(), 1, key, map_.fields, record);
  update_.Run();
  for (ListWriter& list : lists_) list.UpdateEntries({key, record}, work_);
}

RecordWriter::ListWriter::ListWriter(Database& db, const ListMap& list, std::string_view key,
                                     std::string_view owner)
    : map(list),
      insert(db, list.table, owner, list.fields),
      selectKeys(db, SelectKeysSql(list.table, key, owner)),
      update(db, UpdateSql(list.table, key, list.fields)),
      remove(db, DeleteSql(list.table, key)) {}

void RecordWriter::ListWriter::InsertEntries(std::span<const KeyedRecord> owners, std::size_t first,
                                             RuleRow& work) {
  std::size_t entries = 0;
  for (const KeyedRecord& owner : owners) {
    const std::size_t count = map.count(owner.record);
    entries += count - std::min(first, count);
  }
  insert.Start(entries);
  for (const KeyedRecord& owner : owners) {
    const std::size_t count = map.count(owner.record);
    for (std::size_t i = first; i < count; ++i)
      insert.Add(owner.key, map.fields, map.at(owner.record, i, work));
  }
}

// Row by row in their order, so that what another program keeps in further columns stays.
void RecordWriter::ListWriter::UpdateEntries(const KeyedRecord& owner, RuleRow& work) {
  std::vector<std::int64_t> keys;
  selectKeys.Bind(1, owner.key);
  for (Rows rows(selectKeys); rows.Next();) keys.push_back(selectKeys.Integer(0));
  const std::size_t count = map.count(owner.record);
  for (std::size_t i = 0; i < keys.size(); ++i) {
    if (i < count) {
      BindRow(update.parameters(), 1, keys[i], map.fields, map.at(owner.record, i, work));
      update.Run();
    } else {
      remove.Bind(1, keys[i]);
      remove.Run();
    }
  }
  InsertEntries({&owner, 1}, keys.size(), work);
}

}  // namespace pim
