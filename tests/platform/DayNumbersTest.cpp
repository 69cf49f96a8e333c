// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <utility>

#include "platform/DayNumbers.h"

namespace pim {
namespace {

std::uint16_t Word(int number) { return static_cast<std::uint16_t>(number); }

TEST(DayNumbers, BothWays) {
  static constexpr struct {
    SYSTEMTIME time;
    double day;
  } kRows[] = {
      {{1899, 12, 6, 30, 0, 0, 0, 0}, 0.0},      {{1899, 12, 6, 30, 6, 0, 0, 0}, 0.25},
      {{1899, 12, 5, 29, 6, 0, 0, 0}, -1.25},    {{1900, 1, 1, 1, 0, 0, 0, 0}, 2.0},
      {{2010, 3, 0, 14, 12, 0, 0, 0}, 40251.5},  {{2000, 2, 2, 29, 0, 0, 0, 0}, 36585.0},
      {{100, 1, 5, 1, 18, 0, 0, 0}, -657434.75}, {{9999, 12, 5, 31, 0, 0, 0, 0}, 2958465.0},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.day);
    double day = 0.5;
    EXPECT_TRUE(SystemTimeToVariantTime(row.time, day));
    EXPECT_EQ(day, row.day);
    SYSTEMTIME time;
    EXPECT_TRUE(VariantTimeToSystemTime(row.day, time));
    EXPECT_EQ(std::memcmp(&time, &row.time, sizeof time), 0);
  }
}

// Each second of a day comes back from its double, on both sides of day 0 and far out.
TEST(DayNumbers, EverySecond) {
  for (const auto& [year, month] : {std::pair{1899, 12}, {1899, 11}, {101, 1}, {9999, 6}}) {
    for (int second = 0; second < 86400; ++second) {
      SYSTEMTIME time{Word(year), Word(month), 0, 30};
      time.wHour = Word(second / 3600);
      time.wMinute = Word(second / 60 % 60);
      time.wSecond = Word(second % 60);
      double day = 0;
      SYSTEMTIME back;
      ASSERT_TRUE(SystemTimeToVariantTime(time, day) && VariantTimeToSystemTime(day, back));
      ASSERT_EQ(SecondsFromSystemTime(back), SecondsFromSystemTime(time)) << second;
      ASSERT_NEAR(StoredFromLinear(LinearFromStored(day)), day, 1e-9);
    }
  }
}

TEST(DayNumbers, RoundedToSecond) {
  static constexpr struct {
    double day;
    int date;
    int hour;
  } kRows[] = {{1 + 86399.4 / 86400, 31, 23},
               {1 + 86399.6 / 86400, 1, 0},
               {-1.999999, 30, 0},
               {-0.999999, 31, 0},
               {2958465.99999, 31, 23}};
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.day);
    SYSTEMTIME time;
    EXPECT_TRUE(VariantTimeToSystemTime(row.day, time));
    EXPECT_EQ(time.wDay, row.date);
    EXPECT_EQ(time.wHour, row.hour);
  }
}

TEST(DayNumbers, OutOfRange) {
  using Limits = std::numeric_limits<double>;
  for (const double day : {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(), 1e300,
                           -1e300, 2958466.0, 2958465.999999, -657435.0}) {
    SYSTEMTIME time{1, 2, 3, 4, 5, 6, 7, 8};
    EXPECT_FALSE(VariantTimeToSystemTime(day, time)) << day;
    EXPECT_EQ(time.wYear, 1);
  }
}

}  // namespace
}  // namespace pim
