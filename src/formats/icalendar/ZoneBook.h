// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "formats/icalendar/Ical.h"

namespace pim {

// The zones that a text names: its own VTIMEZONEs, and the system's.
class ZoneBook {
 public:
  // One that isn't understood stays unknown.
  void Take(std::string_view component);
  // Null for an unknown one. Names that begin with another program's mark, and those that Windows
  // has for the largest zones, are known too.
  icaltimezone* Find(const std::string& name) const;

 private:
  std::map<std::string, IcalOwner<icaltimezone>, std::less<>> zones_;
};

}  // namespace pim
