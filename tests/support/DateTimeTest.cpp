// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <array>
#include <limits>

#include "pim/support/DateTime.h"
#include "support/DateTimeZones.h"
#include "tests/platform/Scoped.h"

namespace pim {
namespace {

using test::ScopedVariable;

COleDateTime DateOf(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
  COleDateTime date;
  date.SetDateTime(year, month, day, hour, minute, second);
  return date;
}

COleDateTime WithStatus(DateTimeStatus status, double value) {
  COleDateTime date;
  date.status = status;
  date.value = value;
  return date;
}

TEST(DateTime, Fields) {
  const COleDateTime date = DateOf(2010, 3, 14, 15, 9, 26);
  EXPECT_EQ(date.status, StatusValid);
  EXPECT_EQ((std::array{date.GetYear(), date.GetMonth(), date.GetDay(), date.GetHour(),
                        date.GetMinute(), date.GetSecond(), date.GetDayOfWeek()}),
            (std::array{2010, 3, 14, 15, 9, 26, 1}));
  for (const COleDateTime& unset : {COleDateTime(COleDateTimeNull()), WithStatus(StatusInvalid, 1),
                                    WithStatus(StatusValid, 1e9)}) {
    EXPECT_EQ(unset.GetYear(), -1);
    EXPECT_EQ(unset.GetSecond(), -1);
    EXPECT_EQ(unset.GetDayOfWeek(), -1);
  }
}

// Nothing is moved to a neighbouring day, wrapped or kept as valid.
TEST(DateTime, NoSuchMoment) {
  static constexpr std::array<int, 6> kRows[] = {
      {2010, 2, 30, 0, 0, 0},  {2010, 2, 31, 0, 0, 0},  {2010, 1, 1, 24, 0, 0},
      {2010, 1, 1, 0, 60, 0},  {2010, 1, 1, 0, 0, 60},  {2010, 13, 1, 0, 0, 0},
      {2010, 0, 1, 0, 0, 0},   {99, 12, 31, 0, 0, 0},   {65536 + 2010, 1, 1, 0, 0, 0},
      {2010, 257, 1, 0, 0, 0}, {2010, 1, 257, 0, 0, 0}, {10000, 1, 1, 0, 0, 0},
      {2010, 1, 0, 0, 0, 0},   {2010, 1, -1, 0, 0, 0},  {2010, 65537, 1, 0, 0, 0}};
  for (const auto& [year, month, day, hour, minute, second] : kRows) {
    SCOPED_TRACE(testing::Message() << year << '-' << month << '-' << day << ' ' << hour);
    COleDateTime date = WithStatus(StatusValid, 7);
    date.SetDateTime(year, month, day, hour, minute, second);
    EXPECT_EQ(date.status, StatusInvalid);
    EXPECT_EQ(date.value, 7);
  }
}

TEST(DateTime, Comparison) {
  EXPECT_EQ(COleDateTimeNull(), WithStatus(StatusNull, 5));
  EXPECT_FALSE(WithStatus(StatusInvalid, 5) == WithStatus(StatusInvalid, 5));
  EXPECT_FALSE(COleDateTimeNull() == COleDateTime());
  const COleDateTime morning = WithStatus(StatusValid, -1.25);
  const COleDateTime evening = WithStatus(StatusValid, -1.75);
  EXPECT_TRUE(morning < evening && evening > morning && morning <= evening && evening >= morning);
  EXPECT_TRUE(morning <= morning && morning >= morning);
  EXPECT_FALSE(morning < morning);
  EXPECT_FALSE(COleDateTimeNull() < morning || morning < WithStatus(StatusInvalid, 9));
  EXPECT_TRUE(COleDateTimeNull() <= COleDateTimeNull());
}

TEST(DateTime, Arithmetic) {
  COleDateTimeSpan half_day;
  half_day.SetDateTimeSpan(0, 11, 59, 60);
  EXPECT_EQ(half_day.value, 0.5);
  EXPECT_EQ((WithStatus(StatusValid, -1.25) + half_day).value, -1.75);
  EXPECT_EQ((WithStatus(StatusValid, -1.75) + half_day).value, 0.25);
  EXPECT_EQ((WithStatus(StatusValid, 0.25) - half_day).value, -1.75);
  EXPECT_EQ((WithStatus(StatusNull, 1) + half_day).status, StatusValid);
  EXPECT_EQ((WithStatus(StatusInvalid, 1) - half_day).status, StatusValid);
  COleDateTime null = WithStatus(StatusNull, 2);
  null -= half_day;
  EXPECT_EQ(null.status, StatusNull);
  EXPECT_EQ(null.value, 1.5);
}

TEST(DateTime, SpanRange) {
  using Limits = std::numeric_limits<std::int32_t>;
  static constexpr std::array<std::int32_t, 4> kValid[] = {
      {3615897, 0, 0, 0}, {-3615897, 0, 0, 0}, {0, 0, Limits::min(), Limits::max()}};
  static constexpr std::array<std::int32_t, 4> kInvalid[] = {
      {3615897, 0, 0, 1},
      {-3615896, -24, 0, -1},
      {0, Limits::min(), 0, 0},
      {Limits::max(), Limits::max(), Limits::max(), Limits::max()}};
  const auto status_of = [](const std::array<std::int32_t, 4>& parts) {
    COleDateTimeSpan span;
    span.SetDateTimeSpan(parts[0], parts[1], parts[2], parts[3]);
    return span.status;
  };
  for (const auto& parts : kValid) EXPECT_EQ(status_of(parts), StatusValid) << parts[0];
  for (const auto& parts : kInvalid) EXPECT_EQ(status_of(parts), StatusInvalid) << parts[0];
}

// Local time and its UTC, where the two conversions mirror each other and where they can't.
TEST(DateTimeZones, LocalAndUtc) {
  const COleDateTime skipped = DateOf(2010, 3, 14, 2);
  const struct {
    const char* tz;
    COleDateTime local;
    COleDateTime utc;
    COleDateTime local_again;
  } rows[] = {
      {"JST-9", DateOf(2010, 7, 1, 12), DateOf(2010, 7, 1, 3), {}},
      {"<+0330>-3:30", DateOf(2010, 1, 1, 1), DateOf(2009, 12, 31, 21, 30), {}},
      {"EST5EDT,M3.2.0,M11.1.0", DateOf(2010, 3, 14, 1, 59), DateOf(2010, 3, 14, 6, 59), {}},
      {"EST5EDT,M3.2.0,M11.1.0", skipped, DateOf(2010, 3, 14, 6), DateOf(2010, 3, 14, 1)},
      {"EST5EDT,M3.2.0,M11.1.0", DateOf(2010, 3, 14, 3), DateOf(2010, 3, 14, 7), {}},
      {"EST5EDT,M3.2.0,M11.1.0", DateOf(2010, 11, 7, 1, 59), DateOf(2010, 11, 7, 5, 59), {}},
      {"EST5EDT,M3.2.0,M11.1.0", DateOf(2010, 11, 7, 2), DateOf(2010, 11, 7, 7), {}},
      // October 2010 has five Sundays, September 2010 four.
      {"CET-1CEST,M3.5.0,M10.5.0/3", DateOf(2010, 10, 31, 2, 59), DateOf(2010, 10, 31, 0, 59), {}},
      {"CET-1CEST,M3.5.0,M10.5.0/3", DateOf(2010, 10, 31, 3), DateOf(2010, 10, 31, 2), {}},
      {"NZST-12NZDT,M9.5.0,M4.1.0/3", DateOf(2010, 9, 26, 1, 59), DateOf(2010, 9, 25, 13, 59), {}},
      {"NZST-12NZDT,M9.5.0,M4.1.0/3", DateOf(2010, 9, 26, 3), DateOf(2010, 9, 25, 14), {}},
      {"NZST-12NZDT,M9.5.0,M4.1.0/3", DateOf(2010, 1, 1, 0), DateOf(2009, 12, 31, 11), {}},
      {"AEST-10AEDT,M10.1.0,M4.1.0/3", DateOf(2010, 7, 1, 0), DateOf(2010, 6, 30, 14), {}},
      {"ACST-9:30ACDT,M10.1.0,M4.1.0/3", DateOf(2010, 1, 1, 9), DateOf(2009, 12, 31, 22, 30), {}},
      {"IST-1GMT0,M10.5.0,M3.5.0/1", DateOf(2010, 7, 1, 12), DateOf(2010, 7, 1, 11), {}},
      {"IST-1GMT0,M10.5.0,M3.5.0/1", DateOf(2010, 12, 1, 12), DateOf(2010, 12, 1, 12), {}},
      {"EST5EDT,M3.2.0,M11.1.0", DateOf(1850, 1, 1, 22, 0, 1), DateOf(1850, 1, 2, 3, 0, 1), {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.tz << ' ' << row.local.value);
    const ScopedVariable variable("TZ", row.tz);
    EXPECT_EQ(ConvertDateTime(row.local), row.utc);
    EXPECT_EQ(UtcToLocal(row.utc), row.local_again == COleDateTime() ? row.local : row.local_again);
  }
}

TEST(DateTimeZones, NothingToConvert) {
  const ScopedVariable variable("TZ", "EST5EDT");
  EXPECT_EQ(UtcToLocal(COleDateTimeNull()), COleDateTimeNull());
  const COleDateTimeNull invalid = UtcToLocal(WithStatus(StatusInvalid, 3.5));
  EXPECT_EQ(invalid.status, StatusInvalid);
  EXPECT_EQ(invalid.value, 3.5);
  EXPECT_EQ(UtcToLocal(WithStatus(StatusValid, 1e9)).status, StatusInvalid);
  EXPECT_EQ(UtcToLocal(DateOf(100, 1, 1)).status, StatusInvalid);
  for (const COleDateTime& value : {COleDateTime(COleDateTimeNull()), WithStatus(StatusInvalid, 1),
                                    WithStatus(StatusValid, 1e9), DateOf(9999, 12, 31, 23)}) {
    EXPECT_EQ(ConvertDateTime(value).status, StatusInvalid);
  }
}

TEST(DateTimeZones, MalformedRules) {
  const SYSTEMTIME change{0, 3, 0, 2, 2, 0, 0, 0};
  const TIME_ZONE_INFORMATION good{300, change, 0, change, -60};
  const SYSTEMTIME local{2010, 2, 0, 1, 12, 0, 0, 0};
  SYSTEMTIME utc{1, 2, 3, 4, 5, 6, 7, 8};
  for (const auto part :
       {&TIME_ZONE_INFORMATION::StandardDate, &TIME_ZONE_INFORMATION::DaylightDate}) {
    for (const SYSTEMTIME& bad : {SYSTEMTIME{0, 3, 0, 0, 2}, SYSTEMTIME{0, 3, 7, 2, 2},
                                  SYSTEMTIME{0, 13, 0, 2, 2}, SYSTEMTIME{0, 3, 0, 2, 24}}) {
      TIME_ZONE_INFORMATION zone = good;
      zone.*part = bad;
      SetLastError(ERROR_SUCCESS);
      EXPECT_FALSE(LocalToUtc(&zone, local, utc));
      EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
      EXPECT_EQ(utc.wHour, 5);
    }
  }
  TIME_ZONE_INFORMATION zone = good;  // without daylight time the dates aren't looked at
  zone.DaylightDate.wDay = zone.StandardDate.wMonth = 0;
  EXPECT_TRUE(LocalToUtc(&zone, local, utc));
  EXPECT_EQ(GetLastError(), ERROR_SUCCESS);
  EXPECT_EQ(utc.wHour, 17);
  // Two changes at one moment are the northern form: daylight time never comes.
  EXPECT_TRUE(LocalToUtc(&good, {2010, 3, 0, 20, 12, 0, 0, 0}, utc));
  EXPECT_EQ(utc.wHour, 17);
}

}  // namespace
}  // namespace pim
