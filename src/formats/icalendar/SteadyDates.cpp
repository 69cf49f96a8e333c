// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/icalendar/SteadyDates.h"

#include <algorithm>

namespace pim {
namespace {

constexpr int kLastYearOfAll = 9'999;

bool IsGiven(const short* list) { return list[0] != ICAL_RECURRENCE_ARRAY_MAX; }

// Days of the week as libical counts them, from 1 for Sunday.
int PlaceInWeek(int weekday, icalrecurrencetype_weekday weekStart) {
  return (weekday - static_cast<int>(weekStart) + kDaysOfWeek) % kDaysOfWeek;
}

}  // namespace

std::optional<SteadyDates> SteadyDates::Of(const icalrecurrencetype& rule,
                                           const icaltimetype& start) {
  const bool isWeekly = rule.freq == ICAL_WEEKLY_RECURRENCE;
  if ((!isWeekly && rule.freq != ICAL_DAILY_RECURRENCE) || rule.interval < 1 ||
      rule.rscale != nullptr)
    return std::nullopt;
  for (const short* list : {rule.by_second, rule.by_minute, rule.by_hour, rule.by_month_day,
                            rule.by_year_day, rule.by_week_no, rule.by_month, rule.by_set_pos}) {
    if (IsGiven(list)) return std::nullopt;
  }
  for (const short* day = rule.by_day; *day != ICAL_RECURRENCE_ARRAY_MAX; ++day) {
    const bool isWeekday = *day >= 1 && *day <= kDaysOfWeek && day - rule.by_day < kDaysOfWeek;
    if (!isWeekly || !isWeekday) return std::nullopt;
  }
  return SteadyDates(rule, start);
}

SteadyDates::SteadyDates(const icalrecurrencetype& rule, const icaltimetype& start)
    : start_(start),
      until_(rule.until),
      firstDay_(DayNumberOf(start)),
      period_(firstDay_),
      step_(rule.interval),
      left_(rule.count) {
  if (rule.freq == ICAL_DAILY_RECURRENCE) {
    size_ = 1;
    return;
  }
  const int own = icaltime_day_of_week(start);
  period_ -= PlaceInWeek(own, rule.week_start);
  step_ *= kDaysOfWeek;
  const auto add = [this, &rule](int weekday) {
    days_[size_++] = static_cast<std::int8_t>(PlaceInWeek(weekday, rule.week_start));
  };
  for (const short* day = rule.by_day; *day != ICAL_RECURRENCE_ARRAY_MAX; ++day) add(*day);
  if (size_ == 0) add(own);
  std::sort(days_.begin(), days_.begin() + static_cast<std::ptrdiff_t>(size_));
  const auto last = std::unique(days_.begin(), days_.begin() + static_cast<std::ptrdiff_t>(size_));
  size_ = static_cast<std::size_t>(last - days_.begin());
}

std::optional<icaltimetype> SteadyDates::Next() {
  while (!isOver_) {
    const std::int64_t day = period_ + days_[next_];
    if (++next_ == size_) {
      next_ = 0;
      period_ += step_;
    }
    if (day < firstDay_) continue;
    const icaltimetype date = OnDay(start_, day);
    isOver_ = date.year > kLastYearOfAll || IsBehindEnd(date);
    if (isOver_) break;
    if (left_ > 0) isOver_ = --left_ == 0;
    return date;
  }
  return std::nullopt;
}

bool SteadyDates::IsBehindEnd(const icaltimetype& date) const {
  return icaltime_is_null_time(until_) == 0 && icaltime_compare(date, until_) > 0;
}

}  // namespace pim
