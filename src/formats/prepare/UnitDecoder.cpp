// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/prepare/UnitDecoder.h"

#include <algorithm>

#include "platform/Utf8.h"
#include "support/Ascii.h"

namespace pim {
namespace {

constexpr std::uint32_t kNoCharacter = 0xFFFD;
constexpr std::uint32_t kMark = 0xFEFF;
constexpr std::uint32_t kLastCharacter = 0x10FFFF;

constexpr bool IsHighSurrogate(std::uint32_t unit) { return (unit & ~0x3FFU) == 0xD800; }
constexpr bool IsLowSurrogate(std::uint32_t unit) { return (unit & ~0x3FFU) == 0xDC00; }

}  // namespace

// Behind a mark, too, an ASCII character must follow, since all texts begin with one: so no text
// without NUL characters is taken for one of these.
TextUnits TextUnits::Of(std::string_view head) {
  static constexpr struct {
    std::string_view mark;
    std::string_view shape;  // of what follows: letters or blanks, and zeros
    TextUnits units;
  } kRows[] = {
      {{"\xFF\xFE\0\0", 4}, "x000", {4, false}},
      {{"\0\0\xFE\xFF", 4}, "000x", {4, true}},
      {"\xFF\xFE", "x0", {2, false}},
      {"\xFE\xFF", "0x", {2, true}},
      {"", "x000", {4, false}},
      {"", "000x", {4, true}},
      {"", "x0x0", {2, false}},
      {"", "0x0x", {2, true}},
  };
  std::string shape;
  for (const char c : head) shape += IsLetter(c) || IsWhiteSpace(c) ? 'x' : c == '\0' ? '0' : ' ';
  for (const auto& row : kRows) {
    if (head.starts_with(row.mark) &&
        std::string_view(shape).substr(row.mark.size()).starts_with(row.shape))
      return row.units;
  }
  return {};
}

void UnitDecoder::Append(std::string_view piece, bool isLast, std::string& out) {
  std::string whole;
  if (!held_.empty()) {
    whole = std::move(held_);
    whole += piece;
    piece = whole;
    held_.clear();
  }
  std::size_t at = 0;
  for (; piece.size() - at >= units_.size; at += units_.size) {
    std::uint32_t unit = UnitAt(piece, at);
    if (units_.size == 2 && IsHighSurrogate(unit)) {
      if (piece.size() - at < 4 && !isLast) break;
      const std::uint32_t next = piece.size() - at < 4 ? 0 : UnitAt(piece, at + 2);
      if (IsLowSurrogate(next)) {
        unit = 0x10000 + ((unit & 0x3FF) << 10) + (next & 0x3FF);
        at += 2;
      }
    }
    AppendCharacter(unit, out);
  }
  if (at == piece.size()) return;
  if (isLast) return AppendCharacter(kNoCharacter, out);
  held_ = piece.substr(at);
}

std::uint32_t UnitDecoder::UnitAt(std::string_view bytes, std::size_t at) const {
  std::uint32_t unit = 0;
  for (std::size_t i = 0; i < units_.size; ++i) {
    const std::size_t place = units_.isBig ? i : units_.size - 1 - i;
    unit = unit << 8 | static_cast<unsigned char>(bytes[at + place]);
  }
  return unit;
}

void UnitDecoder::AppendCharacter(std::uint32_t character, std::string& out) {
  const bool isMark = character == kMark && !hasBegun_;
  hasBegun_ = true;
  if (isMark) return;
  if (character > kLastCharacter || IsHighSurrogate(character) || IsLowSurrogate(character))
    character = kNoCharacter;
  char16_t units[2] = {static_cast<char16_t>(character), 0};
  std::size_t count = 1;
  if (character > 0xFFFF) {
    units[0] = static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
    units[1] = static_cast<char16_t>(0xDC00 + (character & 0x3FF));
    count = 2;
  }
  char bytes[kLongestUtf8];
  out.append(bytes, EncodeUtf8({units, count}, bytes));
}

}  // namespace pim
