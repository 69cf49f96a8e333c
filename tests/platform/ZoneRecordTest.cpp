// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <ctime>
#include <tuple>
#include <utility>
#include <vector>

#include "platform/ZoneFile.h"
#include "platform/ZoneRecord.h"
#include "tests/platform/Scoped.h"

namespace pim {
namespace {

using namespace std::string_literals;
using test::ScopedVariable;

// Month, weekday, occurrence, hour, minute; all 0 without daylight time.
using Date = std::tuple<int, int, int, int, int>;
constexpr Date kNone{0, 0, 0, 0, 0};

Date DateOf(const SYSTEMTIME& time) {
  return {time.wMonth, time.wDayOfWeek, time.wDay, time.wHour, time.wMinute};
}

TIME_ZONE_INFORMATION ZoneOf(const char* tz) {
  const ScopedVariable variable("TZ", tz);
  TIME_ZONE_INFORMATION zone;
  GetTimeZoneInformation(zone);
  return zone;
}

TEST(ZoneRecord, WithDaylightTime) {
  static constexpr struct {
    const char* tz;
    int bias;
    int daylight_bias;
    Date standard;
    Date daylight;
  } kRows[] = {
      {"EST5EDT", 300, -60, {11, 0, 1, 2, 0}, {3, 0, 2, 2, 0}},
      {"ABC5DEF", 300, -60, {11, 0, 1, 2, 0}, {3, 0, 2, 2, 0}},  // no file, the default rule
      {"CET-1CEST,M3.5.0,M10.5.0/3", -60, -60, {10, 0, 5, 3, 0}, {3, 0, 5, 2, 0}},
      {"AEST-10AEDT,M10.1.0,M4.1.0/3", -600, -60, {4, 0, 1, 3, 0}, {10, 0, 1, 2, 0}},
      {"IST-1GMT0,M10.5.0,M3.5.0/1", -60, 60, {3, 0, 5, 1, 0}, {10, 0, 5, 2, 0}},
      {"ACST-9:30ACDT,M10.1.0,M4.1.0/3", -570, -60, {4, 0, 1, 3, 0}, {10, 0, 1, 2, 0}},
      {"<+1030>-10:30<+11>-11,M10.1.0,M4.1.0/1:45", -630, -30, {4, 0, 1, 1, 45}, {10, 0, 1, 2, 0}},
      {":Europe/Berlin", -60, -60, {10, 0, 5, 3, 0}, {3, 0, 5, 2, 0}},
      // Changes on another day than the rule's.
      {"<-04>4<-03>,M9.1.6/24,M4.1.6/24", 240, -60, {4, 0, 1, 0, 0}, {9, 0, 1, 0, 0}},
      {"<-02>2<-01>,M3.5.0/-1,M10.5.0/0", 120, -60, {10, 0, 5, 0, 0}, {3, 6, 5, 23, 0}},
      {"EET-2EEST,M3.4.4/50,M10.4.4/50", -120, -60, {10, 6, 5, 2, 0}, {3, 6, 5, 2, 0}},
      {"EET-2EEST,M4.4.4/50,M10.5.4/24", -120, -60, {10, 5, 5, 0, 0}, {4, 6, 5, 2, 0}},
      {"XXX0YYY,M1.1.0/-100,M12.5.6/167:30", 0, -60, {1, 5, 1, 23, 30}, {12, 2, 5, 20, 0}},
      {"XXX0YYY,M3.2.1/-167,M12.5.6/-0:00:30", 0, -60, {12, 5, 5, 23, 59}, {3, 1, 1, 1, 0}},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.tz);
    const TIME_ZONE_INFORMATION zone = ZoneOf(row.tz);
    EXPECT_EQ(zone.Bias, row.bias);
    EXPECT_EQ(zone.StandardBias, 0);
    EXPECT_EQ(zone.DaylightBias, row.daylight_bias);
    EXPECT_EQ(DateOf(zone.StandardDate), row.standard);
    EXPECT_EQ(DateOf(zone.DaylightDate), row.daylight);
  }
}

// No change by weekday, or none at all: the standard offset. What can't be read is UTC.
TEST(ZoneRecord, WithoutDaylightTime) {
  static const std::pair<int, std::vector<const char*>> kRows[] = {
      {180, {"XXX3YYY,J60,J300", "XXX3YYY4,0/0,J365/25", "XXX3YYY,M3.1.0,300"}},
      {-540,
       {"JST-9", "Asia/Tokyo", ":Asia/Tokyo", "../zoneinfo/Asia/Tokyo",
        "/usr/share/zoneinfo/Asia/Tokyo"}},
      {-210, {"<+0330>-3:30"}},
      {296, {"LMT4:56:02"}},
      {-25, {"LMT-0:25:21"}},
      {0,
       {"", ":", "Europe", "/dev/zero", "AB5", "ESX", "EST25", "EST5:60", "EST99999999999999",
        "<EST5", "EST5EDT,M3.2.0", "EST5EDT,M13.2.0,M11.1.0", "EST5EDT,M3.6.0,M11.1.0",
        "EST5EDT,M3.2.7,M11.1.0", "EST5EDT,M3.2.0/168,M11.1.0", "EST5EDT,M3.2.0,M11.1.0 ",
        "EST5EDT,J0,J366"}}};
  for (const auto& [bias, texts] : kRows) {
    for (const char* tz : texts) {
      SCOPED_TRACE(tz);
      const TIME_ZONE_INFORMATION zone = ZoneOf(tz);
      EXPECT_EQ(zone.Bias, bias);
      EXPECT_EQ(zone.DaylightBias, 0);
      EXPECT_EQ(DateOf(zone.StandardDate), kNone);
      EXPECT_EQ(DateOf(zone.DaylightDate), kNone);
    }
  }
}

// A zone file of `version` with its data blocks holding changes to types of offset and daylight
// mark.
std::string ZoneFileOf(char version, const std::string& rule) {
  const auto number = [](std::int64_t value, int bytes) {
    std::string text;
    for (int shift = 8 * bytes - 8; shift >= 0; shift -= 8)
      text += static_cast<char>(value >> shift & 0xFF);
    return text;
  };
  const auto block = [&](int time_size) {
    return "TZif"s + version + std::string(15, '\0') + number(0, 4) + number(0, 4) + number(0, 4) +
           number(3, 4) + number(3, 4) + number(4, 4) + number(-1000, time_size) +
           number(1000, time_size) + number(2000, time_size) + "\1\2\1"s +  // their types
           number(3600, 4) + "\1\0"s + number(-12600, 4) + "\0\0"s + number(7200, 4) + "\0\0"s +
           "ABC\0"s;
  };
  return version < '2' ? block(4) : block(4) + block(8) + rule;
}

TEST(ZoneRecord, ZoneFiles) {
  TIME_ZONE_INFORMATION zone;
  const struct {
    std::string file;
    std::int64_t now;
    int bias;
  } rows[] = {
      {ZoneFileOf('2', "\nJST-9\n"), 1500, -540}, {ZoneFileOf('3', "\n\n"), 1500, -120},
      {ZoneFileOf('2', "\nJ\n"), 1500, -120},     {ZoneFileOf('2', ""), 3000, 210},
      {ZoneFileOf('\0', ""), 999, 210},           {ZoneFileOf('\0', ""), -2000, 210},
  };
  for (const auto& row : rows) {
    ASSERT_TRUE(ParseZoneFile(row.file, row.now, zone));
    EXPECT_EQ(zone.Bias, row.bias);
  }
  // However a file is cut or its counts are overstated, nothing is read beyond it.
  const std::string whole = ZoneFileOf('2', "\nJST-9\n");
  for (std::size_t size = 0; size < whole.size(); ++size)
    static_cast<void>(ParseZoneFile(std::string(whole, 0, size), 0, zone));
  for (std::size_t at = 20; at < 44; ++at) {
    std::string overstated = whole;
    overstated[at] = '\xFF';
    EXPECT_FALSE(ParseZoneFile(overstated, 0, zone)) << at;
  }
  EXPECT_FALSE(ParseZoneFile("TZif", 0, zone));
}

// The C library agrees at moments of forty years, in steps that come to lie before and behind the
// changes by each half hour.
TEST(ZoneRecord, UtcToLocalAsTheCLibrary) {
  for (const char* tz :
       {"NZST-12NZDT,M9.5.0,M4.1.0/3", "AEST-10AEDT,M10.1.0,M4.1.0/3", "EST5EDT,M3.2.0,M11.1.0",
        "CET-1CEST,M3.5.0,M10.5.0/3", "IST-1GMT0,M10.5.0,M3.5.0/1", "JST-9", "<+0330>-3:30",
        "<-12>12<-11>,M12.4.0/23,M6.1.3/0", "LHST-10:30LHDT-11,M10.1.0,M4.1.0"}) {
    SCOPED_TRACE(tz);
    const TIME_ZONE_INFORMATION zone = ZoneOf(tz);
    const ScopedVariable variable("TZ", tz);
    tzset();
    constexpr std::time_t kStart = 631152000;  // 1990
    for (std::time_t t = kStart; t < kStart + 40 * 31557600LL; t += 5 * 3600 + 1800) {
      std::tm expected{};
      localtime_r(&t, &expected);
      SYSTEMTIME utc;
      SYSTEMTIME local;
      ASSERT_TRUE(SystemTimeFromSeconds(t + 25569LL * 86400, utc));
      ASSERT_TRUE(SystemTimeToTzSpecificLocalTime(zone, utc, local));
      ASSERT_EQ(std::tuple(local.wYear, local.wMonth, local.wDay, local.wHour, local.wMinute),
                std::tuple(expected.tm_year + 1900, expected.tm_mon + 1, expected.tm_mday,
                           expected.tm_hour, expected.tm_min))
          << t;
      ASSERT_EQ(local.wDayOfWeek, expected.tm_wday);
    }
  }
  tzset();
}

// A change on the last evening of a year, which UTC has in the next one.
TEST(ZoneRecord, ChangeAtTheEndOfTheYear) {
  const TIME_ZONE_INFORMATION zone = ZoneOf("<-12>12<-11>,M12.5.0/23,M6.1.3/0");
  SYSTEMTIME local;
  EXPECT_TRUE(SystemTimeToTzSpecificLocalTime(zone, {1990, 1, 0, 1, 10, 59}, local));
  EXPECT_EQ(std::tuple(local.wYear, local.wHour), std::tuple(1989, 22));
  EXPECT_TRUE(SystemTimeToTzSpecificLocalTime(zone, {1990, 1, 0, 1, 11, 0}, local));
  EXPECT_EQ(std::tuple(local.wYear, local.wHour), std::tuple(1990, 0));
}

TEST(ZoneRecord, UtcToLocalRefused) {
  constexpr SYSTEMTIME kDay{2010, 2, 0, 3}, kLast{9999, 12, 0, 31, 23}, kChange{0, 3, 0, 2, 2};
  const struct {
    TIME_ZONE_INFORMATION zone;
    SYSTEMTIME utc;
  } rows[] = {{{-60, {}, 0, {}, 0}, kLast},
              {{300, kChange, 0, kChange, -60}, {2010, 2, 0, 30}},
              {{300, {0, 3, 7, 2, 2}, 0, kChange, -60}, kDay},
              {{INT32_MAX, kChange, 0, kChange, INT32_MAX}, kDay}};
  for (const auto& [zone, utc] : rows) {
    SYSTEMTIME local{1, 2, 3, 4};
    EXPECT_FALSE(SystemTimeToTzSpecificLocalTime(zone, utc, local)) << zone.Bias;
    EXPECT_EQ(local.wYear, 1);
  }
}

}  // namespace
}  // namespace pim
