// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "formats/FormatLoss.h"
#include "formats/icalendar/Ical.h"
#include "pim/records/Calendar.h"

namespace pim {

// PnDTnHnMnS, for a length of time that isn't negative. vCalendar 1.0 knows no weeks.
std::string SpanText(std::int64_t seconds);

// The times of an item, in UTC, that a VALARM may count from.
struct AlarmAnchors {
  std::optional<icaltimetype> start;
  std::optional<icaltimetype> due;
};

// Adds an item's reminder to its component: as VALARM where the component may have one, and under
// this program's own names what that doesn't say.
void AddAlarm(const CReminder& reminder, const AlarmAnchors& anchors, icalcomponent* item,
              const TellFormatLoss& tell);

// Adds a property of this program's own.
void AddOwn(icalcomponent* item, const char* name, const std::string& text);

}  // namespace pim
