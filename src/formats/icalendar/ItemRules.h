// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>

#include "formats/FormatLoss.h"
#include "formats/icalendar/DownLines.h"
#include "formats/icalendar/DownTimes.h"
#include "formats/icalendar/ItemLines.h"

namespace pim {

// Writes the rules of an item that begins then as RRULE and XRULE. Those that vCalendar 1.0 can't
// say are told.
void AppendRules(const ItemLines& lines, const DownTimes& times,
                 const std::optional<ItemTime>& start, const TellFormatLoss& tell, DownLines& out);

}  // namespace pim
