// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/RecordStream.h"

#include <algorithm>
#include <limits>
#include <string>

#include "records/StoreLayout.h"
#include "store/SqlText.h"

namespace pim {
namespace {

// Enough that to ask for them costs little beside them; where keys have gaps, windows are wider.
constexpr std::int64_t kNarrowest = 1024;
constexpr std::int64_t kWidest = 8 * kNarrowest;

}  // namespace

RecordStream::Window::Window(Database& db, const RecordMap& map, std::string_view filter)
    : records(db,
              SelectRecordRangeSql(map.table, KeyOf(StoreTable(map.table)), map.fields, filter)) {
  for (const ListMap& list : map.lists) {
    lists.emplace_back(db, SelectRangeSql(list.table, KeyOf(StoreTable(list.table)),
                                          KeyOf(StoreTable(map.table)), list.fields));
  }
}

RecordStream::RecordStream(Database& db, const RecordMap& map, std::string_view filter)
    : db_(db),
      map_(map),
      isFiltered_(!filter.empty()),
      next_(db, NextKeySql(map.table, KeyOf(StoreTable(map.table)))),
      highestKey_(db, LastKeySql(map.table, KeyOf(StoreTable(map.table)))),
      windows_{Window(db, map, filter), Window(db, map, filter)},
      rows_(db, map) {}

void RecordStream::Start(std::int64_t filter) {
  filter_ = filter;
  width_ = kNarrowest;
  for (Window& window : windows_) {
    window.records.Reset();
    for (Statement& list : window.lists) list.Reset();
    window.isAsked = false;
  }
  const auto first = NextKey(std::numeric_limits<std::int64_t>::min());
  if (!first) return;
  highestKey_.Start();
  if (Rows rows(highestKey_); rows.Next()) highest_ = highestKey_.Integer(0);
  Ask(windows_[current_], *first);
}

std::optional<std::int64_t> RecordStream::NextKey(std::int64_t first) {
  next_.Bind(1, first);
  Rows rows(next_);
  return rows.Next() ? std::optional(next_.Integer(0)) : std::nullopt;
}

void RecordStream::Ask(Window& window, std::int64_t first) {
  window.first = first;
  // Keys may lie farther apart than a number of theirs reaches.
  const std::uint64_t room =
      static_cast<std::uint64_t>(highest_) - static_cast<std::uint64_t>(first);
  window.last = room < static_cast<std::uint64_t>(width_) ? highest_ : first + width_ - 1;
  window.isAsked = true;
  window.records.Bind(1, window.first);
  window.records.Bind(2, window.last);
  if (isFiltered_) window.records.Bind(3, filter_);
  window.records.Start();
  for (Statement& list : window.lists) {
    list.Bind(1, window.first);
    list.Bind(2, window.last);
    list.Start();
  }
}

bool RecordStream::Read(const NewRecord& newRecord) {
  for (;;) {
    Window& window = windows_[current_];
    Window& following = windows_[1 - current_];
    if (!window.isAsked) return false;
    if (window.last < highest_) Ask(following, window.last + 1);
    rows_.TakeRecords(window.records, window.first, newRecord);
    std::size_t list = 0;
    for (Statement& entries : window.lists) rows_.TakeEntries(map_.lists[list++], entries);
    window.isAsked = false;
    current_ = 1 - current_;
    const auto found = static_cast<std::int64_t>(rows_.keys().size());
    if (found < width_ / 2) {
      width_ = std::min(width_ * 2, kWidest);
    } else if (found > kNarrowest) {
      width_ = std::max(width_ / 2, kNarrowest);
    }
    if (found > 0) return true;
    if (!following.isAsked) return false;
    // Behind a gap; what was asked for may lie in it as well.
    const auto next = NextKey(following.first);
    if (next && *next > following.last) Ask(following, *next);
  }
}

}  // namespace pim
