// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <libical/ical.h>

#include <cstdint>

#include "pim/records/TypeCodes.h"

namespace pim {

// The codes that STATUS has a word for, by the component's kind. Others have their word under this
// program's own name.
struct StatusRow {
  icalcomponent_kind kind;
  std::int32_t status;
  icalproperty_status word;
};
inline constexpr StatusRow kStatusRows[] = {
    {ICAL_VEVENT_COMPONENT, STATUS_TENTATIVE, ICAL_STATUS_TENTATIVE},
    {ICAL_VEVENT_COMPONENT, STATUS_CONFIRMED, ICAL_STATUS_CONFIRMED},
    {ICAL_VTODO_COMPONENT, STATUS_NEEDS_ACTION, ICAL_STATUS_NEEDSACTION},
    {ICAL_VTODO_COMPONENT, STATUS_COMPLETED, ICAL_STATUS_COMPLETED},
};

}  // namespace pim
