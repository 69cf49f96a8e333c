// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "pim/support/Strings.h"

namespace pim {

// Makes a UUID of what it is given: the same for the same pieces in the same order, on any machine
// and in any version of this program, so that a record that is exported again is known again where
// it went. Not for secrets: who wants two records with one UUID can make them.
class UuidMaker {
 public:
  // Where a piece ends counts, so that "ab" and "c" aren't "a" and "bc".
  void Add(std::uint64_t number);
  void Add(NarrowStringView bytes);
  void Add(WideStringView text);

  // The 36 characters of a UUID of version 8 (RFC 9562, 5.8), in small letters.
  std::string Text() const;

 private:
  void Mix(std::uint64_t word);

  std::uint64_t high_ = 0x9E3779B97F4A7C15;
  std::uint64_t low_ = 0xD1B54A32D192ED03;
};

}  // namespace pim
