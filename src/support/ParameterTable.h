#pragma once

#include <cstdint>

#include "support/TextCodec.h"
#include "support/WordTable.h"

namespace pim {

// What the parameters of a property tell both readers about its value's text.

enum TextParameter : std::uint32_t { PARAMETER_CHARSET, PARAMETER_ENCODING };

inline constexpr Word kTextParameters[] = {{"CHARSET", PARAMETER_CHARSET},
                                           {"ENCODING", PARAMETER_ENCODING}};

inline constexpr Word kCharsets[] = {{"utf-8", CHARSET_UTF8}, {"SHIFT_JIS", CHARSET_SHIFT_JIS}};

// Also parameters of their own, with or without a value.
inline constexpr Word kEncodings[] = {{"QUOTED-PRINTABLE", ENCODING_QUOTED_PRINTABLE},
                                      {"BASE64", ENCODING_BASE64}};

inline constexpr WordIndex kTextParameterIndex(kTextParameters);
inline constexpr WordIndex kCharsetIndex(kCharsets);
inline constexpr WordIndex kEncodingIndex(kEncodings);

// Sets what the parameter says, in any letter case; false when it is none of these. `value` is
// empty for a parameter without one.
constexpr bool TakeTextParameter(const WordKey& name, NarrowStringView value, std::int32_t& charset,
                                 std::int32_t& encoding) {
  if (const auto parameter = kTextParameterIndex.CodeOf(name)) {
    const WordKey word = KeyOf(value);
    if (*parameter == PARAMETER_CHARSET) {
      const auto code = kCharsetIndex.CodeOf(word);
      charset = code ? static_cast<std::int32_t>(*code) : CHARSET_OTHER;
    } else {
      const auto code = kEncodingIndex.CodeOf(word);
      encoding = code ? static_cast<std::int32_t>(*code) : ENCODING_OTHER;
    }
    return true;
  }
  const auto code = kEncodingIndex.CodeOf(name);
  if (code) encoding = static_cast<std::int32_t>(*code);
  return code.has_value();
}

}  // namespace pim
