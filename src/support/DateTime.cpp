// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/support/DateTime.h"

#include <cmath>
#include <limits>

#include "platform/DayNumbers.h"

namespace pim {
namespace {

constexpr double kLongestSpan = 3615897.0;  // days

bool Fits(std::int32_t number) {
  return number >= 0 && number <= std::numeric_limits<std::uint16_t>::max();
}

// One calendar field of a date-time.
std::int32_t Field(const COleDateTime& date, std::uint16_t SYSTEMTIME::*field) {
  SYSTEMTIME time;
  if (date.status != StatusValid || !VariantTimeToSystemTime(date.value, time)) return -1;
  return time.*field;
}

double Moved(double value, double days) { return StoredFromLinear(LinearFromStored(value) + days); }

}  // namespace

void COleDateTimeSpan::SetDateTimeSpan(std::int32_t days, std::int32_t hours, std::int32_t minutes,
                                       std::int32_t seconds) noexcept {
  value = days + hours / 24.0 + minutes / 1440.0 + seconds / 86400.0;
  status = std::fabs(value) <= kLongestSpan ? StatusValid : StatusInvalid;
}

void COleDateTime::SetDateTime(std::int32_t year, std::int32_t month, std::int32_t day,
                               std::int32_t hour, std::int32_t minute,
                               std::int32_t second) noexcept {
  status = StatusInvalid;
  for (const std::int32_t number : {year, month, day, hour, minute, second})
    if (!Fits(number)) return;
  SYSTEMTIME time;
  time.wYear = static_cast<std::uint16_t>(year);
  time.wMonth = static_cast<std::uint16_t>(month);
  time.wDay = static_cast<std::uint16_t>(day);
  time.wHour = static_cast<std::uint16_t>(hour);
  time.wMinute = static_cast<std::uint16_t>(minute);
  time.wSecond = static_cast<std::uint16_t>(second);
  if (SystemTimeToVariantTime(time, value)) status = StatusValid;
}

std::optional<CalendarFields> COleDateTime::GetFields() const noexcept {
  SYSTEMTIME time;
  if (status != StatusValid || !VariantTimeToSystemTime(value, time)) return std::nullopt;
  return CalendarFields{time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond};
}

std::int32_t COleDateTime::GetYear() const noexcept { return Field(*this, &SYSTEMTIME::wYear); }
std::int32_t COleDateTime::GetMonth() const noexcept { return Field(*this, &SYSTEMTIME::wMonth); }
std::int32_t COleDateTime::GetDay() const noexcept { return Field(*this, &SYSTEMTIME::wDay); }
std::int32_t COleDateTime::GetHour() const noexcept { return Field(*this, &SYSTEMTIME::wHour); }
std::int32_t COleDateTime::GetMinute() const noexcept { return Field(*this, &SYSTEMTIME::wMinute); }
std::int32_t COleDateTime::GetSecond() const noexcept { return Field(*this, &SYSTEMTIME::wSecond); }

std::int32_t COleDateTime::GetDayOfWeek() const noexcept {
  const std::int32_t from_sunday = Field(*this, &SYSTEMTIME::wDayOfWeek);
  return from_sunday < 0 ? from_sunday : from_sunday + 1;
}

bool operator<(const COleDateTime& a, const COleDateTime& b) noexcept {
  return a.status == StatusValid && b.status == StatusValid &&
         LinearFromStored(a.value) < LinearFromStored(b.value);
}

COleDateTime operator+(const COleDateTime& date, const COleDateTimeSpan& span) noexcept {
  COleDateTime sum;
  sum.value = Moved(date.value, span.value);
  return sum;
}

COleDateTime operator-(const COleDateTime& date, const COleDateTimeSpan& span) noexcept {
  COleDateTime difference = date;
  difference -= span;
  difference.status = StatusValid;
  return difference;
}

COleDateTime& COleDateTime::operator-=(const COleDateTimeSpan& span) noexcept {
  value = Moved(value, -span.value);
  return *this;
}

}  // namespace pim
