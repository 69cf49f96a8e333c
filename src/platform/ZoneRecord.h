// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "platform/DayNumbers.h"

namespace pim {

// The zone record, as Windows has it. Biases are minutes with UTC = local time + bias. In a zone
// date, wMonth 0 says that there is no daylight time; else wDay (1 to 5, 5 the last) is the
// occurrence of wDayOfWeek in wMonth, and wHour and wMinute the wall clock at the change.
struct TIME_ZONE_INFORMATION {
  std::int32_t Bias = 0;
  SYSTEMTIME StandardDate;  // when standard time starts
  std::int32_t StandardBias = 0;
  SYSTEMTIME DaylightDate;  // when daylight time starts
  std::int32_t DaylightBias = 0;
};

// The machine's zone, read anew at each call: from TZ, else from the system's zone file, as the
// rule in force today.
void GetTimeZoneInformation(TIME_ZONE_INFORMATION& zone);

// UTC to local time by the zone's rule for the year of the date. False, with `local` unchanged,
// when a moment or a rule of the zone can't be worked out.
[[nodiscard]] bool SystemTimeToTzSpecificLocalTime(const TIME_ZONE_INFORMATION& zone,
                                                   const SYSTEMTIME& utc, SYSTEMTIME& local);

// Windows' last-error value of this thread; only LocalToUtc and its tests use it.
inline constexpr std::uint32_t ERROR_SUCCESS = 0;
inline constexpr std::uint32_t ERROR_INVALID_PARAMETER = 87;
void SetLastError(std::uint32_t error);
std::uint32_t GetLastError();

}  // namespace pim
