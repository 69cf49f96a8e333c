// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <set>

#include "formats/icalendar/ItemComponent.h"
#include "formats/icalendar/ItemForms.h"

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
    const ItemZone* const zone = item.allday == 1 ? nullptr : TakeZone(item.zone, out);
    out.append(IcalTextOf(MakeItemComponent(item, zone, tell).get()));
  }
  void End(std::string& out) override { out.append(kTail); }

 private:
  // A text has few zones. In one that has more the times of the others are UTC, so that no more
  // is kept of it.
  static constexpr std::size_t kMostZones = 1'000;

  // The item's zone, whose text is appended when it is new; null without one.
  const ItemZone* TakeZone(const CCalendarZone& zone, std::string& out);

  CCalendarZone last_;  // the zone of the item before
  std::optional<ItemZone> made_;
  std::set<std::string> written_;  // the names of those whose text stands
};

const ItemZone* ICalendarForm::TakeZone(const CCalendarZone& zone, std::string& out) {
  if (!AreOneZone(zone, last_)) {
    made_.reset();
    last_ = zone;
    made_ = ItemZone::Of(zone);
    if (made_ && !written_.contains(made_->name())) {
      if (written_.size() == kMostZones) {
        made_.reset();
      } else {
        written_.insert(made_->name());
        out.append(made_->Text());
      }
    }
  }
  return made_ ? &*made_ : nullptr;
}

}  // namespace

std::unique_ptr<ItemForm> MakeICalendarForm() { return std::make_unique<ICalendarForm>(); }

}  // namespace pim
