// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "formats/icalendar/ICalendarDown.h"
#include "formats/prepare/TextZone.h"

namespace pim {

// What is known of the VCALENDAR that is open.
struct FrameState {
  // Something that waits for a time zone which an item ahead of it names, or that item itself.
  struct Waiting {
    std::string text;
    std::int64_t firstLine;
    std::int64_t lines;
    bool isComponent;  // of iCalendar, to be converted
    bool isSame;       // as it stands in the text
  };

  TextZone zone;
  std::unique_ptr<ICalendarDown> down;  // where it is iCalendar 2.0
  std::deque<Waiting> waiting;
  std::vector<std::string> missing;  // the zones that the first of them waits for
};

}  // namespace pim
