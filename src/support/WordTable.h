#pragma once

#include <algorithm>
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
