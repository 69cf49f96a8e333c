// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pim/records/TypeCodes.h"
#include "support/WordTable.h"

namespace pim {

// The parameters of an alarm that records keep, as vCalendar 1.0 spells them.
inline constexpr Word kAlarmFormats[] = {
    {"TYPE=PCM", REMINDER_PCM},
    {"TYPE=WAVE", REMINDER_WAVE},
    {"TYPE=AIFF", REMINDER_AIFF},
    {"VALUE=CONTENT-ID", REMINDER_CONTENT_ID},
};
static_assert(TextsDiffer(kAlarmFormats));

}  // namespace pim
