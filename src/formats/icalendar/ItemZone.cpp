// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/icalendar/ItemZone.h"

#include <cmath>
#include <cstdio>

#include "formats/Uuid.h"
#include "formats/icalendar/ItemText.h"
#include "pim/manager/TypeWords.h"
#include "support/DateTimeText.h"

namespace pim {
namespace {

constexpr int kMinute = 60;
constexpr int kHour = 60 * kMinute;
constexpr int kDay = 24 * kHour;

// In seconds; nothing where it is no offset of whole minutes and less than a day.
std::optional<int> OffsetOf(const COleDateTimeSpan& span) {
  if (span.status != StatusValid || !(std::fabs(span.value) < 1)) return std::nullopt;
  const auto seconds = static_cast<int>(std::lround(span.value * kDay));
  if (seconds % kMinute != 0 || std::abs(seconds) >= kDay) return std::nullopt;
  return seconds;
}

// +HH:MM
std::string OffsetText(int seconds) {
  char text[8];
  const int size = std::snprintf(text, sizeof text, "%c%02d:%02d", seconds < 0 ? '-' : '+',
                                 std::abs(seconds) / kHour % 24, std::abs(seconds) / kMinute % 60);
  return {text, static_cast<std::size_t>(size)};
}

bool HasDaylight(const CCalendarZone& zone) {
  return OffsetOf(zone.daylightOffset) && zone.daylightStart.GetFields() &&
         zone.daylightEnd.GetFields();
}

// The weekday of the month on which a change comes back each year: the last one, or one from the
// month's start.
std::string YearlyRuleOf(const icaltimetype& change) {
  constexpr int kWeek = 7;
  const bool isLast = change.day + kWeek > icaltime_days_in_month(change.month, change.year);
  const int position = isLast ? -1 : (change.day - 1) / kWeek + 1;
  return "FREQ=YEARLY;BYMONTH=" + std::to_string(change.month) +
         ";BYDAY=" + std::to_string(position) +
         std::string(WeekdayWord(icaltime_day_of_week(change) - 1));
}

void Add(icalcomponent* component, icalproperty* property) {
  icalcomponent_add_property(component, Made(property));
}

// What begins at a moment, given in the local time that ends then, or has held ever since without
// one.
struct Observance {
  icalcomponent_kind kind;
  int from;
  int to;
  const WideText& name;
  std::optional<icaltimetype> utc;
};

void AddObservance(icalcomponent* zone, const Observance& observance) {
  icalcomponent* const part = Made(icalcomponent_new(observance.kind));
  icalcomponent_add_component(zone, part);
  icaltimetype begin = icaltime_from_string("16010101T000000");
  if (observance.utc) {
    begin = *observance.utc;
    begin.zone = nullptr;
    icaltime_adjust(&begin, 0, 0, 0, observance.from);
    Add(part, icalproperty_new_rrule(icalrecurrencetype_from_string(YearlyRuleOf(begin).c_str())));
  }
  Add(part, icalproperty_new_dtstart(begin));
  Add(part, icalproperty_new_tzoffsetfrom(observance.from));
  Add(part, icalproperty_new_tzoffsetto(observance.to));
  if (!observance.name.empty())
    Add(part, icalproperty_new_tzname(ItemText(observance.name).text.c_str()));
}

// Unlike zones have unlike names, whatever the machine.
std::string ZoneName(const CCalendarZone& zone, int offset) {
  constexpr std::size_t kMark = 8;
  const std::string name = "UTC" + OffsetText(offset);
  if (!HasDaylight(zone) && zone.standardName.empty()) return name;
  UuidMaker mark;
  mark.Add(DaylightValueOf(zone));
  mark.Add(zone.standardName.view());
  mark.Add(zone.daylightName.view());
  return name + "/" + mark.Text().substr(0, kMark);
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

std::optional<ItemZone> ItemZone::Of(const CCalendarZone& zone) {
  const auto offset = OffsetOf(zone.tzOffset);
  const bool hasDaylight = HasDaylight(zone);
  if (!offset || (*offset == 0 && !hasDaylight)) return std::nullopt;
  std::string name = ZoneName(zone, *offset);
  IcalOwner<icalcomponent> component(Made(icalcomponent_new(ICAL_VTIMEZONE_COMPONENT)));
  Add(component.get(), icalproperty_new_tzid(name.c_str()));
  AddObservance(component.get(),
                {ICAL_XSTANDARD_COMPONENT, *offset, *offset, zone.standardName, {}});
  if (hasDaylight) {
    const int daylight = *OffsetOf(zone.daylightOffset);
    AddObservance(component.get(), {ICAL_XDAYLIGHT_COMPONENT, *offset, daylight, zone.daylightName,
                                    IcalUtc(zone.daylightStart)});
    AddObservance(component.get(), {ICAL_XSTANDARD_COMPONENT, daylight, *offset, zone.standardName,
                                    IcalUtc(zone.daylightEnd)});
  }
  IcalOwner<icaltimezone> made(Made(icaltimezone_new()));
  if (icaltimezone_set_component(made.get(), component.get()) == 0) return std::nullopt;
  component.release();  // NOLINT(bugprone-unused-return-value): the zone owns it
  return ItemZone(std::move(name), std::move(made));
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

}  // namespace pim
