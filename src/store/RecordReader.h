// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <deque>
#include <limits>
#include <optional>
#include <string_view>
#include <vector>

#include "records/RecordMap.h"
#include "store/RecordRows.h"
#include "store/RecordStream.h"
#include "store/Statement.h"

namespace pim {

// Reads records of one map with their lists. Runs inside the caller's transaction.
class RecordReader {
 public:
  // With a `filter`, a column of the record's table, the reader gives the rows whose number there
  // is the one it is asked for.
  RecordReader(Database& db, const RecordMap& map, std::string_view filter = {});

  // All records by ascending key.
  void ReadAll(std::int64_t filter, const NewRecord& newRecord);
  // The same, some at a time: ReadNext gives false when there are no more.
  void StartAll(std::int64_t filter);
  [[nodiscard]] bool ReadNext(std::int64_t filter, const NewRecord& newRecord);

  // The next records, not more than `limit`, from where the last call ended. False when there was
  // none.
  [[nodiscard]] bool ReadSome(std::int64_t filter, std::int32_t limit, const NewRecord& newRecord);
  // The record of that key alone, of a reader without a filter; false when there is none. The next
  // ReadSome goes on behind it.
  [[nodiscard]] bool ReadOne(std::int32_t key, const NewRecord& newRecord);
  // The next ReadSome begins with the first record from that key on.
  void GoTo(std::int32_t key) { next_ = key; }

 private:
  static constexpr std::int64_t kFirstKey = std::numeric_limits<std::int64_t>::min();

  RecordReader(Database& db, const RecordMap& map, std::string_view key, std::string_view filter);

  struct ListReader {
    const ListMap& map;
    Statement all;      // in the order in which the rows were stored
    Statement ofRange;  // parameters: first and last owner
  };

  void ReadRecords(std::int64_t filter, std::int64_t limit, const NewRecord& newRecord);

  bool filtered_;
  Statement records_;
  std::deque<ListReader> lists_;
  std::optional<std::int64_t> next_ = kFirstKey;  // none behind the last key that there can be
  RecordRows rows_;
  std::optional<RecordStream> stream_;
};

}  // namespace pim
