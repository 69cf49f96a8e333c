// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "pim/records/Calendar.h"
#include "platform/ZoneRecord.h"

namespace pim {

// A clock on a wall, with its daylight time. Its times are in seconds since 1970 as if it were one
// of UTC.
class ItemClock {
 public:
  // One of UTC.
  ItemClock() = default;
  // Of a record's zone, whose daylight time comes back each year by the weekdays of the months in
  // which it begins and ends; of UTC where it says nothing, or what is no zone.
  explicit ItemClock(const CCalendarZone& zone);
  static ItemClock OfMachine();

  // What it shows at a moment, in seconds since 1970, UTC.
  std::int64_t WallOf(std::int64_t seconds) const;
  // The moment at which it shows a time; of two the one in daylight time, where the year begins
  // without it.
  std::int64_t MomentOf(std::int64_t wall) const;

  // The day, from 1970-01-01 on, on which it is then; the next one at the moment at which that
  // begins without a midnight, since the clock is put forward.
  std::int64_t DayAt(std::int64_t seconds) const;

 private:
  TIME_ZONE_INFORMATION zone_;
};

}  // namespace pim
