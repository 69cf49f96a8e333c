// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "pim/records/Calendar.h"
#include "stream/ValueOutcome.h"

namespace pim {

struct VCalReadContext;

// Whether the date property ahead had the all-day form. One for each thread: it outlives a text.
extern constinit thread_local bool AllDayPending;

// Puts the value of the context's property into the item. A property without a treatment does
// nothing, and a value that can't be read leaves its field empty, null, invalid or 0. Tells the
// context's account, if it has one, where the value went, and gives what of it was lost, and
// whether a date or rule isn't understood.
ValueOutcome TakeVCalendarValue(VCalReadContext& context, const char* bytes, std::int32_t length,
                                CCalendar& item);

}  // namespace pim
