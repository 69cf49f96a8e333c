// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <deque>
#include <string_view>

#include "records/RecordMap.h"
#include "store/RowInserter.h"
#include "store/Statement.h"

namespace pim {

// A record with the key under which it is stored: the address of a map's record class.
struct KeyedRecord {
  std::int64_t key;
  void* record;
};

// Writes records of one map into their table and the tables of their lists. Runs inside the
// caller's transaction.
class RecordWriter {
 public:
  RecordWriter(Database& db, const RecordMap& map);

  bool Holds(std::int32_t key);
  // The highest key that fits a record, or 0.
  std::int32_t HighestKey();
  void Insert(std::span<const KeyedRecord> records);
  // Columns that the map doesn't name stay, in the rows of lists too.
  void Update(std::int32_t key, void* record);

 private:
  RecordWriter(Database& db, const RecordMap& map, std::string_view key);

  struct ListWriter {
    ListWriter(Database& db, const ListMap& list, std::string_view key, std::string_view owner);

    // The entries of each owner from its `first` one on.
    void InsertEntries(std::span<const KeyedRecord> owners, std::size_t first, RuleRow& work);
    void UpdateEntries(const KeyedRecord& owner, RuleRow& work);

    const ListMap& map;
    RowInserter insert;
    Statement selectKeys;
    Statement update;
    Statement remove;
  };

  const RecordMap& map_;
  std::size_t recordsAtOnce_;
  Statement holds_;
  Statement highest_;
  RowInserter insert_;
  Statement update_;
  std::deque<ListWriter> lists_;
  RuleRow work_;
};

}  // namespace pim
