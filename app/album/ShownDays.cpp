// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/album/ShownDays.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>

#include "formats/vcard4/DayText.h"
#include "support/Ascii.h"

namespace pim::app {
namespace {

using std::chrono::sys_days;

// Beyond all days of records.
constexpr std::int64_t kFarthest = 4'000'000;
constexpr std::int64_t kTwoYears = 731;

std::int64_t NumberOf(sys_days day) { return day.time_since_epoch().count(); }

std::int64_t DayOfWall(std::int64_t seconds) {
  return std::chrono::floor<std::chrono::days>(std::chrono::seconds(seconds)).count();
}

std::optional<int> NumberIn(std::string_view digits) {
  int number = 0;
  if (!std::ranges::all_of(digits, IsDigit)) return std::nullopt;
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return number;
}

std::string TextOfDay(std::int64_t number) {
  const std::chrono::year_month_day day{sys_days(std::chrono::days(number))};
  const CalendarFields fields{.year = int{day.year()},
                              .month = static_cast<std::int32_t>(unsigned{day.month()}),
                              .day = static_cast<std::int32_t>(unsigned{day.day()}),
                              .hour = 0,
                              .minute = 0,
                              .second = 0};
  return std::string(DayText(fields, true).AddDay().view());
}

}  // namespace

std::optional<DayRange> DaysNamed(std::string_view text) {
  using std::chrono::month;
  using std::chrono::year;
  constexpr std::size_t kYear = 4;
  constexpr std::size_t kMonth = 7;
  constexpr std::size_t kDay = 10;
  if (text.size() != kYear && text.size() != kMonth && text.size() != kDay) return std::nullopt;
  const bool hasMonth = text.size() >= kMonth;
  const bool hasDay = text.size() == kDay;
  if ((hasMonth && text[kYear] != '-') || (hasDay && text[kMonth] != '-')) return std::nullopt;
  const auto y = NumberIn(text.substr(0, kYear));
  const auto m = hasMonth ? NumberIn(text.substr(kYear + 1, 2)) : 1;
  const auto d = hasDay ? NumberIn(text.substr(kMonth + 1, 2)) : 1;
  if (!y || !m || !d) return std::nullopt;
  const std::chrono::year_month_day first = year(*y) / *m / *d;
  if (!first.ok()) return std::nullopt;
  if (hasDay) return DayRange{NumberOf(first), NumberOf(first)};
  const month lastMonth = hasMonth ? first.month() : std::chrono::December;
  return DayRange{NumberOf(first), NumberOf(first.year() / lastMonth / std::chrono::last)};
}

ShownDays::ShownDays(std::optional<std::int64_t> first, std::optional<std::int64_t> last,
                     std::int64_t today)
    : first_(first), last_(last), today_(today) {}

std::int64_t ShownDays::EndOfRepeats(const CCalendar& item) {
  const auto wall = finder_.WallTime(item, item.start_time);
  const std::int64_t start = wall ? DayOfWall(*wall) : today_;
  firstRepeat_ = std::min(firstRepeat_.value_or(start), start);
  return last_.value_or(std::max(start, today_) + kTwoYears);
}

bool ShownDays::HasDay(const CCalendar& item, const COleDateTime& utc) {
  const auto wall = finder_.WallTime(item, utc);
  if (!wall) return false;
  const std::int64_t day = DayOfWall(*wall);
  return day >= first_.value_or(-kFarthest) && day <= last_.value_or(kFarthest);
}

std::optional<Occurrences> ShownDays::TimesOf(const CCalendar& item) {
  const bool repeats = item.recurrence.data != nullptr;
  const DayRange range{first_.value_or(-kFarthest),
                       repeats ? EndOfRepeats(item) : last_.value_or(kFarthest)};
  const auto kind = static_cast<CalendarType>(item.calendar_type);
  if (!IsLimited() || kind == CalendarType::Memo) return finder_.Of(item, range);
  const bool hasDue = kind == CalendarType::Todo && item.due.status == StatusValid;
  const bool hasStart = item.start_time.status == StatusValid;
  if (hasDue && (!repeats || !hasStart)) {
    if (!HasDay(item, item.due)) return std::nullopt;
    return finder_.Of(item, {-kFarthest, kFarthest});
  }
  const std::int64_t later = hasDue ? DaysToDue(item) : 0;
  Occurrences found = finder_.Of(item, {range.first - later, range.last - later});
  const bool isUndated = kind == CalendarType::Todo && !hasStart;
  if (found.times.empty() && !isUndated) return std::nullopt;
  return found;
}

// How many days behind its start a to-do is due.
std::int64_t ShownDays::DaysToDue(const CCalendar& item) {
  const auto start = finder_.WallTime(item, item.start_time);
  const auto due = finder_.WallTime(item, item.due);
  return start && due ? DayOfWall(*due) - DayOfWall(*start) : 0;
}

std::string ShownDays::First() const {
  const auto first = first_ ? first_ : firstRepeat_;
  return first ? TextOfDay(*first) : std::string();
}
std::string ShownDays::Last() const {
  if (last_) return TextOfDay(*last_);
  return firstRepeat_ || first_ ? TextOfDay(today_ + kTwoYears) : std::string();
}

}  // namespace pim::app
