// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "pim/records/Calendar.h"

namespace pim {

// When calendar items happen: the dates of their rules without those of their exception rules.

// Times with one distance between each other, ascending.
struct TimeRun {
  std::int64_t first;
  std::int64_t step;   // above 0
  std::int64_t count;  // at least 1

  friend bool operator==(const TimeRun&, const TimeRun&) = default;
};

// Days from 1970-01-01 on, both within; earlier ones are below 0.
struct DayRange {
  std::int64_t first;
  std::int64_t last;
};

struct Occurrences {
  // In seconds since 1970, UTC; of an all-day item in days since 1970-01-01. Ascending, each once;
  // empty for an item without a start, or without any in the range.
  std::vector<TimeRun> times;
  // The same ones on the clock of the item's zone, or the machine's where it has none, in seconds
  // as if that clock were UTC; empty for an all-day item.
  std::vector<TimeRun> wall;
  // In seconds, of an all-day item the days behind the first one; 0 without an end, or one ahead of
  // the start.
  std::int64_t length = 0;
  bool isAllDay = false;
  // Whether it goes on behind the range, or happens more often than is ever looked at.
  bool isCut = false;
};

// Those that reach into the range. The start of an item that doesn't repeat is in it, too, only
// where it reaches into it.
Occurrences OccurrencesOf(const CCalendar& item, const DayRange& range);

// A moment, which is UTC, on the clock of the item's zone, or the machine's where it has none, in
// seconds as if that clock were UTC; nothing for what is no date.
std::optional<std::int64_t> WallTimeOf(const CCalendar& item, const COleDateTime& utc);

// "UTC+09:00 (JST)"; empty for an item without a zone.
std::string ZoneTextOf(const CCalendarZone& zone);

// Seconds since 1970, UTC; nothing for what is no date.
std::optional<std::int64_t> SecondsOf(const COleDateTime& utc);

}  // namespace pim
