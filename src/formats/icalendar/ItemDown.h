// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "formats/FormatLoss.h"
#include "formats/icalendar/ZoneBook.h"

namespace pim {

// Replaces `out` by a VEVENT, VTODO or VJOURNAL as one of vCalendar 1.0; empty for anything else,
// which is told unless it is a zone.
void ItemToVCalendar(std::string_view component, ZoneBook& zones, const TellFormatLoss& tell,
                     std::string& out);

}  // namespace pim
