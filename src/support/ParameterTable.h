#pragma once

#include <cstdint>

#include "support/ParameterWords.h"
#include "support/WordTable.h"

namespace pim {

// What the parameters of a property tell both readers about its value's text.

enum TextParameter : std::uint32_t { PARAMETER_CHARSET, PARAMETER_ENCODING };

inline constexpr Word kTextParameters[] = {{kCharsetName, PARAMETER_CHARSET},
                                           {kEncodingName, PARAMETER_ENCODING}};

inline constexpr Word kCharsets[] = {kUtf8Word, kShiftJisWord};

// Also parameters of their own, with or without a value.
inline constexpr Word kEncodings[] = {kQuotedPrintableWord, kBase64Word};

static_assert(TextsDiffer(kTextParameters) && TextsDiffer(kCharsets) && TextsDiffer(kEncodings));

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

// An encoding of values that stand as they are, which needs no look.
constexpr bool IsPlainEncoding(NarrowStringView word) {
  return EqualsIgnoringCase(word, k8BitWord.text) || EqualsIgnoringCase(word, k7BitText);
}

// Whether a parameter names an encoding that isn't known, so that the value isn't what it means.
constexpr bool IsUnknownEncoding(const WordKey& name, NarrowStringView value) {
  return EqualsIgnoringCase(name.text, kEncodingName) && !kEncodingIndex.CodeOf(KeyOf(value)) &&
         !IsPlainEncoding(value);
}

}  // namespace pim
