// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "formats/icalendar/ItemClock.h"
#include "pim/records/Calendar.h"

namespace pim {

// When calendar items happen: the dates of their rules without those of their exception rules.

// Times with one distance between each other.
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
  // In seconds since 1970, UTC; of an all-day item in days since 1970-01-01. Each once, runs by
  // their first times; those of several days of the week may lie between each other. Empty for an
  // item without a start, or without any in the range.
  std::vector<TimeRun> times;
  // The same ones, run by run, on the item's clock, in seconds as if that clock were UTC; empty for
  // an all-day item.
  std::vector<TimeRun> wall;
  // In seconds, of an all-day item the days behind the first one; 0 without an end, or one ahead of
  // the start.
  std::int64_t length = 0;
  // The length on the item's clock, which differs where that is put forward or back meanwhile.
  std::int64_t wallLength = 0;
  // An end ahead of the start, as times count.
  std::optional<std::int64_t> earlyEnd = {};
  bool isAllDay = false;
  // Whether it goes on behind the range, or repeats in a way that isn't followed.
  bool isCut = false;
};

// An item's clock is that of its own zone, or the machine's where it has none. A rule is followed
// on it, or in UTC where only that makes the start of an item without a zone a date of its own
// rule. A start is a date of its item, whether the rule names it or not. One object serves for many
// items, and keeps the last one's zone and the machine's. All of it throws std::bad_alloc.
class OccurrenceFinder {
 public:
  OccurrenceFinder();

  // Those that reach into the range, by the item's clock. Behind some tens of thousands of dates
  // none is looked for.
  Occurrences Of(const CCalendar& item, const DayRange& range);
  // A moment, which is UTC, on the item's clock, in seconds as if that clock were UTC; nothing for
  // what is no date.
  std::optional<std::int64_t> WallTime(const CCalendar& item, const COleDateTime& utc);

 private:
  class Walk;

  bool IsUtcAlone(const CCalendar& item) const;
  // Holds until the next call.
  const ItemClock& ClockOf(const CCalendarZone& zone);

  ItemClock utc_;
  ItemClock machine_;
  ItemClock own_;  // that of ownZone_
  CCalendarZone ownZone_;
};

// "UTC+09:00 (JST)"; empty for an item without a zone.
std::string ZoneTextOf(const CCalendarZone& zone);

// Seconds since 1970, UTC; nothing for what is no date.
std::optional<std::int64_t> SecondsOf(const COleDateTime& utc);

}  // namespace pim
