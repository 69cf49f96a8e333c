// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

namespace pim {

// Calendar fields, as Windows has them. wDayOfWeek is 0 Sunday to 6 Saturday.
struct SYSTEMTIME {
  std::uint16_t wYear = 0;
  std::uint16_t wMonth = 0;
  std::uint16_t wDayOfWeek = 0;
  std::uint16_t wDay = 0;
  std::uint16_t wHour = 0;
  std::uint16_t wMinute = 0;
  std::uint16_t wSecond = 0;
  std::uint16_t wMilliseconds = 0;
};

// OLE automation day numbers: days since 30 December 1899, the fraction counting forward in the
// day for negative numbers too. Proleptic Gregorian calendar, 1 January 100 to 31 December 9999.
// Milliseconds are neither read nor set.

inline constexpr std::chrono::sys_days kDayZero{std::chrono::year{1899} / 12 / 30};

// False, with `day` unchanged, for fields that are no moment in that range. wDayOfWeek isn't read.
[[nodiscard]] bool SystemTimeToVariantTime(const SYSTEMTIME& time, double& day);
// Rounds to the nearest second. False, with `time` unchanged, for a number out of range or a NaN.
[[nodiscard]] bool VariantTimeToSystemTime(double day, SYSTEMTIME& time);

// Exact seconds since the start of 30 December 1899, negative before it, for sums and comparisons.
// Nothing for fields that are no moment in the range above.
std::optional<std::int64_t> SecondsFromSystemTime(const SYSTEMTIME& time);
// False, with `time` unchanged, outside the range.
[[nodiscard]] bool SystemTimeFromSeconds(std::int64_t seconds, SYSTEMTIME& time);

// Stored form to a scale that runs evenly through day 0, for arithmetic and comparison, and back.
double LinearFromStored(double stored);
double StoredFromLinear(double linear);

}  // namespace pim
