// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "pim/support/Loss.h"
#include "pim/support/Strings.h"
#include "pim/support/WideText.h"
#include "support/ParameterWords.h"
#include "support/QuotedPrintable.h"

namespace pim {

// Replaces `text` by the value's text. Quoted-printable is decoded, other bytes are taken as they
// stand (base64 has gone already); then UTF-8, Shift-JIS or, for any other charset, the default
// code page is converted. The text ends at the first NUL byte and at a bad escape. Gives what was
// lost.
LossMask DecodeText(const char* bytes, std::int32_t length, std::int32_t charset,
                    std::int32_t encoding, WideString& text);

// The same for a record's text. Most are plain ASCII and go there at once; the others by way of
// `work`, one piece of memory for many calls.
LossMask DecodeText(const char* bytes, std::int32_t length, std::int32_t charset,
                    std::int32_t encoding, WideString& work, WideText& text);
LossMask WidenText(NarrowStringView bytes, WideString& work, WideText& text);

// Conversions by the default code page, as a whole: for what devices write in their own charset
// whatever the parameters say, and for text that has none.
void WidenText(NarrowStringView bytes, WideString& text);
void NarrowText(WideStringView text, NarrowString& bytes);

// Appends ";NAME=VALUE".
void AppendParameter(NarrowString& parameters, NarrowStringView name, NarrowStringView value);

// The parameters of a property whose value EncodeText has changed:
// ";CHARSET=utf-8;ENCODING=QUOTED-PRINTABLE".
NarrowStringView TextParameters();

// Whether an encoded text needs them: it holds an escape or a soft line break.
constexpr bool NeedsTextParameters(NarrowStringView encoded) {
  return encoded.find('=') != NarrowStringView::npos;
}

// A backslash in front of each backslash and semicolon, and back. Any other backslash stays.
void EscapeValue(NarrowString& value);
void UnescapeValue(NarrowString& value);

// Whether a semicolon stands at `index` behind an even number of backslashes, so that it divides.
bool IsFieldSeparator(NarrowStringView text, std::size_t index);

// Appends one property line with its CR LF. `parameters` holds its own leading semicolons.
void AppendProperty(NarrowString& out, NarrowStringView name, NarrowStringView parameters,
                    NarrowStringView value);

}  // namespace pim
