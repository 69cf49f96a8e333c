// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

#include "pim/support/Strings.h"

namespace pim {

// Byte classes of vObject text, on ASCII alone whatever the locale: bytes from 0x80 on are in none.
constexpr bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }
constexpr bool IsWhiteSpace(char c) { return IsBlank(c) || c == '\v' || c == '\f'; }
constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
constexpr char ToUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }
constexpr char ToLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

constexpr bool EqualsIgnoringCase(NarrowStringView a, NarrowStringView b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (ToUpper(a[i]) != ToUpper(b[i])) return false;
  return true;
}

// Whether `value` is the word or a start of it, in any letter case; an empty value is one. So a
// keyword may be cut short in a text, but nothing may stand behind it.
constexpr bool IsStartOf(NarrowStringView word, NarrowStringView value) {
  return value.size() <= word.size() && EqualsIgnoringCase(word.substr(0, value.size()), value);
}

constexpr NarrowStringView TrimLeft(NarrowStringView text) {
  while (!text.empty() && IsWhiteSpace(text.front())) text.remove_prefix(1);
  return text;
}
constexpr NarrowStringView Trim(NarrowStringView text) {
  while (!text.empty() && IsWhiteSpace(text.back())) text.remove_suffix(1);
  return TrimLeft(text);
}

}  // namespace pim
