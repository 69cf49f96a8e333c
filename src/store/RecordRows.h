// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "records/RecordMap.h"
#include "store/FieldIo.h"
#include "store/Statement.h"

namespace pim {

// Makes the record of a key, as KeyFromStored gives it, and gives the address of the map's record
// class.
using NewRecord = std::function<void*(std::int32_t key)>;

// Puts rows together to records: first those of the records, then those of their lists.
class RecordRows {
 public:
  RecordRows(Database& db, const RecordMap& map) : db_(db), map_(map) {}

  // The rows that the statement gives, a key and the map's fields, by ascending keys from `first`
  // on. Forgets the records before them.
  void TakeRecords(Statement& records, std::int64_t first, const NewRecord& newRecord);
  // The entries of those records; the statement's rows may hold those of others.
  void TakeEntries(const ListMap& list, Statement& entries);

  void Forget() { keys_.clear(); }
  // The keys of the records, as they are stored.
  const std::vector<std::int64_t>& keys() const { return keys_; }

 private:
  void* Find(std::int64_t key);
  void ReadFields(PreparedStatement& row, std::span<const FieldMap> fields, void* entry);

  Database& db_;
  const RecordMap& map_;
  std::vector<std::int64_t> keys_;
  std::vector<void*> records_;  // of the same places
  std::size_t last_ = 0;        // that was found
  RuleRow work_;
  FieldReader fields_;
};

}  // namespace pim
