// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>

#include "support/Ascii.h"

namespace pim {

// Classes of bytes at which a run ends.
enum ByteClass : std::uint8_t {
  BYTE_COLON = 0x1,
  BYTE_SEMICOLON = 0x2,
  BYTE_EQUALS = 0x4,
  BYTE_BACKSLASH = 0x8,
  BYTE_WHITE_SPACE = 0x10,
  BYTE_BLANK = 0x20,
  BYTE_RETURN = 0x40,
};

constexpr std::array<std::uint8_t, 256> MakeByteClasses() {
  std::array<std::uint8_t, 256> classes{};
  classes[':'] = BYTE_COLON;
  classes[';'] = BYTE_SEMICOLON;
  classes['='] = BYTE_EQUALS;
  classes['\\'] = BYTE_BACKSLASH;
  for (std::size_t i = 0; i < 128; ++i) {
    if (IsWhiteSpace(static_cast<char>(i))) classes[i] |= BYTE_WHITE_SPACE;
    if (IsBlank(static_cast<char>(i))) classes[i] |= BYTE_BLANK;
  }
  classes['\r'] |= BYTE_RETURN;
  return classes;
}
inline constexpr std::array<std::uint8_t, 256> kByteClasses = MakeByteClasses();

// The first byte of one of the classes, or `end`.
inline const char* FindClass(const char* from, const char* end, unsigned classes) {
  while (from != end && (kByteClasses[static_cast<unsigned char>(*from)] & classes) == 0) ++from;
  return from;
}

}  // namespace pim
