// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

#include "formats/icalendar/Ical.h"
#include "pim/records/Calendar.h"

namespace pim {

// A zone as a VTIMEZONE.
class ItemZone {
 public:
  // A record's, whose daylight time comes back each year by the weekdays of the months in which it
  // begins and ends. Nothing for one that says no more than UTC, or whose offset is none of a
  // day's.
  static std::optional<ItemZone> Of(const CCalendarZone& zone);
  // The machine's; nothing where that is UTC.
  static std::optional<ItemZone> OfMachine();

  const std::string& name() const { return name_; }  // TZID
  const icaltimezone* zone() const { return zone_.get(); }
  bool isMachines() const { return isMachines_; }
  std::string Text() const { return IcalTextOf(icaltimezone_get_component(zone_.get())); }

 private:
  ItemZone(std::string name, IcalOwner<icaltimezone> zone)
      : name_(std::move(name)), zone_(std::move(zone)) {}
  static std::optional<ItemZone> Made(std::string name, IcalOwner<icalcomponent> component);

  std::string name_;
  IcalOwner<icaltimezone> zone_;
  bool isMachines_ = false;
};

// In seconds; nothing where it is no offset of whole minutes and less than a day.
std::optional<int> OffsetOf(const COleDateTimeSpan& span);
bool HasDaylight(const CCalendarZone& zone);
// Which weekday of its month a day is, from 1; -1 for the last one.
int WeekOfMonth(const icaltimetype& day);

// Whether the two are one zone, names included.
bool AreOneZone(const CCalendarZone& a, const CCalendarZone& b);

// The values of vCalendar 1.0's TZ and DAYLIGHT; empty for a zone that says nothing of it, or what
// these can't hold. Names are UTF-8.
std::string OffsetValueOf(const CCalendarZone& zone);
std::string DaylightValueOf(const CCalendarZone& zone);
// Whether the two values give the zone again.
bool HasZoneValues(const CCalendarZone& zone);

// What a record has of a zone for the time around a moment, which is in UTC; without names.
CCalendarZone ZoneAround(icaltimezone* zone, const icaltimetype& moment);

}  // namespace pim
