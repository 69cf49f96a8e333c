// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/records/Calendar.h"

#include <chrono>
#include <limits>
#include <optional>

#include "records/CategoryWords.h"

namespace pim {

namespace {

// Counted from the calendar fields, which are whole: the day number holds no second exactly.
std::optional<std::chrono::sys_seconds> SecondOf(const COleDateTime& date) {
  const int year = date.GetYear();
  if (year < 0) return std::nullopt;
  const auto month = std::chrono::month(static_cast<unsigned>(date.GetMonth()));
  const auto day = std::chrono::day(static_cast<unsigned>(date.GetDay()));
  return std::chrono::sys_days(std::chrono::year(year) / month / day) +
         std::chrono::hours(date.GetHour()) + std::chrono::minutes(date.GetMinute()) +
         std::chrono::seconds(date.GetSecond());
}

}  // namespace

// Not in the class: a record would then be zeroed as a whole ahead of its own initialisers.
CCalendar::CCalendar() noexcept = default;

std::uint32_t CCalendar::GetCategories() const {
  std::uint32_t mask = 0;
  for (const CCategory& category : categories) mask |= CategoryBitOf(category.category_name.view());
  return mask;
}

bool CCalendar::GetAlarmRuntime(std::int32_t& minutes) const {
  minutes = 0;
  const auto alarm = SecondOf(reminder.alarm_date);
  const auto start = SecondOf(start_time);
  if (!alarm || !start) return false;
  const auto whole = std::chrono::duration_cast<std::chrono::minutes>(*start - *alarm).count();
  // The whole range of dates spans about 5.2e9 minutes.
  if (whole > std::numeric_limits<std::int32_t>::max() ||
      whole < std::numeric_limits<std::int32_t>::min())
    return false;
  minutes = static_cast<std::int32_t>(whole);
  return true;
}

}  // namespace pim
