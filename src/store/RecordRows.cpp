// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/RecordRows.h"

#include <algorithm>
#include <string>

#include "store/StoredForms.h"

namespace pim {

void RecordRows::TakeRecords(Statement& records, std::int64_t first, const NewRecord& newRecord) {
  keys_.clear();
  records_.clear();
  for (Rows rows(records); rows.Next();) {
    const std::int64_t key = records.Integer(0);
    // Where the key's column isn't as it was made, reading on might never end.
    if (key < first || (!keys_.empty() && key <= keys_.back()))
      db_.Fail("damaged (the keys of " + std::string(map_.table) + " aren't in order)");
    void* record = newRecord(KeyFromStored(key));
    ReadFields(records.row(), map_.fields, record);
    keys_.push_back(key);
    records_.push_back(record);
  }
}

void RecordRows::TakeEntries(const ListMap& list, Statement& entries) {
  last_ = 0;
  for (Rows rows(entries); rows.Next();) {
    if (!entries.IsInteger(0)) continue;  // of no record
    void* record = Find(entries.Integer(0));
    void* entry = record != nullptr ? list.add(record, work_) : nullptr;
    if (entry == nullptr) continue;
    ReadFields(entries.row(), list.fields, entry);
    if (list.finish != nullptr) list.finish(record, work_);
  }
}

// Most columns of most rows are NULL, which leaves a field as it is.
void RecordRows::ReadFields(PreparedStatement& row, std::span<const FieldMap> fields, void* entry) {
  const int end = static_cast<int>(fields.size()) + 1;
  for (int column = row.NextFilled(1, end); column < end; column = row.NextFilled(column + 1, end))
    fields_.Read(row, column, fields[static_cast<std::size_t>(column - 1)].field(entry));
}

// Rows come mostly in their owners' order, so the last one or its neighbour is looked at first.
void* RecordRows::Find(std::int64_t key) {
  for (std::size_t near = last_; near < std::min(last_ + 3, keys_.size()); ++near) {
    if (keys_[near] != key) continue;
    last_ = near;
    return records_[near];
  }
  const auto found = std::ranges::lower_bound(keys_, key);
  if (found == keys_.end() || *found != key) return nullptr;
  last_ = static_cast<std::size_t>(found - keys_.begin());
  return records_[last_];
}

}  // namespace pim
