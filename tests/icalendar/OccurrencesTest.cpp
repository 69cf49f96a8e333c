// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "formats/icalendar/Occurrences.h"
#include "formats/icalendar/RuleDates.h"
#include "tests/icalendar/Forms.h"
#include "tests/icalendar/OddItems.h"

namespace pim {
namespace {

constexpr std::int64_t kDay = 86'400;
constexpr DayRange kAll{-700'000, 3'000'000};
constexpr std::int64_t kJanuary2010 = 14'610;  // the 1st, a Friday, in days

std::string TextOf(const std::vector<TimeRun>& runs, std::int64_t from, std::int64_t unit) {
  std::string text;
  for (const TimeRun& run : runs) {
    text.append(text.empty() ? "" : " ").append(std::to_string((run.first - from) / unit));
    if (run.count > 1)
      text.append("+" + std::to_string(run.step / unit) + "*" + std::to_string(run.count));
  }
  return text;
}

// Days from 2010-01-01 on, in runs, of items at noon in UTC.
TEST(Occurrences, Days) {
  static constexpr struct {
    const char* lines;
    const char* days;
    DayRange range = kAll;
    bool isCut = false;
  } kRows[] = {
      {"DTSTART:20100105T120000Z", "4"},
      {"DTSTART:20100105T120000Z\r\nRRULE:D3 #5", "4+3*5"},
      // A week's days have distances of their own.
      {"DTSTART:20100104T120000Z\r\nRRULE:W1 MO TU TH #7", "3+7*3 4+7*2 6+7*2"},
      {"DTSTART:20100104T120000Z\r\nRRULE:D1 #10\r\nXRULE:D1 #3", "6+1*7"},
      {"DTSTART:20100104T120000Z\r\nRRULE:D1 #10\r\nXRULE:W1 SU SA #0", "3+1*5 10+1*3"},
      // The start counts, though the rule names other days.
      {"DTSTART:20100105T120000Z\r\nRRULE:W1 MO #2", "4+6*2 17"},
      {"DTSTART:20100105T120000Z\r\nRRULE:D1 #0", "4+1*3", {0, kJanuary2010 + 6}, true},
      {"DTSTART:20100105T120000Z\r\nRRULE:D1 #9", "10+1*3", {kJanuary2010 + 10, 99'999}},
      {"DTSTART:20100105T120000Z\r\nDTEND:20100107T000000Z\r\nRRULE:D4 #9",
       "4+4*2",
       {kJanuary2010 + 5, kJanuary2010 + 8},
       true},
      {"DTSTART:20100105T120000Z\r\nDTEND:20100107T000000Z", "", {kJanuary2010 + 6, 99'999}},
      // Nobody can follow it; nor are more dates looked at than those of some hundred years.
      {"DTSTART:20100105T120000Z\r\nRRULE:W1 MO #2 20100000T000000Z", "4+6*2 17"},
      {"DTSTART:20100105T120000Z\r\nRRULE:D1 #0", "4+1*100000", kAll, true},
      {"SUMMARY:Some day\r\nRRULE:D1 #0", ""},
  };
  const ScopedZone zone("UTC");
  OccurrenceFinder finder;
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.lines);
    const Occurrences found = finder.Of(ReadItem(row.lines), row.range);
    EXPECT_EQ(TextOf(found.times, kJanuary2010 * kDay + kDay / 2, kDay), row.days);
    EXPECT_EQ(found.wall, found.times);
    EXPECT_EQ(found.isCut, row.isCut);
  }
}

// Times on the item's clock, in hours from 2010-03-01 on, where clocks are put forward on the 14th
// in New York and on the 28th in Berlin.
TEST(Occurrences, Clocks) {
  static constexpr const char* kNewYork =
      "TZ:-05:00\r\nDAYLIGHT:TRUE;-04:00;20100314T070000Z;20101107T060000Z;EST;EDT\r\n";
  struct Row {
    const char* machine;
    std::string lines;
    const char* times;
    const char* wall;
  };
  const Row rows[] = {
      {"UTC", std::string(kNewYork) + "DTSTART:20100313T140000Z\r\nRRULE:D1 #3", "302+23*2 349",
       "297+24*2 345"},
      // Without a zone of its own a rule goes by the machine's clock, up to an end on it, too.
      {"CET-1CEST,M3.5.0,M10.5.0/3", "DTSTART:20100327T080000Z\r\nRRULE:D1 #3", "632+23*2 679",
       "633+24*2 681"},
      {"CET-1CEST,M3.5.0,M10.5.0/3",
       "DTSTART:20100327T080000Z\r\nRRULE:D1 20100328T070000Z\r\nXRULE:D1 20100327T080000Z", "655",
       "657"},
      {"CET-1CEST,M3.5.0,M10.5.0/3", "DTSTART:20100321T233000Z\r\nRRULE:W1 MO #2", "503+167*2",
       "504+168*2"},
      // Only in UTC is the start a Monday.
      {"EST5EDT,M3.2.0,M11.1.0", "DTSTART:20100308T013000Z\r\nRRULE:W1 MO #2", "169+168*2",
       "164+169*2"},
      // An end is in UTC or on the clock.
      {"EST5EDT,M3.2.0,M11.1.0", "DTSTART:20100301T140000Z\r\nRRULE:D1 20100303T090000", "14+24*3",
       "9+24*3"},
      {"EST5EDT,M3.2.0,M11.1.0", "DTSTART:20100301T140000Z\r\nRRULE:D1 20100303T140000Z", "14+24*3",
       "9+24*3"},
      // A time that the clock skips is as if it went on.
      {"CET-1CEST,M3.5.0,M10.5.0/3", "DTSTART:20100327T013000Z\r\nRRULE:D1 #3", "625+23*2 672",
       "626+24*2 674"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.lines);
    const ScopedZone zone(row.machine);
    const Occurrences found = OccurrenceFinder().Of(ReadItem(row.lines), kAll);
    EXPECT_EQ(TextOf(found.times, (kJanuary2010 + 59) * kDay, 3'600), row.times);
    EXPECT_EQ(TextOf(found.wall, (kJanuary2010 + 59) * kDay, 3'600), row.wall);
  }
}

// What is counted of daily and weekly rules is what libical finds.
TEST(Occurrences, SteadyRules) {
  PrepareIcal();
  for (const char* rule : {"FREQ=DAILY;COUNT=3", "FREQ=DAILY;INTERVAL=11;UNTIL=20100501T120000Z",
                           "FREQ=WEEKLY;COUNT=5", "FREQ=WEEKLY;INTERVAL=2;BYDAY=TU,SU;COUNT=9",
                           "FREQ=WEEKLY;INTERVAL=2;WKST=SU;BYDAY=SU,TU;COUNT=9",
                           "FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR;UNTIL=20100216T115959Z"}) {
    SCOPED_TRACE(rule);
    const icaltimetype start = icaltime_from_string("20100105T120000Z");
    RuleDates dates(rule, start);
    const IcalOwner<icalrecur_iterator> wanted(
        icalrecur_iterator_new(icalrecurrencetype_from_string(rule), start));
    for (auto date = dates.Next(); date; date = dates.Next())
      ASSERT_EQ(icaltime_compare(*date, icalrecur_iterator_next(wanted.get())), 0);
    EXPECT_TRUE(icaltime_is_null_time(icalrecur_iterator_next(wanted.get())));
  }
}

// What clocks of records' zones show at noon in UTC, and back.
TEST(Occurrences, ZonesOfRecords) {
  static constexpr const char* kNorth =
      "TZ:+01:00\r\nDAYLIGHT:TRUE;+02:00;20100328T010000Z;20101031T010000Z;CET;CEST";
  // Summer lasts over New Year, and comes back by its Sundays.
  static constexpr const char* kSouth =
      "TZ:+10:00\r\nDAYLIGHT:TRUE;+11:00;20101002T160000Z;20110402T160000Z;EST;EDT";
  static constexpr struct {
    const char* zone;
    std::int64_t day;  // of 2010, from 0
    double noon;       // in hours of the day
  } kRows[] = {
      {"TZ:+05:30", 100, 17.5},
      {"TZ:-03:30", 100, 8.5},
      {kNorth, 86, 14},
      {kNorth, 303, 13},
      {kSouth, 10, 23},
      {kSouth, 150, 22},
      {kSouth, 275, 23},
      {kSouth, 5 * 365, 23},
      {kSouth, 5 * 365 + 150, 22},
      // Daylight time without its days is none.
      {"TZ:+01:00\r\nDAYLIGHT:TRUE;+02:00;;;CET;CEST", 200, 13},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.zone + std::string(" ") + std::to_string(row.day));
    const ItemClock clock(ReadItem(row.zone).zone);
    const std::int64_t noon = (kJanuary2010 + row.day) * kDay + kDay / 2;
    const std::int64_t wall = clock.WallOf(noon);
    EXPECT_EQ(static_cast<double>(wall - noon + kDay / 2) / 3'600, row.noon);
    EXPECT_EQ(clock.MomentOf(wall), noon);
  }
}

// All-day items are days, whatever the clock: from 2010-01-01 on.
TEST(Occurrences, AllDay) {
  static constexpr struct {
    const char* machine;
    const char* lines;
    const char* days = "70+1*5";
    std::int64_t length = 1;
  } kRows[] = {
      {"UTC", "DTSTART:20100312T000000\r\nDTEND:20100313T000000\r\nRRULE:D1 #5"},
      {"EST5EDT,M3.2.0,M11.1.0",
       "DTSTART:20100312T000000\r\nDTEND:20100313T000000\r\nRRULE:D1 20100316T000000"},
      // Ends in UTC, and at the end of a local day.
      {"JST-9", "DTSTART:20100312T000000\r\nDTEND:20100313T000000\r\nRRULE:D1 20100315T150000Z"},
      {"JST-9", "DTSTART:20100312T000000\r\nDTEND:20100313T000000\r\nRRULE:D1 20100316T235959"},
      // In Santiago a day of September begins at one o'clock.
      {"<-04>4<-03>,M9.1.6/24,M4.1.6/24",
       "DTSTART:20260906T000000\r\nDTEND:20260907T000000\r\nRRULE:D1 #2", "6092+1*2"},
      {"<-04>4<-03>,M9.1.6/24,M4.1.6/24", "DTSTART:20260905T000000\r\nDTEND:20260906T000000",
       "6091"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(std::string(row.machine) + row.lines);
    const ScopedZone zone(row.machine);
    const Occurrences found =
        OccurrenceFinder().Of(ReadItem(std::string("X-ALLDAY:SET\r\n") + row.lines), kAll);
    EXPECT_TRUE(found.isAllDay);
    EXPECT_EQ(TextOf(found.times, kJanuary2010, 1), row.days);
    EXPECT_EQ(found.length, row.length);
    EXPECT_TRUE(found.wall.empty());
  }
}

// What no clock and no rule of libical's says.
TEST(Occurrences, LengthsAndLimits) {
  const ScopedZone zone("CET-1CEST,M3.5.0,M10.5.0/3");
  const Occurrences overnight =
      OccurrenceFinder().Of(ReadItem("DTSTART:20260328T100000\r\nDTEND:20260329T100000"), kAll);
  EXPECT_EQ(overnight.length, kDay - 3'600);
  EXPECT_EQ(overnight.wallLength, kDay);
  const Occurrences early =
      OccurrenceFinder().Of(ReadItem("DTSTART:20260328T100000\r\nDTEND:20260328T090000"), kAll);
  EXPECT_EQ(early.length, 0);
  EXPECT_EQ(*early.earlyEnd, early.times[0].first - 3'600);
  // A day that there is never, and steps that libical can't count.
  for (const char* rule : {"YM1 2 #0", "D65537 #3"}) {
    SCOPED_TRACE(rule);
    const Occurrences found = OccurrenceFinder().Of(
        ReadItem(std::string("DTSTART:20260131T080000Z\r\nRRULE:") + rule), {20'000, 21'500});
    EXPECT_EQ(found.times.size(), 1U);
    EXPECT_EQ(found.isCut, rule[0] == 'D');
  }
}

TEST(Occurrences, TakeAnyItem) {
  const ScopedZone zone("EST5EDT,M3.2.0,M11.1.0");
  OddItems items(3);
  OccurrenceFinder finder;
  for (int i = 0; i < 100; ++i) {
    const Occurrences found =
        finder.Of(ReadItem("DTSTART:" + items.Moment() + "\r\nRRULE:" + items.Rule() +
                           "\r\nXRULE:" + items.Rule()),
                  kAll);
    std::int64_t last = std::numeric_limits<std::int64_t>::min();
    for (const TimeRun& run : found.times) {
      ASSERT_GT(run.first, last);
      ASSERT_GT(run.step, 0);
      last = run.first;
    }
  }
}

}  // namespace
}  // namespace pim
