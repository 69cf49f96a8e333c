// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "pim/records/Calendar.h"

namespace pim {

// Which of a table's records a loading or a visit is about.
inline constexpr auto kEachRecord = [](const auto&) { return true; };
inline auto OfKind(CalendarType kind) {
  return [kind](const CCalendar& item) {
    return item.calendar_type == static_cast<std::uint8_t>(kind);
  };
}

}  // namespace pim
