// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/icalendar/ItemClock.h"

#include <chrono>

#include "formats/icalendar/ItemZone.h"
#include "support/DateTimeZones.h"

namespace pim {
namespace {

constexpr int kSecondsOfMinute = 60;

// From day 0 of date-times to 1970, in seconds.
constexpr std::int64_t kTo1970 = -std::chrono::seconds(kDayZero.time_since_epoch()).count();

// A change of a zone as it comes back each year; `offset` is that of the clock before it, in
// seconds.
SYSTEMTIME YearlyChange(const COleDateTime& utc, int offset) {
  icaltimetype time = *IcalUtc(utc);
  icaltime_adjust(&time, 0, 0, 0, offset);
  SYSTEMTIME change;
  change.wMonth = static_cast<std::uint16_t>(time.month);
  change.wDayOfWeek = static_cast<std::uint16_t>(icaltime_day_of_week(time) - 1);
  const int position = WeekOfMonth(time);
  constexpr std::uint16_t kLast = 5;
  change.wDay = position < 0 ? kLast : static_cast<std::uint16_t>(position);
  change.wHour = static_cast<std::uint16_t>(time.hour);
  change.wMinute = static_cast<std::uint16_t>(time.minute);
  return change;
}

}  // namespace

ItemClock::ItemClock(const CCalendarZone& zone) {
  const auto offset = OffsetOf(zone.tzOffset);
  if (!offset) return;
  zone_.Bias = -*offset / kSecondsOfMinute;
  if (!HasDaylight(zone)) return;
  const int daylight = *OffsetOf(zone.daylightOffset);
  zone_.DaylightBias = (*offset - daylight) / kSecondsOfMinute;
  zone_.DaylightDate = YearlyChange(zone.daylightStart, *offset);
  zone_.StandardDate = YearlyChange(zone.daylightEnd, daylight);
}

ItemClock ItemClock::OfMachine() {
  ItemClock clock;
  GetTimeZoneInformation(clock.zone_);
  return clock;
}

std::int64_t ItemClock::WallOf(std::int64_t seconds) const {
  SYSTEMTIME utc;
  SYSTEMTIME local;
  const bool exists = SystemTimeFromSeconds(seconds + kTo1970, utc) &&
                      SystemTimeToTzSpecificLocalTime(zone_, utc, local);
  const auto wall = exists ? SecondsFromSystemTime(local) : std::nullopt;
  return wall ? *wall - kTo1970 : seconds;
}

std::int64_t ItemClock::MomentOf(std::int64_t wall) const {
  SYSTEMTIME local;
  SYSTEMTIME utc;
  const bool exists =
      SystemTimeFromSeconds(wall + kTo1970, local) && LocalToUtc(&zone_, local, utc);
  const auto seconds = exists ? SecondsFromSystemTime(utc) : std::nullopt;
  return seconds ? *seconds - kTo1970 : wall;
}

std::int64_t ItemClock::DayAt(std::int64_t seconds) const {
  const std::chrono::sys_seconds wall{std::chrono::seconds(WallOf(seconds))};
  const std::int64_t day = std::chrono::floor<std::chrono::days>(wall).time_since_epoch().count();
  return MomentOf((day + 1) * kSecondsOfDay) == seconds ? day + 1 : day;
}

}  // namespace pim
