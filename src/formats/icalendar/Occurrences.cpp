// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/icalendar/Occurrences.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>

#include "formats/icalendar/RuleDates.h"
#include "formats/icalendar/RuleText.h"
#include "formats/icalendar/ZonesOfItems.h"
#include "platform/CodePages.h"
#include "platform/DayNumbers.h"
#include "platform/ZoneRecord.h"
#include "support/DateTimeZones.h"

namespace pim {
namespace {

// More than a hundred years of days.
constexpr std::int32_t kMostTimes = 40'000;
constexpr int kLastYearOfDates = 9'999;  // of dates in records

std::int64_t DayNumberOf(const CalendarFields& fields) {
  const auto days = std::chrono::sys_days(std::chrono::year(fields.year) /
                                          std::chrono::month(static_cast<unsigned>(fields.month)) /
                                          std::chrono::day(static_cast<unsigned>(fields.day)));
  return days.time_since_epoch().count();
}

std::int64_t SecondsOfTime(const icaltimetype& time) {
  const std::int64_t day = DayNumberOf({time.year, time.month, time.day, 0, 0, 0});
  const std::int64_t minutes = std::int64_t{time.hour} * 60 + time.minute;
  return day * kSecondsOfDay + minutes * 60 + time.second;
}

std::int64_t DayOfSeconds(std::int64_t seconds) {
  return (seconds < 0 ? seconds - kSecondsOfDay + 1 : seconds) / kSecondsOfDay;
}

icaltimetype InZone(const icaltimetype& utc, const ItemZone* zone) {
  if (zone == nullptr) return utc;
  return icaltime_convert_to_zone(utc, const_cast<icaltimezone*>(zone->zone()));
}

icaltimetype InUtc(const icaltimetype& time) {
  return icaltime_convert_to_zone(time, icaltimezone_get_utc_timezone());
}

struct Moment {
  std::int64_t time;  // as TimeRun counts
  std::int64_t wall;  // the same of an all-day item
};

struct Run {
  Moment first;
  Moment last;
  Moment step;  // of the last two; nothing yet of a single one
  std::int64_t count;
};

// Puts a moment at the end of the run where its distances are those of the others.
bool Goes(const Moment& moment, Run& run) {
  const Moment step{moment.time - run.last.time, moment.wall - run.last.wall};
  if (run.count > 1 && (step.time != run.step.time || step.wall != run.step.wall)) return false;
  run.last = moment;
  run.step = step;
  ++run.count;
  return true;
}

// Ascending moments as runs: one behind another, or those of each day of the week for itself.
std::vector<Run> RunsOf(const std::vector<Moment>& moments, std::int64_t secondsOfDay,
                        bool byWeekday) {
  std::vector<Run> runs;
  std::array<std::size_t, kDaysOfWeek> newest{};  // numbers of runs, from 1
  for (const Moment& moment : moments) {
    const std::int64_t weekday = moment.wall / secondsOfDay % kDaysOfWeek;
    std::size_t& run = newest[byWeekday ? static_cast<std::size_t>(std::abs(weekday)) : 0];
    if (run != 0 && Goes(moment, runs[run - 1])) continue;
    runs.push_back({moment, moment, {1, 1}, 1});
    run = runs.size();
  }
  return runs;
}

void SetTimes(const std::vector<Moment>& moments, Occurrences& found) {
  const std::int64_t day = found.isAllDay ? 1 : kSecondsOfDay;
  std::vector<Run> runs = RunsOf(moments, day, false);
  if (std::vector<Run> weekly = RunsOf(moments, day, true); weekly.size() < runs.size())
    runs = std::move(weekly);
  for (const Run& run : runs) {
    found.times.push_back({run.first.time, run.step.time, run.count});
    if (!found.isAllDay) found.wall.push_back({run.first.wall, run.step.wall, run.count});
  }
}

// What an item has of itself besides its dates.
struct Span {
  icaltimetype start;  // by which its rule is followed
  std::int64_t length = 0;
  std::optional<std::int64_t> earlyEnd = {};
  bool isAllDay = false;

  // From the start to the last second, or day, that is in it.
  std::int64_t toLast() const { return isAllDay || length == 0 ? length : length - 1; }
};

Span SpanFrom(const icaltimetype& start, std::int64_t begin, std::int64_t end, bool isAllDay) {
  if (end < begin) return {start, 0, end, isAllDay};
  return {start, end - begin, std::nullopt, isAllDay};
}

std::optional<Span> SpanOf(const CCalendar& item, const ItemZone* zone) {
  const auto start = IcalUtc(item.start_time);
  if (!start) return std::nullopt;
  if (item.allday == 1) {
    const auto first = UtcToLocal(item.start_time).GetFields();
    if (!first) return std::nullopt;
    const auto last = UtcToLocal(item.end_time).GetFields();
    const std::int64_t firstDay = DayNumberOf(*first);
    return SpanFrom(IcalDay(*first), firstDay, last ? DayNumberOf(*last) : firstDay, true);
  }
  const std::int64_t begin = *SecondsOf(item.start_time);
  return SpanFrom(InZone(*start, zone), begin, SecondsOf(item.end_time).value_or(begin), false);
}

std::string RuleValueOf(const CRecurrence& rule, const icaltimetype& start) {
  const RecurrenceData* const data = rule.GetRecurrenceData();
  return data == nullptr ? std::string() : RRuleOf(*data, start).text;
}

}  // namespace

class OccurrenceFinder::Zones {
 public:
  Zones() { GetTimeZoneInformation(machine_); }

