// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/icalendar/ItemZone.h"

#include <cmath>
#include <cstdio>

#include "formats/Uuid.h"
#include "formats/icalendar/ItemText.h"
#include "pim/manager/TypeWords.h"
#include "platform/ZoneChanges.h"
#include "platform/ZoneRecord.h"
#include "support/DateTimeText.h"

namespace pim {
namespace {

constexpr int kMinute = 60;
constexpr int kHour = 60 * kMinute;
constexpr int kDay = 24 * kHour;

// +HH:MM, or with another mark than the colon.
std::string OffsetText(int seconds, const char* mark = ":") {
  char text[8];
  const int size =
      std::snprintf(text, sizeof text, "%c%02d%s%02d", seconds < 0 ? '-' : '+',
                    std::abs(seconds) / kHour % 24, mark, std::abs(seconds) / kMinute % 60);
  return {text, static_cast<std::size_t>(size)};
}

// Of a zone's name, which may hold no colon (RFC 5545, 3.2.19).
std::string NameOfOffset(int seconds) { return "UTC" + OffsetText(seconds, ""); }

// The weekday of the month on which a change comes back each year.
std::string YearlyRuleOf(const icaltimetype& change) {
  return "FREQ=YEARLY;BYMONTH=" + std::to_string(change.month) +
         ";BYDAY=" + std::to_string(WeekOfMonth(change)) +
         std::string(WeekdayWord(icaltime_day_of_week(change) - 1));
}

void Add(icalcomponent* component, icalproperty* property) {
  icalcomponent_add_property(component, Made(property));
}

// What begins at a local time, by the clock as it is then, and comes back by the rule; or has held
// ever since, without one.
struct Observance {
  icalcomponent_kind kind;
  int from;
  int to;
  std::string name;
  icaltimetype begin = icaltime_from_string("16010101T000000");
  std::string rule = {};
};

void AddObservance(icalcomponent* zone, const Observance& observance) {
  icalcomponent* const part = Made(icalcomponent_new(observance.kind));
  icalcomponent_add_component(zone, part);
  if (!observance.rule.empty())
    Add(part, icalproperty_new_rrule(icalrecurrencetype_from_string(observance.rule.c_str())));
  Add(part, icalproperty_new_dtstart(observance.begin));
  Add(part, icalproperty_new_tzoffsetfrom(observance.from));
  Add(part, icalproperty_new_tzoffsetto(observance.to));
  if (!observance.name.empty()) Add(part, icalproperty_new_tzname(observance.name.c_str()));
}

// A change that comes back each year.
Observance ChangeAt(const COleDateTime& utc, icalcomponent_kind kind, int from, int to,
                    const WideText& name) {
  icaltimetype begin = *IcalUtc(utc);
  begin.zone = nullptr;
  icaltime_adjust(&begin, 0, 0, 0, from);
  return {kind, from, to, ItemText(name).text, begin, YearlyRuleOf(begin)};
}

// The same of the machine's zone.
Observance ChangeOf(const SYSTEMTIME& date, icalcomponent_kind kind, int from, int to) {
  constexpr std::uint16_t kFirstYear = 1970;
  constexpr std::uint16_t kLast = 5;
  Observance change{kind, from, to, {}};
  SYSTEMTIME time;
  const auto seconds = ZoneChangeInYear(date, kFirstYear);
  if (!seconds || !SystemTimeFromSeconds(*seconds, time)) return change;
  change.begin = IcalTime({time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, 0}, false);
  change.rule = "FREQ=YEARLY;BYMONTH=" + std::to_string(date.wMonth) +
                ";BYDAY=" + (date.wDay == kLast ? "-1" : std::to_string(date.wDay)) +
                std::string(WeekdayWord(date.wDayOfWeek));
  return change;
}

IcalOwner<icalcomponent> NewZone(const std::string& name) {
  IcalOwner<icalcomponent> component(Made(icalcomponent_new(ICAL_VTIMEZONE_COMPONENT)));
  Add(component.get(), icalproperty_new_tzid(name.c_str()));
  return component;
}

// Unlike zones have unlike names, whatever the machine.
std::string ZoneName(const CCalendarZone& zone, int offset) {
  constexpr std::size_t kMark = 8;
  std::string name = NameOfOffset(offset);
  if (!HasDaylight(zone) && zone.standardName.empty()) return name;
  UuidMaker mark;
  mark.Add(DaylightValueOf(zone));
  mark.Add(zone.standardName.view());
  mark.Add(zone.daylightName.view());
  return name + "/" + mark.Text().substr(0, kMark);
}

// The first second of the week behind `from` at which the clock isn't any more as it is there.
icaltimetype ChangeBetween(icaltimezone* zone, const icaltimetype& from, int isDaylight) {
  int low = 0;
  int high = kDaysOfWeek * kDay;
  while (high - low > 1) {
    const int middle = (low + high) / 2;
    icaltimetype time = from;
    icaltime_adjust(&time, 0, 0, 0, middle);
    int now = 0;
    icaltimezone_get_utc_offset_of_utc_time(zone, &time, &now);
    (now == isDaylight ? low : high) = middle;
  }
  icaltimetype change = from;
  icaltime_adjust(&change, 0, 0, 0, high);
  return change;
}

bool IsDaylightSaid(const CCalendarZone& zone) {
  return zone.daylightStart.status != StatusNull || zone.daylightEnd.status != StatusNull ||
         !zone.standardName.empty() || !zone.daylightName.empty() ||
         zone.daylightOffset.value != 0 || zone.daylightOffset.status != StatusValid;
}

bool IsOneSpan(const COleDateTimeSpan& a, const COleDateTimeSpan& b) {
  return a.status == b.status && a.value == b.value;
}

bool IsOneDate(const COleDateTime& a, const COleDateTime& b) {
  return a == b || (a.status == StatusInvalid && b.status == StatusInvalid);
}

// A semicolon would end it.
bool IsNameForValue(const WideText& name) {
  return name.view().find(u';') == WideStringView::npos && !ItemText(name).loss;
}

bool IsWholeMinute(const COleDateTime& date) {
  const auto fields = date.GetFields();
  return fields && fields->second == 0;
}

}  // namespace

std::optional<int> OffsetOf(const COleDateTimeSpan& span) {
  if (span.status != StatusValid || !(std::fabs(span.value) < 1)) return std::nullopt;
  const auto seconds = static_cast<int>(std::lround(span.value * kDay));
  if (seconds % kMinute != 0 || std::abs(seconds) >= kDay) return std::nullopt;
  return seconds;
}

bool HasDaylight(const CCalendarZone& zone) {
  return OffsetOf(zone.daylightOffset) && zone.daylightStart.GetFields() &&
         zone.daylightEnd.GetFields();
}

int WeekOfMonth(const icaltimetype& day) {
  const bool isLast = day.day + kDaysOfWeek > icaltime_days_in_month(day.month, day.year);
  return isLast ? -1 : (day.day - 1) / kDaysOfWeek + 1;
}

std::optional<ItemZone> ItemZone::Made(std::string name, IcalOwner<icalcomponent> component) {
  IcalOwner<icaltimezone> zone(pim::Made(icaltimezone_new()));
  if (icaltimezone_set_component(zone.get(), component.get()) == 0) return std::nullopt;
  component.release();  // NOLINT(bugprone-unused-return-value): the zone owns it
  return ItemZone(std::move(name), std::move(zone));
}

std::optional<ItemZone> ItemZone::Of(const CCalendarZone& zone) {
  const auto offset = OffsetOf(zone.tzOffset);
  const bool hasDaylight = HasDaylight(zone);
  if (!offset || (*offset == 0 && !hasDaylight)) return std::nullopt;
  std::string name = ZoneName(zone, *offset);
  IcalOwner<icalcomponent> component = NewZone(name);
  AddObservance(component.get(),
                {ICAL_XSTANDARD_COMPONENT, *offset, *offset, ItemText(zone.standardName).text});
  if (hasDaylight) {
    const int daylight = *OffsetOf(zone.daylightOffset);
    AddObservance(component.get(), ChangeAt(zone.daylightStart, ICAL_XDAYLIGHT_COMPONENT, *offset,
                                            daylight, zone.daylightName));
    AddObservance(component.get(), ChangeAt(zone.daylightEnd, ICAL_XSTANDARD_COMPONENT, daylight,
                                            *offset, zone.standardName));
  }
  return Made(std::move(name), std::move(component));
}

std::optional<ItemZone> ItemZone::OfMachine() {
  TIME_ZONE_INFORMATION machine;
  GetTimeZoneInformation(machine);
  const bool hasDaylight = machine.StandardDate.wMonth != 0 && machine.DaylightDate.wMonth != 0;
  const int standard = -(machine.Bias + (hasDaylight ? machine.StandardBias : 0)) * kMinute;
  const int daylight = -(machine.Bias + machine.DaylightBias) * kMinute;
  if (standard == 0 && !hasDaylight) return std::nullopt;
  std::string name = NameOfOffset(standard);
  if (hasDaylight) name += OffsetText(daylight, "");
  IcalOwner<icalcomponent> component = NewZone(name);
  AddObservance(component.get(), {ICAL_XSTANDARD_COMPONENT, standard, standard, {}});
  if (hasDaylight) {
    AddObservance(component.get(),
                  ChangeOf(machine.DaylightDate, ICAL_XDAYLIGHT_COMPONENT, standard, daylight));
    AddObservance(component.get(),
                  ChangeOf(machine.StandardDate, ICAL_XSTANDARD_COMPONENT, daylight, standard));
  }
  auto zone = Made(std::move(name), std::move(component));
  if (zone) zone->isMachines_ = true;
  return zone;
}

bool AreOneZone(const CCalendarZone& a, const CCalendarZone& b) {
  return IsOneSpan(a.tzOffset, b.tzOffset) && IsOneSpan(a.daylightOffset, b.daylightOffset) &&
         IsOneDate(a.daylightStart, b.daylightStart) && IsOneDate(a.daylightEnd, b.daylightEnd) &&
         a.standardName == b.standardName && a.daylightName == b.daylightName;
}

std::string OffsetValueOf(const CCalendarZone& zone) {
  const auto offset = OffsetOf(zone.tzOffset);
  return offset && *offset != 0 ? OffsetText(*offset) : std::string();
}

std::string DaylightValueOf(const CCalendarZone& zone) {
  const auto offset = OffsetOf(zone.daylightOffset);
  if (!IsDaylightSaid(zone) || !offset) return {};
  std::string value = "TRUE;" + OffsetText(*offset);
  for (const COleDateTimeNull* date : {&zone.daylightStart, &zone.daylightEnd}) {
    value.append(1, ';');
    // Something has to stand there, else the next part is taken for it.
    value.append(date->status == StatusNull
                     ? NarrowStringView("0")
                     : DateTimeText(*date).AddDate().AddMinutes().Add("00Z").view());
  }
  for (const WideText* name : {&zone.standardName, &zone.daylightName})
    if (!name->empty()) value.append(1, ';').append(ItemText(*name).text);
  return value;
}

bool HasZoneValues(const CCalendarZone& zone) {
  // A sign is that of the hours.
  const auto reads = [](const COleDateTimeSpan& span) {
    const auto offset = OffsetOf(span);
    return offset && (*offset >= 0 || *offset <= -kHour);
  };
  const auto isGood = [](const COleDateTime& date) {
    return date.status == StatusNull || IsWholeMinute(date);
  };
  return reads(zone.tzOffset) && reads(zone.daylightOffset) && isGood(zone.daylightStart) &&
         isGood(zone.daylightEnd) && IsNameForValue(zone.standardName) &&
         IsNameForValue(zone.daylightName) &&
         !(zone.standardName.empty() && !zone.daylightName.empty());
}

CCalendarZone ZoneAround(icaltimezone* zone, const icaltimetype& moment) {
  constexpr int kDays = 366;
  // The summer that comes next may end later in its year than this one.
  constexpr int kDaysAhead = kDays + 31;
  CCalendarZone around;
  icaltimetype time = moment;
  icaltime_adjust(&time, -kDays, 0, 0, 0);
  int isDaylight = 0;
  int offset = icaltimezone_get_utc_offset_of_utc_time(zone, &time, &isDaylight);
  if (isDaylight == 0) around.tzOffset.SetDateTimeSpan(0, 0, 0, offset);
  for (int day = -kDays; day < kDaysAhead; day += kDaysOfWeek) {
    const int before = isDaylight;
    const icaltimetype from = time;
    icaltime_adjust(&time, kDaysOfWeek, 0, 0, 0);
    offset = icaltimezone_get_utc_offset_of_utc_time(zone, &time, &isDaylight);
    if (isDaylight == before) continue;
    const icaltimetype change = ChangeBetween(zone, from, before);
    if (isDaylight == 0) {
      around.tzOffset.SetDateTimeSpan(0, 0, 0, offset);
      if (around.daylightStart.status == StatusValid) around.daylightEnd = DateTimeOf(change);
      // Of two summers the one that holds the moment, or comes next.
      if (around.daylightEnd.status == StatusValid && icaltime_compare(change, moment) > 0) break;
    } else {
      around.daylightOffset.SetDateTimeSpan(0, 0, 0, offset);
      around.daylightStart = DateTimeOf(change);
      around.daylightEnd = {};
    }
  }
  if (around.daylightEnd.status == StatusValid) return around;
  // No summer, or one without an end.
  around.daylightOffset = {};
  around.daylightStart = {};
  return around;
}

}  // namespace pim
