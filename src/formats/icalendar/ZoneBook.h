// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "formats/icalendar/Ical.h"
#include "formats/icalendar/ItemZone.h"

namespace pim {

// The zones that a text names: its own VTIMEZONEs, and the system's.
class ZoneBook {
 public:
  // One that isn't understood stays unknown.
  void Take(std::string_view component);
  // Null for an unknown one. Names that begin with another program's mark, and those that Windows
  // has for the largest zones, are known too.
  icaltimezone* Find(const std::string& name) const;
  icaltimezone* MachineZone();

  // The zone of times that name none; null where the text tells none, so that these are anybody's.
  icaltimezone* floating() const { return floating_; }
  // Whether they may stay local where it is null.
  bool keepsLocal() const { return keepsLocal_; }
  void SetFloating(icaltimezone* zone) { floating_ = zone; }
  void SetKeepsLocal(bool keepsLocal) { keepsLocal_ = keepsLocal; }

 private:
  std::map<std::string, IcalOwner<icaltimezone>, std::less<>> zones_;
  std::optional<ItemZone> machine_;
  icaltimezone* floating_ = nullptr;
  bool keepsLocal_ = true;
};

}  // namespace pim
