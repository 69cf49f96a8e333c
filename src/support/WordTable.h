// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <span>

#include "support/Ascii.h"

namespace pim {

// Keywords of vObject text with their codes. One table serves the reader and the writer.
struct Word {
  NarrowStringView text;  // as written; read in any ASCII letter case
  std::uint32_t code;
};

constexpr std::optional<std::uint32_t> CodeOf(std::span<const Word> table, NarrowStringView text) {
  for (const Word& word : table)
    if (EqualsIgnoringCase(word.text, text)) return word.code;
  return std::nullopt;
}

// A text made ready for lookups in several indexes.
struct WordKey {
  NarrowStringView text;
  std::uint64_t head;  // its first eight bytes in upper case, the first one lowest
};

// Eight bytes at once: the high bit of each small letter, moved to where it differs from the
// capital.
constexpr std::uint64_t ToUpperEight(std::uint64_t bytes) {
  constexpr std::uint64_t kOnes = 0x0101010101010101U;
  constexpr std::uint64_t kHighBits = 0x80 * kOnes;
  const std::uint64_t low = bytes & ~kHighBits;
  const std::uint64_t fromA = low + (0x80 - 'a') * kOnes;
  const std::uint64_t beyondZ = low + (0x80 - 'z' - 1) * kOnes;
  return bytes - ((fromA & ~beyondZ & ~bytes & kHighBits) >> 2);
}

constexpr std::uint64_t HeadOf(NarrowStringView text) {
  std::uint64_t head = 0;
  for (std::size_t i = 0; i < text.size() && i < 8; ++i)
    head |= std::uint64_t{static_cast<unsigned char>(text[i])} << 8 * i;
  return ToUpperEight(head);
}

constexpr WordKey KeyOf(NarrowStringView text) { return {text, HeadOf(text)}; }
// Of a zero-terminated text, measured in the same pass: most are short.
constexpr WordKey KeyOf(const char* text) {
  std::uint64_t head = 0;
  std::size_t size = 0;
  for (; size < 8 && text[size] != '\0'; ++size)
    head |= std::uint64_t{static_cast<unsigned char>(text[size])} << 8 * size;
  if (size == 8) size += NarrowStringView(text + 8).size();
  return {{text, size}, ToUpperEight(head)};
}

// CodeOf for a table that every property is looked up in.
template <std::size_t Count>
class WordIndex {
  static_assert(Count < 256);

 public:
  constexpr explicit WordIndex(const Word (&table)[Count]) {
    for (std::size_t i = Count; i > 0; --i) {  // the first row of a text stands ahead
      Row& row = rows_[i - 1];
      row = {KeyOf(table[i - 1].text), table[i - 1].code, 0};
      std::uint8_t& first = heads_[SlotOf(row.key)];
      row.next = first;
      first = static_cast<std::uint8_t>(i);
    }
  }

  constexpr std::optional<std::uint32_t> CodeOf(const WordKey& key) const {
    for (std::size_t i = heads_[SlotOf(key)]; i != 0; i = rows_[i - 1].next) {
      const Row& row = rows_[i - 1];
      if (row.key.head == key.head && row.key.text.size() == key.text.size() &&
          (key.text.size() <= 8 || EqualsIgnoringCase(row.key.text.substr(8), key.text.substr(8))))
        return row.code;
    }
    return std::nullopt;
  }

 private:
  struct Row {
    WordKey key{};
    std::uint32_t code = 0;
    std::uint8_t next = 0;  // a row's number, from 1; 0 for none
  };

  static constexpr unsigned kSlotBits = 7;
  static constexpr std::size_t SlotOf(const WordKey& key) {
    constexpr std::uint64_t kGoldenRatio = 0x9E3779B97F4A7C15U;  // Fibonacci hashing
    return key.head * kGoldenRatio >> (64 - kSlotBits);
  }

  std::array<Row, Count> rows_{};
  std::array<std::uint8_t, std::size_t{1} << kSlotBits> heads_{};
};

// The code of the first word of which `value` is a start.
constexpr std::optional<std::uint32_t> CodeOfStart(std::span<const Word> table,
                                                   NarrowStringView value) {
  for (const Word& word : table)
    if (IsStartOf(word.text, value)) return word.code;
  return std::nullopt;
}

// The first row of a code is the one written; a further row is an alias that is only read. Empty
// for a code without a row.
constexpr NarrowStringView TextOf(std::span<const Word> table, std::uint32_t code) {
  const auto row = std::ranges::find(table, code, &Word::code);
  return row == table.end() ? NarrowStringView{} : row->text;
}

// Whether each text gives its own row, so that what was written is read back.
constexpr bool TextsDiffer(std::span<const Word> table) {
  for (std::size_t i = 0; i < table.size(); ++i)
    if (CodeOf(table.first(i), table[i].text)) return false;
  return true;
}

}  // namespace pim
