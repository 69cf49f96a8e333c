// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/DayNumbers.h"

#include <chrono>
#include <cmath>

namespace pim {
namespace {

using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr std::int64_t kSecondsPerDay = 86400;
constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;

constexpr std::int64_t DaysToStartOf(int year) {
  return (sys_days{std::chrono::year{year} / 1 / 1} - kDayZero).count();
}
constexpr std::int64_t kFirstDay = DaysToStartOf(kFirstYear);
constexpr std::int64_t kEndDay = DaysToStartOf(kLastYear + 1);

}  // namespace

std::optional<std::int64_t> SecondsFromSystemTime(const SYSTEMTIME& time) {
  const year_month_day date{std::chrono::year{time.wYear}, std::chrono::month{time.wMonth},
                            std::chrono::day{time.wDay}};
  if (time.wYear < kFirstYear || time.wYear > kLastYear) return {};
  if (time.wMonth > 12 || time.wDay > 31 || !date.ok()) return {};
  if (time.wHour > 23 || time.wMinute > 59 || time.wSecond > 59) return {};
  const std::chrono::seconds seconds = sys_days{date} - kDayZero + std::chrono::hours{time.wHour} +
                                       std::chrono::minutes{time.wMinute} +
                                       std::chrono::seconds{time.wSecond};
  return seconds.count();
}

bool SystemTimeFromSeconds(std::int64_t seconds, SYSTEMTIME& time) {
  if (seconds < kFirstDay * kSecondsPerDay || seconds >= kEndDay * kSecondsPerDay) return false;
  const std::chrono::sys_seconds moment =
      std::chrono::sys_seconds{kDayZero} + std::chrono::seconds{seconds};
  const sys_days day = std::chrono::floor<std::chrono::days>(moment);
  const year_month_day date{day};
  const std::chrono::hh_mm_ss clock{moment - day};
  time.wYear = static_cast<std::uint16_t>(int{date.year()});
  time.wMonth = static_cast<std::uint16_t>(unsigned{date.month()});
  time.wDayOfWeek = static_cast<std::uint16_t>(std::chrono::weekday{day}.c_encoding());
  time.wDay = static_cast<std::uint16_t>(unsigned{date.day()});
  time.wHour = static_cast<std::uint16_t>(clock.hours().count());
  time.wMinute = static_cast<std::uint16_t>(clock.minutes().count());
  time.wSecond = static_cast<std::uint16_t>(clock.seconds().count());
  time.wMilliseconds = 0;
  return true;
}

bool SystemTimeToVariantTime(const SYSTEMTIME& time, double& day) {
  const auto seconds = SecondsFromSystemTime(time);
  if (!seconds) return false;
  day = StoredFromLinear(static_cast<double>(*seconds) / kSecondsPerDay);
  return true;
}

bool VariantTimeToSystemTime(double day, SYSTEMTIME& time) {
  // The first day's fractions lie below its number. A NaN fails as well.
  if (!(day > kFirstDay - 1 && day < kEndDay)) return false;
  const double whole = std::trunc(day);
  const auto clock = std::llround(std::fabs(day - whole) * kSecondsPerDay);
  return SystemTimeFromSeconds(static_cast<std::int64_t>(whole) * kSecondsPerDay + clock, time);
}

double LinearFromStored(double stored) {
  if (stored >= 0) return stored;
  const double ceiling = std::ceil(stored);
  return ceiling - (stored - ceiling);
}

double StoredFromLinear(double linear) {
  if (linear >= 0) return linear;
  const double floor = std::floor(linear);
  return floor - linear + floor;
}

}  // namespace pim
