// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <vector>

#include "formats/FormatLoss.h"
#include "formats/icalendar/ContentLines.h"
#include "formats/icalendar/DownLines.h"
#include "formats/icalendar/DownTimes.h"

namespace pim {

// The lines of one VALARM, between its BEGIN, which is the first one, and its END.
using AlarmLines = std::vector<const ContentLine*>;

// What an item has for its alarms.
struct AlarmSources {
  std::vector<AlarmLines> alarms;
  const ContentLine* own = nullptr;     // this program's own value, where the item has one
  const ContentLine* format = nullptr;  // and its parameters
  std::optional<ItemTime> start;
  std::optional<ItemTime> end;
};

// Writes the first alarm that makes a sound or shows a text as AALARM. Any other one is told.
void AppendAlarm(const AlarmSources& sources, const DownTimes& times, const TellFormatLoss& tell,
                 DownLines& out);

}  // namespace pim
