// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/icalendar/ItemSpan.h"

#include "formats/icalendar/OwnWords.h"
#include "support/DateTimeText.h"
#include "support/DateTimeZones.h"

namespace pim {
namespace {

bool IsLater(const icaltimetype& time, const icaltimetype& than) {
  return icaltime_compare(time, than) > 0;
}

// The moment at which a local day begins.
std::optional<icaltimetype> MidnightOf(const icaltimetype& day) {
  return IcalUtc(ConvertDateTime(DateTimeOf(day)));
}

}  // namespace

ItemSpan::ItemSpan(const CCalendar& item, const ItemZone* zone, icalcomponent* component,
                   const TellFormatLoss& tell)
    : item_(item),
      zone_(zone),
      component_(component),
      tell_(tell),
      kind_(icalcomponent_isa(component)) {}

void ItemSpan::AddDates() {
  if (item_.allday == 1) {
    if (const auto day = DayOf(item_.start_time, "start_time")) return AddDays(*day);
  }
  if (item_.allday != 0) tell_({"allday", FormatVerdict::Changed, FormatReason::BadValue});
  AddTimes();
}

std::optional<icaltimetype> ItemSpan::UtcOf(const COleDateTimeNull& value,
                                            const char* field) const {
  const auto time = IcalUtc(value);
  if (!time && value.status != StatusNull)
    tell_({field, FormatVerdict::Dropped, FormatReason::BadValue});
  return time;
}

// The machine's local day that begins then.
std::optional<icaltimetype> ItemSpan::DayOf(const COleDateTimeNull& value,
                                            const char* field) const {
  const auto utc = UtcOf(value, field);
  const auto local = UtcToLocal(value).GetFields();
  if (!utc || !local) return std::nullopt;
  icaltimetype day = IcalDay(*local);
  auto midnight = MidnightOf(day);
  if (midnight && icaltime_compare(*midnight, *utc) != 0) {
    // It begins without a midnight where the clock is put forward then.
    const icaltimetype next = OnDay(day, DayNumberOf(day) + 1);
    const auto begin = MidnightOf(next);
    if (begin && icaltime_compare(*begin, *utc) == 0) {
      day = next;
      midnight = begin;
    }
  }
  if (!midnight || icaltime_compare(*midnight, *utc) != 0)
    tell_({field, FormatVerdict::Changed, FormatReason::TimeDropped});
  return day;
}

// In the item's zone, but for a time that comes twice there and would be read as the other one.
icaltimetype ItemSpan::Zoned(const icaltimetype& utc) const {
  if (zone_ == nullptr || utc.is_date != 0) return utc;
  auto* const zone = const_cast<icaltimezone*>(zone_->zone());
  const icaltimetype local = icaltime_convert_to_zone(utc, zone);
  const icaltimetype back = icaltime_convert_to_zone(local, icaltimezone_get_utc_timezone());
  return icaltime_compare(back, utc) == 0 && IcalUtc(DateTimeOf(local)) ? local : utc;
}

void ItemSpan::Add(icalproperty* property, const icaltimetype& time) {
  icalcomponent_add_property(component_, Made(property));
  const bool isZoned = zone_ != nullptr && time.is_date == 0 && icaltime_is_utc(time) == 0;
  if (isZoned)
    icalproperty_set_parameter(property, Made(icalparameter_new_tzid(zone_->name().c_str())));
}

void ItemSpan::AddStart(const icaltimetype& time, const std::optional<icaltimetype>& utc) {
  start_ = Zoned(time);
  anchors_.start = utc;
  Add(icalproperty_new_dtstart(*start_), *start_);
}

void ItemSpan::AddDue(const icaltimetype& time, const icaltimetype& utc) {
  const icaltimetype zoned = Zoned(time);
  anchors_.due = utc;
  Add(icalproperty_new_due(zoned), zoned);
}

void ItemSpan::AddDateOwn(const char* name, const icaltimetype& time) {
  const COleDateTime value = DateTimeOf(time);
  AddOwn(component_, name,
         time.is_date != 0 ? std::string(DateTimeText(value).AddDate().view()) : UtcText(value));
}

void ItemSpan::AddDays(const icaltimetype& day) {
  if (kind_ == ICAL_VTODO_COMPONENT) {
    AddTodoDates(day);
  } else {
    AddStart(day, MidnightOf(day));
    if (const auto due = UtcOf(item_.due, "due")) AddDateOwn(kOwnDue, *due);
  }
  const auto last = DayOf(item_.end_time, "end_time");
  if (!last) {
    if (item_.end_time.status == StatusNull)
      tell_({"end_time", FormatVerdict::Changed, FormatReason::BadValue});
    return;
  }
  icaltimetype behind = *last;
  icaltime_adjust(&behind, 1, 0, 0, 0);
  const bool isSaid = kind_ == ICAL_VEVENT_COMPONENT && !IsLater(day, *last) &&
                      DateTimeOf(behind).status == StatusValid;
  if (isSaid) {
    Add(icalproperty_new_dtend(behind), behind);
  } else {
    AddDateOwn(kOwnEnd, *last);
  }
}

void ItemSpan::AddTimes() {
  const auto first = UtcOf(item_.start_time, "start_time");
  if (kind_ == ICAL_VTODO_COMPONENT) {
    AddTodoDates(first);
  } else {
    if (first) {
      AddStart(*first, *first);
    } else if (kind_ == ICAL_VEVENT_COMPONENT) {
      AddFallbackStart();
    }
    if (const auto due = UtcOf(item_.due, "due")) AddDateOwn(kOwnDue, *due);
  }
  const auto end = UtcOf(item_.end_time, "end_time");
  if (!end) return;
  if (kind_ == ICAL_VEVENT_COMPONENT && first && IsLater(*end, *first)) {
    const icaltimetype zoned = Zoned(*end);
    Add(icalproperty_new_dtend(zoned), zoned);
  } else {
    AddDateOwn(kOwnEnd, *end);
  }
}

// An event has to begin at some time: the first other one that it names.
void ItemSpan::AddFallbackStart() {
  tell_({"start_time", FormatVerdict::Changed, FormatReason::BadValue});
  icaltimetype time = icaltime_from_timet_with_zone(0, 0, icaltimezone_get_utc_timezone());
  for (const COleDateTimeNull* other :
       {&item_.end_time, &item_.due, &item_.reminder.alarm_date, &item_.completed,
        &item_.created_time, &item_.modified_time, &item_.xmodified_time}) {
    if (const auto utc = IcalUtc(*other)) {
      time = *utc;
      break;
    }
  }
  AddStart(time, time);
}

// DUE has to be later than DTSTART, and a day where that is one. Where both can't stand the due
// time tells people more, but a rule counts from the start.
void ItemSpan::AddTodoDates(const std::optional<icaltimetype>& first) {
  const auto due = UtcOf(item_.due, "due");
  const auto utc = first && first->is_date != 0 ? MidnightOf(*first) : first;
  if (!due || (first && item_.recurrence.data != nullptr)) {
    if (first) AddStart(*first, utc);
  }
  if (!due) return;
  icaltimetype said = *due;
  if (first && first->is_date != 0) {
    const auto local = UtcToLocal(DateTimeOf(*due)).GetFields();
    const auto midnight = local ? MidnightOf(IcalDay(*local)) : std::nullopt;
    if (midnight && icaltime_compare(*midnight, *due) == 0) said = IcalDay(*local);
  }
  const bool isPair = first && said.is_date == first->is_date && IsLater(said, *first);
  if (isPair && !start_) AddStart(*first, utc);
  if (start_ && !isPair) {
    AddDateOwn(kOwnDue, *due);
    return;
  }
  if (first && !start_) {
    AddDateOwn(kOwnStart, *first);
    said = *due;
  }
  AddDue(said, *due);
}

}  // namespace pim
