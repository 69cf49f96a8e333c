// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

#include "support/Ascii.h"

namespace pim {

// Numbers of vObject text, which stay within 32 bits: a larger one counts as the nearest that fits.
constexpr std::int32_t Saturated(std::int64_t number) {
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(
      number, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

// The number with one more decimal digit behind it; both must not be negative.
constexpr std::int32_t WithDigit(std::int32_t number, char digit) {
  return Saturated(std::int64_t{number} * 10 + (digit - '0'));
}

// The decimal number at the start of the text, behind white space and a sign; 0 when there is none.
// What stands behind its digits isn't looked at.
constexpr std::int32_t ParseNumber(NarrowStringView text) {
  text = TrimLeft(text);
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  std::int64_t number = 0;
  for (const char c : text) {
    if (!IsDigit(c)) break;
    // One more than the largest number, so that the smallest can be read too.
    number =
        std::min(number * 10 + (c - '0'), -std::int64_t{std::numeric_limits<std::int32_t>::min()});
  }
  return Saturated(negative ? -number : number);
}

// Whether the text is a number that fits 32 bits, and nothing else but white space.
constexpr bool IsNumber(NarrowStringView text) {
  text = Trim(text);
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  if (text.empty()) return false;
  constexpr std::int64_t kTooLarge = std::int64_t{1} << 32;
  std::int64_t number = 0;
  for (const char c : text) {
    if (!IsDigit(c)) return false;
    number = std::min(number * 10 + (c - '0'), kTooLarge);
  }
  if (negative) number = -number;
  return number == Saturated(number);
}

// Whether a text in a date's place names none: nothing stands there, or zeros with no other letter
// than a date has. Devices write such for a date that isn't set.
constexpr bool NamesNoDate(NarrowStringView text) {
  if (Trim(text).empty()) return true;
  return text.find_first_not_of("0TZ-: \t\r\n") == NarrowStringView::npos &&
         text.find('0') != NarrowStringView::npos;
}

}  // namespace pim
