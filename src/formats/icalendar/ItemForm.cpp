// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <set>

#include "formats/icalendar/ItemComponent.h"
#include "formats/icalendar/ItemForms.h"
#include "formats/icalendar/RuleDates.h"
#include "formats/icalendar/RuleText.h"

namespace pim {
namespace {

constexpr std::string_view kHead =
    "BEGIN:VCALENDAR\r\n"
    "VERSION:2.0\r\n"
    "PRODID:-//PimVobjMgr//pimvobj//EN\r\n"
    "CALSCALE:GREGORIAN\r\n";
constexpr std::string_view kTail = "END:VCALENDAR\r\n";

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

class ICalendarForm final : public ItemForm {
 public:
  ICalendarForm() { PrepareIcal(); }

  void Begin(std::string& out) override { out.append(kHead); }
  void Append(const CCalendar& item, const TellFormatLoss& tell, std::string& out) override {
    const ItemZone* const zone = ZoneOf(item);
    if (zone != nullptr && written_.insert(zone->name()).second) out.append(zone->Text());
    out.append(IcalTextOf(MakeItemComponent(item, zone, Heard(tell)).get()));
  }
  void End(std::string& out) override { out.append(kTail); }

 private:
  // A text has few zones. In one that has more the times of the others are UTC, so that no more
  // is kept of it.
  static constexpr std::size_t kMostZones = 1'000;

  // Null for an item without times in a zone. Holds until the next call.
  const ItemZone* ZoneOf(const CCalendar& item);
  const ItemZone* ZoneOf(const CCalendarZone& zone);

  CCalendarZone last_;  // the zone of the item before
  std::optional<ItemZone> made_;
  std::optional<ItemZone> machine_;
  bool hasMachine_ = false;
  std::set<std::string> written_;  // the names of those whose text stands
};

const ItemZone* ICalendarForm::ZoneOf(const CCalendar& item) {
  if (item.allday == 1) return nullptr;
  if (!AreOneZone(item.zone, {})) return ZoneOf(item.zone);
  if (item.recurrence.data == nullptr) return nullptr;
  if (!hasMachine_) machine_ = ItemZone::OfMachine();
  hasMachine_ = true;
  return machine_ && IsLocalRule(item, *machine_) ? &*machine_ : nullptr;
}

const ItemZone* ICalendarForm::ZoneOf(const CCalendarZone& zone) {
  if (!AreOneZone(zone, last_)) {
    last_ = zone;
    made_ = ItemZone::Of(zone);
  }
  if (!made_ || (written_.size() >= kMostZones && !written_.contains(made_->name())))
    return nullptr;
  return &*made_;
}

}  // namespace

std::unique_ptr<ItemForm> MakeICalendarForm() { return std::make_unique<ICalendarForm>(); }

}  // namespace pim
