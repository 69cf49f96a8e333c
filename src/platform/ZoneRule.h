// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "platform/ZoneRecord.h"

namespace pim {

// Replaces `zone` by the meaning of a POSIX TZ rule such as "CET-1CEST,M3.5.0,M10.5.0/3". Daylight
// time without rules has those of the United States. A rule by day of the year (J60, 59) has no
// counterpart in a zone record: the zone is then without daylight time. False, with `zone`
// unchanged, for a malformed rule.
[[nodiscard]] bool ParseZoneRule(std::string_view rule, TIME_ZONE_INFORMATION& zone);

}  // namespace pim
