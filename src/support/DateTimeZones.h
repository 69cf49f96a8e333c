// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pim/support/DateTime.h"
#include "platform/ZoneRecord.h"

namespace pim {

// UTC to the machine's local time. A value that isn't valid comes back unchanged.
COleDateTimeNull UtcToLocal(COleDateTimeNull value);

// Local time to UTC. A value that isn't valid, or that the zone can't convert, comes back invalid.
COleDateTime ConvertDateTime(const COleDateTime& value);

// Local time to UTC by the rules of `zone`, or of the machine's zone when null. A local time that
// a change of the clock skips or repeats counts as daylight time in the northern form. False, with
// GetLastError giving ERROR_INVALID_PARAMETER and `utc` unchanged, for a malformed rule and where
// `local` or its UTC is no moment of the years 100 to 9999.
[[nodiscard]] bool LocalToUtc(const TIME_ZONE_INFORMATION* zone, const SYSTEMTIME& local,
                              SYSTEMTIME& utc);

}  // namespace pim
