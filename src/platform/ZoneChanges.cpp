// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/ZoneChanges.h"

#include <chrono>

#include "platform/ZoneRecord.h"

namespace pim {
namespace {

thread_local std::uint32_t last_error = ERROR_SUCCESS;

// The last time at or before `utc` that a change of the clock happened which comes every year, when
// UTC was local time + `bias` before it. UTC and local time can be in different years, hence the
// years around `year`, which is that of `utc`.
std::optional<std::int64_t> LastChange(const SYSTEMTIME& date, std::int64_t bias, std::int64_t utc,
                                       int year) {
  for (const int candidate : {year + 1, year, year - 1, year - 2}) {
    const auto change = ZoneChangeInYear(date, candidate);
    if (!change) return {};
    if (*change + bias * 60 <= utc) return *change + bias * 60;
  }
  return {};
}

}  // namespace

std::optional<std::int64_t> ZoneChangeInYear(const SYSTEMTIME& date, int year) {
  if (date.wMonth < 1 || date.wMonth > 12 || date.wDay == 0 || date.wDayOfWeek > 6) return {};
  if (date.wHour > 23 || date.wMinute > 59) return {};
  const auto month = std::chrono::year{year} / std::chrono::month{date.wMonth};
  const std::chrono::sys_days first{month / 1};
  const int length = static_cast<int>(unsigned{(month / std::chrono::last).day()});
  const std::chrono::days to_weekday =
      std::chrono::weekday{date.wDayOfWeek} - std::chrono::weekday{first};
  int day = 1 + static_cast<int>(to_weekday.count()) + 7 * (date.wDay - 1);
  if (day > length) day -= 7;
  const std::chrono::seconds seconds = first + std::chrono::days{day - 1} - kDayZero +
                                       std::chrono::hours{date.wHour} +
                                       std::chrono::minutes{date.wMinute};
  return seconds.count();
}

bool SystemTimeToTzSpecificLocalTime(const TIME_ZONE_INFORMATION& zone, const SYSTEMTIME& utc,
                                     SYSTEMTIME& local) {
  const auto seconds = SecondsFromSystemTime(utc);
  if (!seconds) return false;
  std::int64_t bias = zone.Bias;
  if (zone.StandardDate.wMonth != 0 && zone.DaylightDate.wMonth != 0) {
    const std::int64_t standard = bias + zone.StandardBias;
    const std::int64_t daylight = bias + zone.DaylightBias;
    const auto to_daylight = LastChange(zone.DaylightDate, standard, *seconds, utc.wYear);
    const auto to_standard = LastChange(zone.StandardDate, daylight, *seconds, utc.wYear);
    if (!to_daylight || !to_standard) return false;
    bias = *to_daylight > *to_standard ? daylight : standard;
  }
  return SystemTimeFromSeconds(*seconds - bias * 60, local);
}

void SetLastError(std::uint32_t error) { last_error = error; }
std::uint32_t GetLastError() { return last_error; }

}  // namespace pim
