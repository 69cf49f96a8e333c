// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <set>

#include "formats/icalendar/ItemComponent.h"
#include "formats/icalendar/ItemForms.h"
#include "formats/icalendar/ZonesOfItems.h"

namespace pim {
namespace {

constexpr std::string_view kHead =
    "BEGIN:VCALENDAR\r\n"
    "VERSION:2.0\r\n"
    "PRODID:-//PimVobjMgr//pimvobj//EN\r\n"
    "CALSCALE:GREGORIAN\r\n";
constexpr std::string_view kTail = "END:VCALENDAR\r\n";

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

  ZonesOfItems zones_;
  std::set<std::string> written_;  // the names of those whose text stands
};

const ItemZone* ICalendarForm::ZoneOf(const CCalendar& item) {
  const ItemZone* const zone = zones_.Of(item);
  const bool isTooMany = zone != nullptr && !zone->isMachines() && written_.size() >= kMostZones &&
                         !written_.contains(zone->name());
  return isTooMany ? nullptr : zone;
}

}  // namespace

std::unique_ptr<ItemForm> MakeICalendarForm() { return std::make_unique<ICalendarForm>(); }

}  // namespace pim
