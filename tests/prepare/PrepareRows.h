// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "formats/prepare/PrepareSteps.h"

namespace pim {

inline std::string Card(const std::string& lines, std::string_view version = "2.1") {
  return "BEGIN:VCARD\r\nVERSION:" + std::string(version) + "\r\n" + lines + "END:VCARD\r\n";
}
// The head is lines 1 and 2 and what the head brings besides.
inline std::string Calendar(const std::string& head, const std::string& event,
                            std::string_view version = "1.0") {
  return "BEGIN:VCALENDAR\r\nVERSION:" + std::string(version) + "\r\n" + head + "BEGIN:VEVENT\r\n" +
         event + "END:VEVENT\r\nEND:VCALENDAR\r\n";
}

// A step alone, and what it makes of a text.
struct Row {
  PrepareStep step;
  std::string text;
  std::string expected;
  std::string told;
};

// Nothing is to be done.

// Of all steps.
std::vector<Row> Rows();

}  // namespace pim
