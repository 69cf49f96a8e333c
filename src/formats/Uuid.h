// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "pim/support/Strings.h"

namespace pim {

// Makes a UUID of what it is given: the same for the same pieces in the same order, on any machine
// and in any version of this program, so that a record that is exported again is known again where
// it went. Not for secrets: who wants two records with one UUID can make them.
//
// A record has dozens of pieces, most of them short: what takes them stands here, so that all of it
// stays in registers.
class UuidMaker {
 public:
  // Where a piece ends counts, so that "ab" and "c" aren't "a" and "bc".
  void Add(std::uint64_t number) { Mix(number); }
  void Add(NarrowStringView bytes) { AddPiece(bytes); }
  void Add(WideStringView text) { AddPiece(text); }

  // The 36 characters of a UUID of version 8 (RFC 9562, 5.8), in small letters.
  std::string Text() const;

 private:
  static constexpr std::size_t kWordBytes = sizeof(std::uint64_t);

  // Two lanes that differ, so that their multiplications run side by side.
  void Mix(std::uint64_t word) {
    high_ = std::rotl((high_ ^ word) * 0x9E3779B97F4A7C15, 31);
    low_ = std::rotl((low_ + word) * 0xD6E8FEB86659FD93, 29);
  }

  // The last word takes up some units again rather than be a short one.
  template <class View>
  void AddPiece(View text) {
    constexpr std::size_t kStep = kWordBytes / sizeof(typename View::value_type);
    const std::size_t size = text.size();
    Mix(size);
    if (size < kStep) {
      if (size != 0) Mix(ShortWord(text));
      return;
    }
    for (std::size_t at = 0; size - at > kStep; at += kStep) Mix(WordAt(text, at));
    Mix(WordAt(text, size - kStep));
  }

  // The lowest code unit stands lowest, whatever the machine's order of bytes.
  template <class View>
  static std::uint64_t WordAt(View text, std::size_t at) {
    std::uint64_t word = 0;
    if constexpr (std::endian::native == std::endian::little) {
      std::memcpy(&word, text.data() + at, kWordBytes);
    } else {
      constexpr std::size_t kBytes = sizeof(typename View::value_type);
      for (std::size_t i = 0; i < kWordBytes / kBytes; ++i)
        word |= Unit(text[at + i]) << 8 * kBytes * i;
    }
    return word;
  }
  // Of a text of one to three wide units, without a look at how many they are, or of up to seven
  // bytes.
  static std::uint64_t ShortWord(WideStringView text) {
    return Unit(text[0]) | Unit(text[text.size() / 2]) << 16 | Unit(text[text.size() - 1]) << 32;
  }
  static std::uint64_t ShortWord(NarrowStringView bytes) {
    std::uint64_t word = 0;
    for (const char byte : bytes) word = word << 8 | Unit(byte);
    return word;
  }
  static std::uint64_t Unit(char16_t unit) { return unit; }
  static std::uint64_t Unit(char byte) { return static_cast<unsigned char>(byte); }

  std::uint64_t high_ = 0x9E3779B97F4A7C15;
  std::uint64_t low_ = 0xD1B54A32D192ED03;
};

}  // namespace pim
