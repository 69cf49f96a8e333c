// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/icalendar/ICalendarDown.h"

#include <set>

#include "formats/icalendar/ContentLines.h"
#include "formats/icalendar/ItemDown.h"
#include "formats/icalendar/ZoneBook.h"

namespace pim {

struct ICalendarDown::State {
  ZoneBook zones;
};

ICalendarDown::ICalendarDown() : state_(std::make_unique<State>()) { PrepareIcal(); }
ICalendarDown::~ICalendarDown() = default;

void ICalendarDown::TakeZone(std::string_view component) { state_->zones.Take(component); }

std::vector<std::string> ICalendarDown::UnknownZones(std::string_view component) const {
  std::set<std::string> names;
  for (const ContentLine& line : ContentLinesOf(component)) {
    if (line.text.find(';') == std::string::npos) continue;
    std::string name = ZoneNameOf(line);
    if (!name.empty() && !Knows(name)) names.insert(std::move(name));
  }
  return {names.begin(), names.end()};
}

bool ICalendarDown::Knows(const std::string& zone) const {
  return state_->zones.Find(zone) != nullptr;
}

bool ICalendarDown::TakeFloatingZone(const std::string& zone) {
  icaltimezone* const known = state_->zones.Find(zone);
  if (known != nullptr) state_->zones.SetFloating(known);
  return known != nullptr;
}

void ICalendarDown::KeepNoLocalTimes() { state_->zones.SetKeepsLocal(false); }

void ICalendarDown::Convert(std::string_view component, const TellFormatLoss& tell,
                            std::string& out) {
  ItemToVCalendar(component, state_->zones, Heard(tell), out);
}

}  // namespace pim
