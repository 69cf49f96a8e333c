// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <optional>
#include <string_view>

#include "store/RecordRows.h"

namespace pim {

// All records of one map with their lists, for stores that are asked over a connection: while some
// are taken, the store is at the next ones already. Runs inside the caller's reading.
class RecordStream {
 public:
  // With a `filter`, a column of the record's table, the stream gives the rows whose number there
  // is the one it is asked for.
  RecordStream(Database& db, const RecordMap& map, std::string_view filter);

  void Start(std::int64_t filter);
  // The next records by ascending key; false when there was none.
  [[nodiscard]] bool Read(const NewRecord& newRecord);

 private:
  // The records whose keys lie between two, asked for together.
  struct Window {
    Window(Database& db, const RecordMap& map, std::string_view filter);

    std::int64_t first = 0;
    std::int64_t last = 0;
    bool isAsked = false;
    Statement records;
    std::deque<Statement> lists;
  };

  void Ask(Window& window, std::int64_t first);
  std::optional<std::int64_t> NextKey(std::int64_t first);

  Database& db_;
  const RecordMap& map_;
  bool isFiltered_;
  std::int64_t filter_ = 0;
  std::int64_t highest_ = 0;
  std::int64_t width_ = 0;  // of the next window
  Statement next_;
  Statement highestKey_;
  std::array<Window, 2> windows_;
  std::size_t current_ = 0;
  RecordRows rows_;
};

}  // namespace pim
