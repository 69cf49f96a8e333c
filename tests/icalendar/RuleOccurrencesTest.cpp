// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <chrono>
#include <optional>

#include "formats/icalendar/Ical.h"
#include "formats/icalendar/Occurrences.h"
#include "formats/icalendar/RuleDown.h"
#include "tests/icalendar/Forms.h"
#include "tests/icalendar/OddItems.h"

namespace pim {
namespace {

using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr int kYears = 10;

year_month_day DateOf(sys_days day) { return year_month_day(day); }
int MonthOf(sys_days day) {
  const auto date = DateOf(day);
  return static_cast<int>(date.year()) * 12 + static_cast<int>(unsigned(date.month())) - 1;
}
int DayOf(sys_days day) { return static_cast<int>(unsigned(DateOf(day).day())); }
int WeekdayOf(sys_days day) { return static_cast<int>(std::chrono::weekday(day).c_encoding()); }
int DaysOfMonth(sys_days day) {
  const auto date = DateOf(day);
  return static_cast<int>(unsigned((date.year() / date.month() / std::chrono::last).day()));
}
sys_days MondayOf(sys_days day) { return day - std::chrono::days((WeekdayOf(day) + 6) % 7); }
int DayOfYear(sys_days day) {
  return static_cast<int>((day - sys_days(DateOf(day).year() / 1 / 1)).count()) + 1;
}

bool Holds(const RecurrenceList& list, int number) {
  return std::ranges::find(list, number) != list.end();
}

// Whether a rule of vCalendar 1.0 names a day: written from what the kinds mean, and without a
// thought of RRULE.
bool Names(const RecurrenceData& rule, sys_days start, sys_days day) {
  const auto steps = [&rule](auto distance) { return distance % rule.interval == 0; };
  const auto* const days = dynamic_cast<const DaysData*>(&rule);
  switch (rule.type) {
    case RECUR_DAILY:
      return steps((day - start).count());
    case RECUR_WEEKLY:
      return steps((MondayOf(day) - MondayOf(start)).count() / 7) &&
             (days->days.empty() ? WeekdayOf(day) == WeekdayOf(start)
                                 : Holds(days->days, WeekdayOf(day)));
    case RECUR_MONTHLY_BY_POS: {
      const auto& weeks = static_cast<const MonthlyByPosData&>(rule);
      const int first = (DayOf(day) - 1) / 7 + 1;
      const int last = (DaysOfMonth(day) - DayOf(day)) / 7 + 1;
      const bool isWeekday = weeks.weekdays.empty() ? WeekdayOf(day) == WeekdayOf(start)
                                                    : Holds(weeks.weekdays, WeekdayOf(day));
      const bool isWeek = weeks.positions.empty()
                              ? first == (DayOf(start) - 1) / 7 + 1
                              : Holds(weeks.positions, first) || Holds(weeks.positions, -last);
      return steps(MonthOf(day) - MonthOf(start)) && isWeekday && isWeek;
    }
    case RECUR_MONTHLY_BY_DAY:
      return steps(MonthOf(day) - MonthOf(start)) &&
             (days->days.empty() ? DayOf(day) == DayOf(start)
                                 : Holds(days->days, DayOf(day)) ||
                                       Holds(days->days, DayOf(day) - DaysOfMonth(day) - 1));
    case RECUR_YEARLY_BY_MONTH:
      return steps(MonthOf(day) / 12 - MonthOf(start) / 12) && DayOf(day) == DayOf(start) &&
             (days->days.empty() ? MonthOf(day) % 12 == MonthOf(start) % 12
                                 : Holds(days->days, MonthOf(day) % 12 + 1));
    default:
      return steps(MonthOf(day) / 12 - MonthOf(start) / 12) &&
             (days->days.empty() ? DayOfYear(day) == DayOfYear(start)
                                 : Holds(days->days, DayOfYear(day)));
  }
}

// Day by day, ten years long.
std::vector<std::string> Meant(const CCalendar& item) {
  const auto fields = *item.start_time.GetFields();
  const sys_days start = std::chrono::year(fields.year) /
                         std::chrono::month(static_cast<unsigned>(fields.month)) /
                         std::chrono::day(static_cast<unsigned>(fields.day));
  const RecurrenceData& rule = *item.recurrence.GetRecurrenceData();
  std::vector<std::string> dates;
  int count = 0;
  for (sys_days day = start; day < start + std::chrono::days(366 * kYears);
       day += std::chrono::days(1)) {
    const auto date = DateOf(day);
    const COleDateTime moment =
        Moment(static_cast<int>(date.year()), static_cast<int>(unsigned(date.month())),
               static_cast<int>(unsigned(date.day())), fields.hour, fields.minute, 0);
    if (rule.endDate.status == StatusValid && moment > rule.endDate) break;
    if (!Names(rule, start, day)) continue;
    if (rule.count > 0 && ++count > rule.count) break;
    const RecurrenceData* const exception = item.exceptionRule.GetRecurrenceData();
    if (exception == nullptr || !Names(*exception, start, day)) dates.push_back(TextOf(moment));
  }
  return dates;
}

// What albums show; a start is shown, whether the rule names it or not.
void ExpectShown(const CCalendar& item, std::vector<std::string> meant) {
  const icaltimetype start = *IcalUtc(item.start_time);
  const std::int64_t first = DayNumberOf(start);
  const sys_days day{std::chrono::days(first)};
  const RecurrenceData* const exception = item.exceptionRule.GetRecurrenceData();
  const std::string own = TextOf(item.start_time);
  const bool isNamed = std::ranges::find(meant, own) != meant.end();
  if (!isNamed && (exception == nullptr || !Names(*exception, day, day)))
    meant.insert(meant.begin(), own);
  std::vector<std::string> shown;
  for (const TimeRun& run : OccurrenceFinder().Of(item, {first, first + 366 * kYears - 1}).times)
    for (std::int64_t i = 0; i < run.count; ++i)
      shown.push_back(TextOf(DateTimeOf(OnDay(start, (run.first + i * run.step) / kSecondsOfDay))));
  std::ranges::sort(shown);
  EXPECT_EQ(meant, shown);
}

// What libical makes of the text that goes out, as any program on it does.
std::vector<std::string> Expanded(const std::string& text, int lastYear) {
  const IcalOwner<icalcomponent> frame(icalcomponent_new_from_string(text.c_str()));
  icalcomponent* const item = icalcomponent_get_first_component(frame.get(), ICAL_ANY_COMPONENT);
  icalproperty* const rule = icalcomponent_get_first_property(item, ICAL_RRULE_PROPERTY);
  const icaltimetype start = icalcomponent_get_dtstart(item);
  std::set<std::string> away;
  for (icalproperty* date = icalcomponent_get_first_property(item, ICAL_EXDATE_PROPERTY);
       date != nullptr; date = icalcomponent_get_next_property(item, ICAL_EXDATE_PROPERTY))
    away.insert(TextOf(DateTimeOf(icalproperty_get_exdate(date))));
  const IcalOwner<icalrecur_iterator> dates(
      icalrecur_iterator_new(icalproperty_get_rrule(rule), start));
  std::vector<std::string> expanded;
  if (dates == nullptr) return expanded;
  for (icaltimetype date = icalrecur_iterator_next(dates.get());
       icaltime_is_null_time(date) == 0 && date.year <= lastYear;
       date = icalrecur_iterator_next(dates.get())) {
    const std::string moment = TextOf(DateTimeOf(date));
    if (!away.contains(moment)) expanded.push_back(moment);
  }
  return expanded;
}

void ExpectMeant(const std::string& lines) {
  const CCalendar item = ReadItem(lines);
  ASSERT_NE(item.recurrence.GetRecurrenceData(), nullptr);
  Told told;
  const std::string text = ICalendarOf(item, told);
  SCOPED_TRACE(lines + "\n" + text);
  std::vector<std::string> meant = Meant(item);
  ExpectShown(item, meant);
  std::vector<std::string> expanded = Expanded(text, item.start_time.GetYear() + kYears);
  // The two end at other days of the last year.
  const std::string last = std::to_string(item.start_time.GetYear() + kYears);
  for (auto* dates : {&meant, &expanded})
    std::erase_if(*dates, [&last](const std::string& date) { return date.starts_with(last); });
  EXPECT_EQ(meant, expanded);
}

TEST(RuleOccurrences, AreThoseOfTheRecord) {
  static constexpr const char* kRows[] = {
      "DTSTART:20100105T120000Z\r\nRRULE:D3 #12",
      "DTSTART:20100105T120000Z\r\nRRULE:W1 #0",
      // Sunday is the last day of its week.
      "DTSTART:20100105T120000Z\r\nRRULE:W2 SU MO TU #30",
      // Only months that have a fifth one.
      "DTSTART:20100105T120000Z\r\nRRULE:MP1 5+ 5- FR #0",
      "DTSTART:20100105T120000Z\r\nRRULE:MP2 1+ 1- SU SA 20150101T000000Z",
      // The start's week and weekday, which the last week of a month lacks.
      "DTSTART:20100131T120000Z\r\nRRULE:MP1 #0",
      "DTSTART:20100131T120000Z\r\nRRULE:MD1 #0",
      "DTSTART:20100131T120000Z\r\nRRULE:MD1 31 LD 31- #40",
      "DTSTART:20120229T120000Z\r\nRRULE:YM1 #0",
      "DTSTART:20100131T120000Z\r\nRRULE:YM2 1 2 3 #0",
      "DTSTART:20100131T120000Z\r\nRRULE:YD1 #0",
      "DTSTART:20100131T120000Z\r\nRRULE:YD1 1 60 366 #20",
      // Whichever comes first of a number and a last date, up to that moment.
      "DTSTART:20100104T120000Z\r\nRRULE:W1 MO #4 20100111T120000Z",
      "DTSTART:20100104T120000Z\r\nRRULE:W1 MO #2 20100111T120000Z",
      "DTSTART:20100104T120000Z\r\nRRULE:W1 MO #4 20100111T115959Z",
      "DTSTART:20100104T120000Z\r\nRRULE:D1 #0\r\nXRULE:W1 SU SA #0",
      "DTSTART:20100104T120000Z\r\nRRULE:MD1 13 #0\r\nXRULE:W1 FR #0",
  };
  const ScopedZone zone("UTC");
  for (const char* row : kRows) ExpectMeant(row);
}

// Where a rule doesn't name the item's start RFC 5545 leaves its dates open, and libical begins
// this one a step later.
bool IsLeftOpen(const CCalendar& item) {
  const auto* const rule = dynamic_cast<const WeeklyData*>(item.recurrence.GetRecurrenceData());
  return rule != nullptr && rule->interval > 1 && rule->days == RecurrenceList{0} &&
         item.start_time.GetDayOfWeek() != 1;
}

TEST(RuleOccurrences, AreThoseOfOddRecords) {
  const ScopedZone zone("UTC");
  OddItems items(7);
  for (int i = 0; i < 400 && !testing::Test::HasFailure(); ++i) {
    const std::string lines = "DTSTART:" + items.Moment() + "\r\nRRULE:" + items.Rule();
    const CCalendar item = ReadItem(lines);
    IsLeftOpen(item) ? ExpectShown(item, Meant(item)) : ExpectMeant(lines);
  }
}

// Rules of other programs that records can say are read as rules with the same dates.
TEST(RuleOccurrences, OfOtherProgramsStay) {
  static constexpr struct {
    const char* rule;
    const char* words;  // empty for one that records can't say
  } kRows[] = {
      {"FREQ=DAILY;BYDAY=MO,TU,WE,TH,FR", "W1 MO TU WE TH FR #0"},
      {"FREQ=DAILY;INTERVAL=2;BYDAY=MO", ""},
      {"FREQ=DAILY;BYMONTH=1", ""},
      {"FREQ=HOURLY", ""},
      {"FREQ=WEEKLY;WKST=SU;BYDAY=TU,SU", "W1 SU TU #0"},
      {"FREQ=WEEKLY;INTERVAL=2;WKST=SU;BYDAY=TU,SU", ""},
      {"FREQ=WEEKLY;INTERVAL=2;WKST=SU;BYDAY=TU,FR;COUNT=9", "W2 TU FR #9"},
      {"FREQ=MONTHLY;BYDAY=MO,WE", "MP1 1+ 2+ 3+ 4+ 5+ MO WE #0"},
      {"FREQ=MONTHLY;BYDAY=2MO,2WE,-1MO,-1WE", "MP1 2+ 1- MO WE #0"},
      {"FREQ=MONTHLY;BYDAY=2MO,-1WE", ""},
      {"FREQ=MONTHLY;BYDAY=MO;BYSETPOS=3", "MP1 3+ MO #0"},
      {"FREQ=MONTHLY;BYDAY=MO,TU;BYSETPOS=3", ""},
      {"FREQ=MONTHLY;BYDAY=FR;BYMONTHDAY=13", ""},
      {"FREQ=MONTHLY;BYMONTHDAY=-1,1;UNTIL=20201231", "MD1 1 1-  20201231T235959Z"},
      {"FREQ=YEARLY", "YM1 #0"},
      {"FREQ=YEARLY;BYMONTH=1;BYMONTHDAY=5", "YM1 1 #0"},
      {"FREQ=YEARLY;INTERVAL=2;BYMONTH=1;BYMONTHDAY=10,-1", "MD24 10 1- #0"},
      {"FREQ=YEARLY;BYMONTH=1;BYDAY=4TH", "MP12 4+ TH #0"},
      {"FREQ=YEARLY;BYMONTH=11;BYDAY=4TH", ""},
      {"FREQ=YEARLY;BYYEARDAY=100,1", "YD1 1 100 #0"},
      {"FREQ=YEARLY;BYYEARDAY=-1", ""},
      {"FREQ=YEARLY;BYWEEKNO=20", ""},
      {"FREQ=DAILY;COUNT=2000000000", "D1 #2000000000"},
      {"FREQ=FOO", ""},
      {"", ""},
  };
  Told told;
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.rule);
    const std::string text =
        "BEGIN:VCALENDAR\r\nBEGIN:VEVENT\r\nDTSTART:20100105T120000Z\r\nRRULE:" +
        std::string(row.rule) + "\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n";
    const std::string down = DownOf(text, told);
    const std::size_t at = down.find("RRULE:");
    const std::string words =
        at == std::string::npos ? "" : down.substr(at + 6, down.find('\r', at) - at - 6);
    EXPECT_EQ(words, row.words);
    if (words.empty() || std::string_view(row.words).find("#2000000000") != std::string_view::npos)
      continue;
    std::vector<std::string> meant = Meant(ReadItem("DTSTART:20100105T120000Z\r\nRRULE:" + words));
    std::erase_if(meant, [](const std::string& date) { return date.starts_with("2020"); });
    EXPECT_EQ(meant, Expanded(text, 2019));
  }
}

}  // namespace
}  // namespace pim
