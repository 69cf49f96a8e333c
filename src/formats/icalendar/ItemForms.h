// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "formats/RecordForm.h"

namespace pim {

// One VCALENDAR of iCalendar 2.0 (RFC 5545) with all items: VEVENT, VTODO, and VJOURNAL for memos.
// Lines end in CR LF, the last too. A VTIMEZONE stands ahead of the first item that needs it.
std::unique_ptr<ItemForm> MakeICalendarForm();

}  // namespace pim
