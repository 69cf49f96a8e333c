// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <stdexcept>

#include "pim/support/Strings.h"

namespace pim {

// An encoded text would pass 31 bits of length.
class SizeOverflow : public std::length_error {
 public:
  static constexpr std::uint32_t kCode = 0x80004005;  // Windows' E_FAIL
  SizeOverflow() : std::length_error("text too long to encode") {}
};

// A blank at the head of a line of the value. Readers take one behind a soft line break for the
// mark of a folded line, and drop those at the value's start.
enum class HeadBlank : std::uint8_t { Bare, Escaped };

// Replaces `out` by the quoted-printable form, with a soft line break (= CR LF) behind each 68 or
// more columns; only the value's own characters count as columns. Throws SizeOverflow.
void QuotedPrintableEncode(const char* bytes, std::int32_t length, NarrowString& out);

// Replaces `encoded` by the text in UTF-8 under quoted-printable. Throws SizeOverflow.
void EncodeText(WideStringView text, NarrowString& encoded, HeadBlank blank = HeadBlank::Bare);

// The size that the encoder's output stays below. Throws SizeOverflow beyond 31 bits.
std::int32_t QuotedPrintableEncodedSize(std::int32_t length);

// Decodes into `out`, a buffer of at least `length` bytes, and sets `written`. False when an equals
// sign begins neither an escape nor a soft line break; what stands before it is in `out`.
// `isExact`, where given, becomes false then, and for an escape without its two hexadecimal digits.
bool QuotedPrintableDecode(const char* bytes, std::int32_t length, char* out, std::int32_t& written,
                           bool* isExact = nullptr);

}  // namespace pim
