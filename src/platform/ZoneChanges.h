// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>

#include "platform/DayNumbers.h"

namespace pim {

// The moment of a zone date (TIME_ZONE_INFORMATION) in a year, as SecondsFromSystemTime counts, by
// the wall clock before the change. Nothing for a malformed date: no such month, weekday or time,
// or occurrence 0.
std::optional<std::int64_t> ZoneChangeInYear(const SYSTEMTIME& date, int year);

}  // namespace pim
