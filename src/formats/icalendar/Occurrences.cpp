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

constexpr std::int32_t kMostTimes = 100'000;  // more than 270 years of days

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
  if (const auto written = SecondsOf(end)) {
    const std::int64_t wall = clock.WallOf(*written);
    // Of an all-day item the one that is midnight.
    const bool isLocal = wall % kSecondsOfDay == 0 && *written % kSecondsOfDay != 0;
    if (start.is_date != 0 ? isLocal : wall > *written) end = DateTimeOf(TimeOfSeconds(wall));
  }
  return RRuleOf(*data, start, end).text;
}

}  // namespace

// An item on the clock by which its rule goes.
class OccurrenceFinder::Walk {
 public:
  Walk(const CCalendar& item, const ItemClock& rule, const ItemClock& shown);

  Occurrences Within(const DayRange& range) const;

 private:
  // In the unit of times; an end ahead of the start is kept for itself.
  void SetLength(std::int64_t length, std::int64_t end);
  Moment MomentOf(const icaltimetype& time) const;
  std::int64_t DayOf(std::int64_t wall) const { return isAllDay_ ? wall : DayOfSeconds(wall); }

  const CCalendar& item_;
  const ItemClock& rule_;
  const ItemClock& shown_;
  bool isAllDay_;
  icaltimetype start_;
  std::int64_t length_ = 0;
  std::int64_t wallLength_ = 0;
  std::optional<std::int64_t> earlyEnd_;
};

OccurrenceFinder::Walk::Walk(const CCalendar& item, const ItemClock& rule, const ItemClock& shown)
    : item_(item), rule_(rule), shown_(shown), isAllDay_(item.allday == 1) {
  const std::int64_t begin = *SecondsOf(item.start_time);
  const std::int64_t end = SecondsOf(item.end_time).value_or(begin);
  if (isAllDay_) {
    const std::int64_t first = rule.DayAt(begin);
    start_ = OnDay(IcalDay({1970, 1, 1, 0, 0, 0}), first);
    SetLength(rule.DayAt(end) - first, rule.DayAt(end));
    wallLength_ = length_;
  } else {
    start_ = TimeOfSeconds(rule.WallOf(begin));
    SetLength(end - begin, end);
    wallLength_ = std::max<std::int64_t>(shown.WallOf(end) - shown.WallOf(begin), 0);
  }
}

void OccurrenceFinder::Walk::SetLength(std::int64_t length, std::int64_t end) {
  length_ = std::max<std::int64_t>(length, 0);
  if (length < 0) earlyEnd_ = end;
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
  found.wallLength = wallLength_;
  found.earlyEnd = earlyEnd_;
  const std::string rule = RuleValueOf(item_.recurrence, start_, rule_);
  ItemDates dates(rule, RuleValueOf(item_.exceptionRule, start_, rule_), start_, kMostTimes);
  // From the start to the last second, or day, that is in it.
  const std::int64_t toLast = isAllDay_ || length_ == 0 ? length_ : length_ - 1;
  std::vector<Moment> moments;
  while (const auto date = dates.Next()) {
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
  const std::int64_t start = *SecondsOf(item.start_time);
  if (item.recurrence.data == nullptr || machine_.DayAt(start) == utc_.DayAt(start)) return false;
  const auto fits = [&item, start](const ItemClock& clock) {
    const icaltimetype time = TimeOfSeconds(clock.WallOf(start));
    return IsFirstDate(RuleValueOf(item.recurrence, time, clock), time);
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
