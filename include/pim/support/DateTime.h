// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>

#include "pim/Export.h"

namespace pim {

// Date-times as records keep them. They are plain values: threads may read one together, or one
// thread alone may change it. Nothing here allocates, throws or asks the system for its zone.

// Whether a date-time or span holds anything.
enum DateTimeStatus : std::int32_t {
  StatusValid = 0,    // the value holds a time
  StatusInvalid = 1,  // a computation failed, for instance a date that doesn't exist
  StatusNull = 2,     // the field is not set
};

// A signed length of time in days (OLE automation's date span).
class PIM_EXPORT COleDateTimeSpan {
 public:
  double value = 0.0;                   // days, negative too
  DateTimeStatus status = StatusValid;  // `value` counts only where valid

  // Sets the sum of the four. Beyond 3615897 days to either side the status becomes invalid.
  void SetDateTimeSpan(std::int32_t days, std::int32_t hours, std::int32_t minutes,
                       std::int32_t seconds) noexcept;
};

// All fields of a date-time at once.
struct CalendarFields {
  std::int32_t year;    // 100 to 9999
  std::int32_t month;   // 1 to 12
  std::int32_t day;     // of the month, 1 to 31
  std::int32_t hour;    // 0 to 23
  std::int32_t minute;  // 0 to 59
  std::int32_t second;  // 0 to 59
};

// An OLE automation date: days since midnight of 30 December 1899, the fraction being the time of
// day, which counts forward in the day for negative values too (-1.25 is 6:00 on day -1).
// Valid from 1 January 100 to 31 December 9999, proleptic Gregorian calendar. A plain value: it
// knows no zone.
class PIM_EXPORT COleDateTime {
 public:
  double value = 0.0;                   // the day number
  DateTimeStatus status = StatusValid;  // `value` counts only where valid

  // Sets the moment of those calendar fields, with the ranges of CalendarFields. A moment that
  // doesn't exist as given (31 February, hour 24, a number beyond 16 bits) makes the status invalid
  // and leaves `value` as it was; nothing is moved to a neighbouring day.
  void SetDateTime(std::int32_t year, std::int32_t month, std::int32_t day, std::int32_t hour,
                   std::int32_t minute, std::int32_t second) noexcept;

  // All calendar fields, or nothing when the status isn't valid or the value is out of range.
  std::optional<CalendarFields> GetFields() const noexcept;
  // One of them, or -1 in those cases.
  std::int32_t GetYear() const noexcept;       // 100 to 9999
  std::int32_t GetMonth() const noexcept;      // 1 to 12
  std::int32_t GetDay() const noexcept;        // 1 to 31
  std::int32_t GetHour() const noexcept;       // 0 to 23
  std::int32_t GetMinute() const noexcept;     // 0 to 59
  std::int32_t GetSecond() const noexcept;     // 0 to 59
  std::int32_t GetDayOfWeek() const noexcept;  // 1 Sunday to 7 Saturday

  // Two nulls are equal whatever their values; two invalid ones are not.
  friend bool operator==(const COleDateTime& a, const COleDateTime& b) noexcept {
    return a.status == b.status &&
           (a.status == StatusNull || (a.status == StatusValid && a.value == b.value));
  }
  // By the moments, which for negative values aren't in the order of the numbers. False unless both
  // are valid; <= and >= hold as well for what is equal.
  friend PIM_EXPORT bool operator<(const COleDateTime& a, const COleDateTime& b) noexcept;
  friend bool operator>(const COleDateTime& a, const COleDateTime& b) noexcept { return b < a; }
  friend bool operator<=(const COleDateTime& a, const COleDateTime& b) noexcept {
    return a < b || a == b;
  }
  friend bool operator>=(const COleDateTime& a, const COleDateTime& b) noexcept {
    return b < a || a == b;
  }

  // The date-time that many days later or earlier. The results of + and - are of status valid
  // whatever the operands' statuses; -= keeps its own.
  friend PIM_EXPORT COleDateTime operator+(const COleDateTime& date,
                                           const COleDateTimeSpan& span) noexcept;
  friend PIM_EXPORT COleDateTime operator-(const COleDateTime& date,
                                           const COleDateTimeSpan& span) noexcept;
  COleDateTime& operator-=(const COleDateTimeSpan& span) noexcept;
};

// A date-time field of a record: null until it is set.
class PIM_EXPORT COleDateTimeNull : public COleDateTime {
 public:
  // Null.
  COleDateTimeNull() noexcept { status = StatusNull; }
  // That date-time, with its status.
  COleDateTimeNull(const COleDateTime& date) noexcept : COleDateTime(date) {}
};

}  // namespace pim
