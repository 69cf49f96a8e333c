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

// CodeOf for a table that every property is looked up in: by length, first and last letter.
template <std::size_t Count>
class WordIndex {
 public:
  constexpr explicit WordIndex(const Word (&table)[Count]) : table_(table) {
    for (std::size_t i = Count; i > 0; --i) {  // the first row of a text stands ahead
      std::size_t& head = heads_[SlotOf(table[i - 1].text)];
      next_[i - 1] = head;
      head = i;
    }
  }

  constexpr std::optional<std::uint32_t> CodeOf(NarrowStringView text) const {
    if (text.empty()) return std::nullopt;
    for (std::size_t i = heads_[SlotOf(text)]; i != 0; i = next_[i - 1])
      if (EqualsIgnoringCase(table_[i - 1].text, text)) return table_[i - 1].code;
    return std::nullopt;
  }

 private:
  static constexpr std::size_t kSlots = 128;
  static constexpr std::size_t SlotOf(NarrowStringView text) {
    const auto letter = [](char c) { return static_cast<unsigned char>(ToUpper(c)); };
    return (text.size() * 5 + letter(text.front()) * 3U + letter(text.back()) * 11U) % kSlots;
  }

  std::span<const Word, Count> table_;
  std::array<std::size_t, kSlots> heads_{};  // a row's number, from 1; 0 for none
  std::array<std::size_t, Count> next_{};
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
