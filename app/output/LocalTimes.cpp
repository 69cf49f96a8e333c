// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/output/LocalTimes.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string_view>

namespace pim::app {
namespace {

constexpr const char* kNoSuchDate = "(no such date)";

std::string DayText(const SYSTEMTIME& time) {
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), "%04u-%02u-%02u", unsigned{time.wYear},
                unsigned{time.wMonth} % 100, unsigned{time.wDay} % 100);
  return text.data();
}

std::string ClockText(const SYSTEMTIME& time) {
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), " %02u:%02u", unsigned{time.wHour} % 100,
                unsigned{time.wMinute} % 100);
  return text.data();
}

// "+09:00", from the two clocks' difference.
std::string OffsetText(const SYSTEMTIME& utc, const SYSTEMTIME& local) {
  const auto from = SecondsFromSystemTime(utc);
  const auto to = SecondsFromSystemTime(local);
  if (!from || !to) return {};
  const auto minutes = static_cast<int>((*to - *from) / 60);
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), " %c%02d:%02d", minutes < 0 ? '-' : '+',
                std::abs(minutes) / 60 % 100, std::abs(minutes) % 60);
  return text.data();
}

}  // namespace

std::string LocalTimes::Moment(const COleDateTime& utc) const { return Text(utc, true); }
std::string LocalTimes::Day(const COleDateTime& utc) const { return Text(utc, false); }

std::string LocalTimes::Span(const COleDateTime& from, const COleDateTime& to) const {
  if (from.status != StatusValid || to.status != StatusValid) return {};
  if (Day(from) != Day(to)) return Moment(from) + " to " + Moment(to);
  constexpr std::size_t kClock = sizeof "2010-01-05";
  constexpr std::size_t kClockSize = 5;
  return Moment(from).substr(kClock, kClockSize) + " to " + Moment(to).substr(kClock, kClockSize);
}

// As the C library finds the zone.
std::string LocalTimes::NameInDatabase() {
  std::string name;
  if (const char* variable = std::getenv("TZ"); variable != nullptr) {
    name = *variable == ':' ? variable + 1 : variable;
  } else {
    std::error_code error;
    const std::string file = std::filesystem::read_symlink("/etc/localtime", error).string();
    constexpr std::string_view kFolder = "zoneinfo/";
    if (const std::size_t at = file.find(kFolder); at != std::string::npos)
      name = file.substr(at + kFolder.size());
  }
  return name;
}

std::string LocalTimes::ZoneName() {
  const std::string name = NameInDatabase();
  return name.empty() ? "local time" : name;
}

std::string LocalTimes::Text(const COleDateTime& utc, bool withTime) const {
  if (utc.status == StatusNull) return {};
  SYSTEMTIME stored;
  SYSTEMTIME local;
  if (utc.status != StatusValid || !VariantTimeToSystemTime(utc.value, stored) ||
      !SystemTimeToTzSpecificLocalTime(zone_, stored, local))
    return kNoSuchDate;
  return withTime ? DayText(local) + ClockText(local) + OffsetText(stored, local) : DayText(local);
}

COleDateTime DateOfSeconds(std::int64_t since1970) {
  constexpr std::chrono::seconds kFromDayZero =
      std::chrono::sys_days(std::chrono::year{1970} / 1 / 1) - kDayZero;
  COleDateTime date;
  SYSTEMTIME time;
  constexpr std::int64_t kFarthest = std::int64_t{1} << 40;  // beyond all dates
  const std::int64_t seconds = std::clamp(since1970, -kFarthest, kFarthest) + kFromDayZero.count();
  if (!SystemTimeFromSeconds(seconds, time) || !SystemTimeToVariantTime(time, date.value))
    date.status = StatusInvalid;
  return date;
}

std::string UtcText(std::int64_t since1970) {
  const auto fields = DateOfSeconds(since1970).GetFields();
  if (!fields) return "invalid";
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02dZ", fields->year,
                fields->month, fields->day, fields->hour, fields->minute, fields->second);
  return text.data();
}

std::string PlainDay(const COleDateTime& date) {
  if (date.status == StatusNull) return {};
  SYSTEMTIME time;
  if (date.status != StatusValid || !VariantTimeToSystemTime(date.value, time)) return kNoSuchDate;
  return DayText(time);
}

std::string PlainMoment(const COleDateTime& date) {
  if (date.status == StatusNull) return {};
  SYSTEMTIME time;
  if (date.status != StatusValid || !VariantTimeToSystemTime(date.value, time)) return kNoSuchDate;
  return DayText(time) + ClockText(time);
}

}  // namespace pim::app
