// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/icalendar/Ical.h"
#include "formats/icalendar/ItemForms.h"
#include "pim/Version.h"
#include "pim/platform/Encoding.h"

namespace pim {
namespace {

class ICalendarForm final : public ItemForm {
 public:
  ICalendarForm() { PrepareIcal(); }
  void Begin(std::string& out) override {
    out.append(
        "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//PimVobjMgr//pimvobj//"
        "EN\r\nCALSCALE:GREGORIAN\r\n");
  }
  void Append(const CCalendar& item, const TellFormatLoss&, std::string& out) override {
    IcalOwner<icalcomponent> component(Made(icalcomponent_new(ICAL_VEVENT_COMPONENT)));
    icalcomponent_add_property(component.get(),
                               Made(icalproperty_new_summary(Utf8FromWide(item.summary).c_str())));
    out.append(IcalTextOf(component.get()));
  }
  void End(std::string& out) override { out.append("END:VCALENDAR\r\n"); }
};

}  // namespace

std::unique_ptr<ItemForm> MakeICalendarForm() { return std::make_unique<ICalendarForm>(); }

}  // namespace pim
