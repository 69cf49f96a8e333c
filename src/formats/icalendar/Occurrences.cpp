// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/icalendar/Occurrences.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "formats/icalendar/ItemZone.h"
#include "formats/icalendar/RuleDates.h"
#include "formats/icalendar/RuleText.h"
#include "platform/CodePages.h"

namespace pim {
namespace {

// More than a hundred years of days.
constexpr std::int32_t kMostTimes = 40'000;
constexpr int kLastYearOfDates = 9'999;  // of dates in records

std::int64_t SecondsOfTime(const icaltimetype& time) {
  const std::int64_t minutes = std::int64_t{time.hour} * 60 + time.minute;
  return DayNumberOf(time) * kSecondsOfDay + minutes * 60 + time.second;
}

std::int64_t DayOfSeconds(std::int64_t seconds) {
  return (seconds < 0 ? seconds - kSecondsOfDay + 1 : seconds) / kSecondsOfDay;
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

icaltimetype TimeOfSeconds(std::int64_t seconds) {
  const std::int64_t day = DayOfSeconds(seconds);
  const auto rest = static_cast<int>(seconds - day * kSecondsOfDay);
  const CalendarFields clock{1970, 1, 1, rest / 3'600, rest / 60 % 60, rest % 60};
  return OnDay(IcalTime(clock, true), day);
}

// A rule's value, for an item that begins at `start`, both on the same clock: libical takes it for
// one of UTC. Texts write a rule's end in UTC or on their own clock, and a record doesn't tell: the
// later one counts, so that the last time isn't lost.
std::string RuleValueOf(const CRecurrence& rule, const icaltimetype& start,
                        const ItemClock& clock) {
  const RecurrenceData* const data = rule.GetRecurrenceData();
  if (data == nullptr) return {};
  COleDateTimeNull end = data->endDate;
  const auto written = SecondsOf(end);
  if (written && start.is_date == 0)
    end = DateTimeOf(TimeOfSeconds(std::max(*written, clock.WallOf(*written))));
  return RRuleOf(*data, start, end).text;
}

}  // namespace

// An item on the clock by which its rule goes.
class OccurrenceFinder::Walk {
 public:
  Walk(const CCalendar& item, const ItemClock& rule, const ItemClock& shown);

  Occurrences Within(const DayRange& range) const;

 private:
  Moment MomentOf(const icaltimetype& time) const;
  std::int64_t DayOf(std::int64_t wall) const { return isAllDay_ ? wall : DayOfSeconds(wall); }

  const CCalendar& item_;
  const ItemClock& rule_;
  const ItemClock& shown_;
  bool isAllDay_;
  icaltimetype start_;
  std::int64_t length_;
};

OccurrenceFinder::Walk::Walk(const CCalendar& item, const ItemClock& rule, const ItemClock& shown)
    : item_(item), rule_(rule), shown_(shown), isAllDay_(item.allday == 1) {
  const std::int64_t begin = *SecondsOf(item.start_time);
  const std::int64_t end = SecondsOf(item.end_time).value_or(begin);
  start_ = TimeOfSeconds(rule.WallOf(begin));
  length_ = end - begin;
  if (isAllDay_) {
    start_ = IcalDay({start_.year, start_.month, start_.day, 0, 0, 0});
    length_ = DaysBetween(start_, TimeOfSeconds(rule.WallOf(end)));
  }
  length_ = std::max<std::int64_t>(length_, 0);
}

Moment OccurrenceFinder::Walk::MomentOf(const icaltimetype& time) const {
  if (isAllDay_) return {DayNumberOf(time), DayNumberOf(time)};
  const std::int64_t wall = SecondsOfTime(time);
  const std::int64_t seconds = rule_.MomentOf(wall);
  return {seconds, &rule_ == &shown_ ? wall : shown_.WallOf(seconds)};
}

Occurrences OccurrenceFinder::Walk::Within(const DayRange& range) const {
  Occurrences found;
  found.isAllDay = isAllDay_;
  found.length = length_;
  const std::string rule = RuleValueOf(item_.recurrence, start_, rule_);
  ItemDates dates(rule, RuleValueOf(item_.exceptionRule, start_, rule_), start_, kMostTimes);
  // From the start to the last second, or day, that is in it.
  const std::int64_t toLast = isAllDay_ || length_ == 0 ? length_ : length_ - 1;
  std::vector<Moment> moments;
  while (const auto date = dates.Next()) {
    if (date->time.year > kLastYearOfDates) break;
    const Moment moment = MomentOf(date->time);
    if (DayOf(moment.wall) > range.last) {
      found.isCut = true;
      break;
    }
    // Two times of a clock that is put forward may be one moment.
    const bool isNew = moments.empty() || moment.time > moments.back().time;
    if (!date->isTakenAway && isNew && DayOf(moment.wall + toLast) >= range.first)
      moments.push_back(moment);
  }
  SetTimes(moments, found);
  found.isCut = found.isCut || dates.isCut() || (rule.empty() && item_.recurrence.data != nullptr);
  return found;
}

Occurrences OccurrenceFinder::Of(const CCalendar& item, const DayRange& range) {
  if (!SecondsOf(item.start_time)) return {};
  const ItemClock& shown = item.allday == 1 ? machine_ : ClockOf(item.zone);
  const bool isUtc = &shown == &machine_ && item.allday != 1 && IsUtcAlone(item);
  return Walk(item, isUtc ? utc_ : shown, shown).Within(range);
}

// Whether the start is a date of the item's rule in UTC, but not on the machine's clock.
bool OccurrenceFinder::IsUtcAlone(const CCalendar& item) const {
  if (item.recurrence.data == nullptr) return false;
  const auto fits = [&item](const ItemClock& clock) {
    const icaltimetype start = TimeOfSeconds(clock.WallOf(*SecondsOf(item.start_time)));
    return IsFirstDate(RuleValueOf(item.recurrence, start, clock), start);
  };
  return !fits(machine_) && fits(utc_);
}

const ItemClock& OccurrenceFinder::ClockOf(const CCalendarZone& zone) {
  if (AreOneZone(zone, {})) return machine_;
  if (!AreOneZone(zone, ownZone_)) {
    ownZone_ = zone;
    own_ = ItemClock(zone);
  }
  return own_;
}

OccurrenceFinder::OccurrenceFinder() : machine_(ItemClock::OfMachine()) { PrepareIcal(); }

std::optional<std::int64_t> OccurrenceFinder::WallTime(const CCalendar& item,
                                                       const COleDateTime& utc) {
  const auto seconds = SecondsOf(utc);
  if (!seconds) return std::nullopt;
  return ClockOf(item.zone).WallOf(*seconds);
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
