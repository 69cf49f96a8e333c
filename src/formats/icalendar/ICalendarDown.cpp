// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/icalendar/ICalendarDown.h"

#include "formats/icalendar/Ical.h"

namespace pim {

struct ICalendarDown::State {};

ICalendarDown::ICalendarDown() : state_(std::make_unique<State>()) { PrepareIcal(); }
ICalendarDown::~ICalendarDown() = default;

void ICalendarDown::TakeZone(std::string_view) {}

std::vector<std::string> ICalendarDown::UnknownZones(std::string_view) const { return {}; }

void ICalendarDown::Convert(std::string_view, const TellFormatLoss&, std::string& out) {
  out.clear();
}

}  // namespace pim