  // The zone by which an item's rule is followed; null for UTC.
  const ItemZone* OfRule(const CCalendar& item) { return rules_.Of(item); }
  // A time of an item's rule, whose zone that is.
  Moment MomentOf(const CCalendar& item, const icaltimetype& time, bool isAllDay) {
    if (isAllDay) {
      const std::int64_t day = SecondsOfTime(time) / kSecondsOfDay;
      return {day, day};
    }
    const std::int64_t seconds = SecondsOfTime(InUtc(time));
    const bool isOnClock = icaltime_is_utc(time) == 0;
    return {seconds, isOnClock ? SecondsOfTime(time) : WallTime(item, seconds, time)};
  }
  // Both times are one moment, which is UTC.
  std::int64_t WallTime(const CCalendar& item, std::int64_t seconds, const icaltimetype& time) {
    if (const ItemZone* const zone = clocks_.OfOwn(item.zone))
      return SecondsOfTime(InZone(time, zone));
    return AreOneZone(item.zone, {}) ? MachinesTime(seconds) : seconds;
  }

 private:
  std::int64_t MachinesTime(std::int64_t seconds) const;

  ZonesOfItems rules_;
  ZonesOfItems clocks_;  // by which times are shown
  TIME_ZONE_INFORMATION machine_;
};

std::int64_t OccurrenceFinder::Zones::MachinesTime(std::int64_t seconds) const {
  constexpr std::int64_t kFromDayZero = -std::chrono::seconds(kDayZero.time_since_epoch()).count();
  SYSTEMTIME utc;
  SYSTEMTIME local;
  const bool exists = SystemTimeFromSeconds(seconds + kFromDayZero, utc) &&
                      SystemTimeToTzSpecificLocalTime(machine_, utc, local);
  const auto wall = exists ? SecondsFromSystemTime(local) : std::nullopt;
  return wall ? *wall - kFromDayZero : seconds;
}

OccurrenceFinder::OccurrenceFinder() : zones_(std::make_unique<Zones>()) { PrepareIcal(); }
OccurrenceFinder::~OccurrenceFinder() = default;

Occurrences OccurrenceFinder::Of(const CCalendar& item, const DayRange& range) {
  Occurrences found;
  const auto span = SpanOf(item, zones_->OfRule(item));
  if (!span) return found;
  found.length = span->length;
  found.earlyEnd = span->earlyEnd;
  found.isAllDay = span->isAllDay;
  const std::string rule = RuleValueOf(item.recurrence, span->start);
  ItemDates dates(rule, RuleValueOf(item.exceptionRule, span->start), span->start, kMostTimes);
  std::vector<Moment> moments;
  const auto dayOf = [&found](std::int64_t wall) {
    return found.isAllDay ? wall : DayOfSeconds(wall);
  };
  while (const auto date = dates.Next()) {
    if (date->time.year > kLastYearOfDates) break;
    const Moment moment = zones_->MomentOf(item, date->time, found.isAllDay);
    if (dayOf(moment.wall) > range.last) {
      found.isCut = true;
      break;
    }
    // Two times of a clock that is put forward may be one moment.
    const bool isNew = moments.empty() || moment.time > moments.back().time;
    if (!date->isTakenAway && isNew && dayOf(moment.wall + span->toLast()) >= range.first)
      moments.push_back(moment);
  }
  SetTimes(moments, found);
  found.isCut = found.isCut || dates.isCut() || (rule.empty() && item.recurrence.data != nullptr);
  return found;
}

std::optional<std::int64_t> OccurrenceFinder::WallTime(const CCalendar& item,
                                                       const COleDateTime& utc) {
  const auto time = IcalUtc(utc);
  if (!time) return std::nullopt;
  return zones_->WallTime(item, SecondsOfTime(*time), *time);
}

std::string ZoneTextOf(const CCalendarZone& zone) {
  if (AreOneZone(zone, {})) return {};
  std::string text = "UTC" + OffsetValueOf(zone);
  const std::string name = Utf8FromWide(zone.standardName.view());
  const std::string daylightName = Utf8FromWide(zone.daylightName.view());
  if (!name.empty()) {
    text.append(" (")
        .append(name)
        .append(daylightName.empty() ? "" : "/")
        .append(daylightName)
        .append(")");
  }
  return text;
}

std::optional<std::int64_t> SecondsOf(const COleDateTime& utc) {
  const auto time = IcalUtc(utc);
  if (!time) return std::nullopt;
  return SecondsOfTime(*time);
}

}  // namespace pim
