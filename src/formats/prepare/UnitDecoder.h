// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace pim {

// How the characters of a text are put into bytes.
struct TextUnits {
  std::size_t size = 1;  // bytes of a unit: 1 for any charset of bytes, 2 for UTF-16, 4 for UTF-32
  bool isBig = false;    // the highest byte of a unit stands first

  // By a byte order mark, else by where the zeros of the first two or one ASCII letters stand;
  // eight bytes are enough to tell.
  static TextUnits Of(std::string_view head);
};

// Makes UTF-8 of UTF-16 or UTF-32, without the byte order mark at its head; what is no character
// becomes U+FFFD. A text comes in pieces of any size.
class UnitDecoder {
 public:
  explicit UnitDecoder(TextUnits units) : units_(units) {}

  void Append(std::string_view piece, bool isLast, std::string& out);

 private:
  std::uint32_t UnitAt(std::string_view bytes, std::size_t at) const;
  void AppendCharacter(std::uint32_t character, std::string& out);

  std::string held_;  // a unit or a pair of them that isn't whole yet
  TextUnits units_;
  bool hasBegun_ = false;
};

}  // namespace pim
