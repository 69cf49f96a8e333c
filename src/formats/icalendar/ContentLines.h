// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "formats/icalendar/Ical.h"

namespace pim {

// One property of a text of iCalendar 2.0, its folds undone and its NULs gone.
struct ContentLine {
  std::string text;
  std::size_t line = 0;   // its first physical line, from 0
  std::size_t depth = 0;  // 1 directly inside the outermost component
  bool hasNul = false;

  // As it stands ahead of the parameters and the value; all of a text without these.
  std::string_view Name() const;
  // Behind the colon that ends the name and its parameters; empty without one.
  std::string_view Value() const;
};

// The properties of one component and of those inside it, BEGIN and END among them, which have the
// depth of their component's inside. Ends with the END of the outermost one.
std::vector<ContentLine> ContentLinesOf(std::string_view component);

// The texts of a property's value, which commas part, their escapes undone; and the value as one
// text, commas or not.
std::vector<std::string> TextsOf(const ContentLine& line);
std::string TextOfLine(const ContentLine& line);
// The name in its TZID; empty without one.
std::string ZoneNameOf(const ContentLine& line);
// Whether its RELATED names the item's end.
bool CountsFromEnd(const ContentLine& line);

}  // namespace pim
