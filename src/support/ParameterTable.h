#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>

#include "support/Ascii.h"
#include "support/TextCodec.h"

namespace pim {

// What a parameter of a property tells both readers about its value's text.
enum class ParameterField : std::uint8_t { Charset, Encoding };

struct ParameterRow {
  NarrowStringView name;
  std::optional<NarrowStringView> value;  // none: any value, or no value at all
  ParameterField field;
  std::int32_t code;
};

inline constexpr ParameterRow kTextParameterRows[] = {
    {"CHARSET", "utf-8", ParameterField::Charset, CHARSET_UTF8},
    {"CHARSET", "SHIFT_JIS", ParameterField::Charset, CHARSET_SHIFT_JIS},
    {"CHARSET", std::nullopt, ParameterField::Charset, CHARSET_OTHER},
    {"ENCODING", "QUOTED-PRINTABLE", ParameterField::Encoding, ENCODING_QUOTED_PRINTABLE},
    {"ENCODING", "BASE64", ParameterField::Encoding, ENCODING_BASE64},
    {"ENCODING", std::nullopt, ParameterField::Encoding, ENCODING_OTHER},
    {"QUOTED-PRINTABLE", std::nullopt, ParameterField::Encoding, ENCODING_QUOTED_PRINTABLE},
    {"BASE64", std::nullopt, ParameterField::Encoding, ENCODING_BASE64},
};

// Most parameters are type words, and shorter than any name above.
inline constexpr std::size_t kShortestTextParameter =
    std::ranges::min(kTextParameterRows, {}, [](const ParameterRow& row) {
      return row.name.size();
    }).name.size();

// Sets what the first row that fits the parameter says, in any letter case; false when none does.
// `value` is empty for a parameter without one: no row asks for an empty value.
constexpr bool TakeTextParameter(NarrowStringView name, NarrowStringView value,
                                 std::int32_t& charset, std::int32_t& encoding) {
  if (name.size() < kShortestTextParameter) return false;
  for (const ParameterRow& row : kTextParameterRows) {
    if (!EqualsIgnoringCase(row.name, name)) continue;
    if (row.value && !EqualsIgnoringCase(*row.value, value)) continue;
    (row.field == ParameterField::Charset ? charset : encoding) = row.code;
    return true;
  }
  return false;
}

}  // namespace pim
