// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/ZoneRecord.h"

namespace pim {

// Replaces `zone` by the rule at the end of a compiled zone file (TZif, any version), or, for a
// file without a rule, by the standard offset at `now`, in seconds since 1970. False, with `zone`
// unchanged, for anything that isn't such a file.
[[nodiscard]] bool ParseZoneFile(std::string_view file, std::int64_t now,
                                 TIME_ZONE_INFORMATION& zone);

}  // namespace pim
