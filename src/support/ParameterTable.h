// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "pim/support/Loss.h"
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

// The charsets in which ASCII stands for itself, by the starts of their names: not knowing one of
// them costs a text in ASCII nothing.
inline constexpr NarrowStringView kAsciiCharsets[] = {
    "US-ASCII", "ASCII", "ISO-8859-", "ISO8859-", "WINDOWS-", "CP125", "KOI8-",
    "UTF8",     "EUC-",  "GB2312",    "GBK",      "GB18030",  "BIG5"};

struct ReadingParameters {
  std::int32_t charset;
  std::int32_t encoding;
};

// What is lost by a parameter that TakeTextParameter has taken: one that stood ahead of it, its
// charset or its encoding.
constexpr LossMask LossesOfTextParameter(const WordKey& name, NarrowStringView value,
                                         const ReadingParameters& before,
                                         const ReadingParameters& now) {
  const bool isOverridden = (before.charset != CHARSET_NONE && before.charset != now.charset) ||
                            (before.encoding > ENCODING_NONE && before.encoding != now.encoding);
  const bool isUnknownEncoding = EqualsIgnoringCase(name.text, kEncodingName) &&
                                 now.encoding == ENCODING_OTHER && !IsPlainEncoding(value);
  const bool isUnknownCharset =
      EqualsIgnoringCase(name.text, kCharsetName) && now.charset == CHARSET_OTHER &&
      std::ranges::none_of(kAsciiCharsets, [value](NarrowStringView start) {
        return EqualsIgnoringCase(value.substr(0, start.size()), start);
      });
  return LossIf(isOverridden || isUnknownEncoding, LOSS_TYPE_IGNORED) |
         LossIf(isUnknownCharset, LOSS_UNKNOWN_CHARSET);
}

}  // namespace pim
