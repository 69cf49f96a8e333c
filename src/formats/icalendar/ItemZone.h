// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

#include "formats/icalendar/Ical.h"
#include "pim/records/Calendar.h"

namespace pim {

// A zone of records as a VTIMEZONE: its daylight time comes back each year by the weekdays of the
// months in which it begins and ends.
class ItemZone {
 public:
  // Nothing for a zone that says no more than UTC, or whose offset is none of a day's.
  static std::optional<ItemZone> Of(const CCalendarZone& zone);

  const std::string& name() const { return name_; }  // TZID
  const icaltimezone* zone() const { return zone_.get(); }
  std::string Text() const { return IcalTextOf(icaltimezone_get_component(zone_.get())); }

 private:
  ItemZone(std::string name, IcalOwner<icaltimezone> zone)
      : name_(std::move(name)), zone_(std::move(zone)) {}

  std::string name_;
  IcalOwner<icaltimezone> zone_;
};

// Whether the two are one zone, names included.
bool AreOneZone(const CCalendarZone& a, const CCalendarZone& b);

// The values of vCalendar 1.0's TZ and DAYLIGHT; empty for a zone that says nothing of it, or what
// these can't hold. Names are UTF-8.
std::string OffsetValueOf(const CCalendarZone& zone);
std::string DaylightValueOf(const CCalendarZone& zone);
// Whether the two values give the zone again.
bool HasZoneValues(const CCalendarZone& zone);

}  // namespace pim
