// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/charsets/CharsetLines.h"

#include "formats/prepare/ValueBytes.h"
#include "platform/CodePages.h"
#include "support/Ascii.h"

namespace pim {
namespace {

bool IsAscii(std::string_view bytes) {
  for (const char c : bytes)
    if (static_cast<unsigned char>(c) >= 0x80) return false;
  return true;
}

// As the readers choose it: a number is read in the default code page, whatever its line says.
std::uint32_t CodePageOf(const LineHead& head, std::string_view charset) {
  if (EqualsIgnoringCase(head.name, "TEL")) return kCodePageDefault;
  if (IsWordInText(charset, "UTF-8", true)) return kCodePageUtf8;
  return IsWordInText(charset, "SHIFT_JIS", true) ? kCodePageShiftJis : kCodePageDefault;
}

}  // namespace

void CharsetLines::TakeProperty(std::string_view property, std::int64_t first, std::int64_t last) {
  const LineHead head = LineHead::Of(property);
  if (!head.hasColon()) return;
  const LineCoding coding = LineCoding::Of(head.params);
  if (coding.isBase64) return;
  if (!coding.isQuotedPrintable && IsAscii(property)) return;
  const ValueBytes value(property.substr(head.colon + 1), coding.isQuotedPrintable);
  if (IsAscii(value.bytes)) return;
  std::u16string wide;
  const std::uint32_t page = CodePageOf(head, coding.charset);
  if (MultiByteToWide(page, value.bytes, wide)) return;
  take_({first, last, std::string(head.name), std::string(Trim(value.bytes)),
         page != kCodePageDefault});
}

}  // namespace pim
