// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string_view>

namespace pim {

inline constexpr char16_t kReplacementCharacter = 0xFFFD;

constexpr bool IsHighSurrogate(char16_t unit) noexcept { return (unit & 0xFC00) == 0xD800; }
constexpr bool IsLowSurrogate(char16_t unit) noexcept { return (unit & 0xFC00) == 0xDC00; }
constexpr bool IsSurrogate(char16_t unit) noexcept { return (unit & 0xF800) == 0xD800; }

// Whether a character of two units stands at `at`, which is below the text's size.
constexpr bool IsPairAt(std::u16string_view text, std::size_t at) noexcept {
  return IsHighSurrogate(text[at]) && at + 1 < text.size() && IsLowSurrogate(text[at + 1]);
}

constexpr char32_t JoinPair(char16_t high, char16_t low) noexcept {
  return 0x10000 + ((static_cast<char32_t>(high) - 0xD800) << 10) +
         (static_cast<char32_t>(low) - 0xDC00);
}

// The units of a character beyond U+FFFF.
constexpr char16_t HighOf(char32_t character) noexcept {
  return static_cast<char16_t>(0xD7C0 + (character >> 10));
}
constexpr char16_t LowOf(char32_t character) noexcept {
  return static_cast<char16_t>(0xDC00 + (character & 0x3FF));
}

}  // namespace pim
