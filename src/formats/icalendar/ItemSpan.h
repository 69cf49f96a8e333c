// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>

#include "formats/FormatLoss.h"
#include "formats/icalendar/Ical.h"
#include "formats/icalendar/ItemAlarm.h"
#include "formats/icalendar/ItemZone.h"
#include "pim/records/Calendar.h"

namespace pim {

// Adds the dates of items to their components.
class ItemSpan {
 public:
  // All of them must outlive this; `zone` may be null.
  ItemSpan(const CCalendar& item, const ItemZone* zone, icalcomponent* component,
           const TellFormatLoss& tell);

  // DTSTART, DTEND and DUE, or what stands for them.
  void AddDates();

  // What DTSTART says; nothing without one.
  const std::optional<icaltimetype>& start() const { return start_; }
  const AlarmAnchors& anchors() const { return anchors_; }
  // A property of that time, under its zone's name where it has one.
  void Add(icalproperty* property, const icaltimetype& time);

 private:
  std::optional<icaltimetype> UtcOf(const COleDateTimeNull& value, const char* field) const;
  std::optional<icaltimetype> DayOf(const COleDateTimeNull& value, const char* field) const;
  icaltimetype Zoned(const icaltimetype& utc) const;
  void AddStart(const icaltimetype& time, const std::optional<icaltimetype>& utc);
  void AddDue(const icaltimetype& time, const icaltimetype& utc);
  void AddDateOwn(const char* name, const icaltimetype& time);

  void AddDays(const icaltimetype& day);
  void AddTimes();
  void AddFallbackStart();
  // Of a to-do whose start is `first`, or has none.
  void AddTodoDates(const std::optional<icaltimetype>& first);

  const CCalendar& item_;
  const ItemZone* zone_;
  icalcomponent* component_;
  const TellFormatLoss& tell_;
  icalcomponent_kind kind_;
  std::optional<icaltimetype> start_;
  AlarmAnchors anchors_;
};

}  // namespace pim
