// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/icalendar/ZonesOfItems.h"

#include "formats/icalendar/RuleDates.h"
#include "formats/icalendar/RuleText.h"

namespace pim {
namespace {

// Whether an item's rule names its day by the machine's clock alone: texts with local times have
// such rules, and records don't tell any more.
bool IsLocalRule(const CCalendar& item, const ItemZone& machine) {
  const RecurrenceData* const rule = item.recurrence.GetRecurrenceData();
  const auto start = IcalUtc(item.start_time);
  if (rule == nullptr || !start || IsFirstDate(RRuleOf(*rule, *start).text, *start)) return false;
  const icaltimetype local =
      icaltime_convert_to_zone(*start, const_cast<icaltimezone*>(machine.zone()));
  return IsFirstDate(RRuleOf(*rule, local).text, local);
}

}  // namespace

const ItemZone* ZonesOfItems::Of(const CCalendar& item) {
  if (item.allday == 1) return nullptr;
  if (!AreOneZone(item.zone, {})) return OfOwn(item.zone);
  if (item.recurrence.data == nullptr) return nullptr;
  if (!hasMachine_) machine_ = ItemZone::OfMachine();
  hasMachine_ = true;
  return machine_ && IsLocalRule(item, *machine_) ? &*machine_ : nullptr;
}

const ItemZone* ZonesOfItems::OfOwn(const CCalendarZone& zone) {
  if (!AreOneZone(zone, last_)) {
    last_ = zone;
    made_ = ItemZone::Of(zone);
  }
  return made_ ? &*made_ : nullptr;
}

}  // namespace pim
