// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace pim {

// Letters and digits that may stand for one another: of one script, and as long in UTF-8. Both ends
// are in it, and no other character is.
struct LetterRange {
  std::uint32_t first;
  std::uint32_t last;

  constexpr std::uint32_t size() const { return last - first + 1; }
};

// Blocks of Unicode, parted where something that is no letter stands, ascending.
inline constexpr LetterRange kLetterRanges[] = {
    {'0', '9'},         {'A', 'Z'},       {'a', 'z'},        // ASCII
    {0x00C0, 0x00D6},   {0x00D8, 0x00DE}, {0x00DF, 0x00F6},  // Latin-1
    {0x00F8, 0x00FF},   {0x0100, 0x017F}, {0x0180, 0x024F},  // Latin Extended-A, -B
    {0x0250, 0x02AF},                                        // IPA Extensions
    {0x0391, 0x03A1},   {0x03A3, 0x03AB}, {0x03AC, 0x03CE},  // Greek
    {0x0400, 0x042F},   {0x0430, 0x045F}, {0x048A, 0x04FF},  // Cyrillic
    {0x0531, 0x0556},   {0x0561, 0x0586},                    // Armenian
    {0x05D0, 0x05EA},                                        // Hebrew
    {0x0621, 0x063A},   {0x0641, 0x064A}, {0x0660, 0x0669},  // Arabic
    {0x0671, 0x06D3},   {0x06F0, 0x06F9},                    //
    {0x0905, 0x0939},   {0x0966, 0x096F},                    // Devanagari
    {0x0985, 0x098C},   {0x0995, 0x09A8}, {0x09E6, 0x09EF},  // Bengali
    {0x0A15, 0x0A28},   {0x0A95, 0x0AA8},                    // Gurmukhi, Gujarati
    {0x0B15, 0x0B28},   {0x0BAE, 0x0BB9},                    // Oriya, Tamil
    {0x0C15, 0x0C28},   {0x0C95, 0x0CA8}, {0x0D15, 0x0D28},  // Telugu, Kannada, Malayalam
    {0x0E01, 0x0E2E},   {0x0E50, 0x0E59},                    // Thai
    {0x10A0, 0x10C5},   {0x10D0, 0x10F0},                    // Georgian
    {0x1200, 0x1248},                                        // Ethiopic
    {0x1780, 0x17A2},                                        // Khmer
    {0x1E00, 0x1E95},   {0x1EA0, 0x1EF9},                    // Latin Extended Additional
    {0x3041, 0x3096},   {0x30A1, 0x30FA},                    // Hiragana, Katakana
    {0x3105, 0x312D},   {0x3131, 0x318E},                    // Bopomofo, Hangul Compatibility
    {0x3400, 0x4DB5},   {0x4E00, 0x9FA5},                    // CJK
    {0xA000, 0xA48C},                                        // Yi
    {0xAC00, 0xD7A3},                                        // Hangul
    {0xFF10, 0xFF19},   {0xFF21, 0xFF3A}, {0xFF41, 0xFF5A},  // Fullwidth
    {0xFF66, 0xFF9D},                                        // Halfwidth Katakana
    {0x20000, 0x2A6D6},                                      // CJK Extension B
};

// Null for what is no letter or digit, or of another script.
constexpr const LetterRange* RangeOf(std::uint32_t character) {
  const auto* const next =
      std::ranges::upper_bound(kLetterRanges, character, {}, &LetterRange::first);
  if (next == std::begin(kLetterRanges)) return nullptr;
  const LetterRange* const range = std::prev(next);
  return character <= range->last ? range : nullptr;
}

static_assert([] {
  const auto sizeInUtf8 = [](std::uint32_t c) {
    return c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
  };
  for (std::size_t i = 0; i < std::size(kLetterRanges); ++i) {
    const LetterRange& range = kLetterRanges[i];
    if (range.first > range.last || sizeInUtf8(range.first) != sizeInUtf8(range.last)) return false;
    if (i > 0 && range.first <= kLetterRanges[i - 1].last) return false;
  }
  return true;
}());

}  // namespace pim
