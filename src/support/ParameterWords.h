// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "support/WordTable.h"

namespace pim {

// The words of parameters that more than one part of the system reads or writes.

inline constexpr NarrowStringView kCharsetName = "CHARSET";
inline constexpr NarrowStringView kEncodingName = "ENCODING";
inline constexpr NarrowStringView kTypeName = "TYPE";

// How a value's bytes stand in the text.
enum class TransferEncoding : std::int32_t {
  EncodingNone = 0,
  EncodingQuotedPrintable = 1,
  EncodingBase64 = 2,
  Encoding8Bit = 3,
};

inline constexpr Word kQuotedPrintableWord = {
    "QUOTED-PRINTABLE", static_cast<std::uint32_t>(TransferEncoding::EncodingQuotedPrintable)};
inline constexpr Word kBase64Word = {"BASE64",
                                     static_cast<std::uint32_t>(TransferEncoding::EncodingBase64)};
// The words of values that stand as they are. They need not be looked at.
inline constexpr NarrowStringView k7BitText = "7BIT";
inline constexpr Word k8BitWord = {"8BIT",
                                   static_cast<std::uint32_t>(TransferEncoding::Encoding8Bit)};

// What a property's CHARSET parameter says.
enum CharsetCode : std::int32_t {
  CHARSET_NONE = 0,
  CHARSET_UTF8 = 1,
  CHARSET_SHIFT_JIS = 2,
  CHARSET_OTHER = -1,
};

inline constexpr Word kUtf8Word = {"utf-8", CHARSET_UTF8};
inline constexpr Word kShiftJisWord = {"SHIFT_JIS", CHARSET_SHIFT_JIS};

// What a property's ENCODING parameter, or a bare word in its place, says of the value's text. The
// tokeniser's 8BIT is any other word here.
enum EncodingCode : std::int32_t {
  ENCODING_NONE = static_cast<std::int32_t>(TransferEncoding::EncodingNone),
  ENCODING_QUOTED_PRINTABLE = static_cast<std::int32_t>(TransferEncoding::EncodingQuotedPrintable),
  ENCODING_BASE64 = static_cast<std::int32_t>(TransferEncoding::EncodingBase64),
  ENCODING_OTHER = -1,
};

}  // namespace pim
