// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/vcard4/OldLines.h"

#include <algorithm>

#include "formats/vcard4/VCardRows.h"
#include "platform/Utf8.h"
#include "support/Ascii.h"
#include "support/PlainText.h"
#include "support/PropertyLines.h"
#include "support/QuotedPrintable.h"
#include "support/TextCodec.h"

namespace pim {
namespace {

// Up to here a plain text stands as it is.
constexpr std::size_t kShortText = 64;

bool StandsAsItIs(NarrowStringView text) {
  return text.size() <= kShortText && !text.starts_with(' ') && !text.starts_with('\t') &&
         std::ranges::all_of(text, [](char c) { return IsPlain(c); });
}

}  // namespace

bool OldLines::Encode(NarrowStringView text) {
  encoded_ = text;
  if (StandsAsItIs(text)) return true;
  const bool hadNul = std::erase(encoded_, '\0') != 0;
  const bool isUtf8 = Utf8ToWide(encoded_, wide_);
  EncodeText(wide_, encoded_, HeadBlank::Escaped);
  return isUtf8 && !hadNul;
}

bool OldLines::AppendText(NarrowStringView name, NarrowStringView parameters,
                          NarrowStringView text) {
  const bool isWhole = Encode(text);
  parameters_ = parameters;
  if (NeedsTextParameters(encoded_)) parameters_.append(TextParameters());
  Append(name, parameters_, encoded_);
  return isWhole;
}

bool OldLines::AppendComponents(NarrowStringView name, NarrowStringView parameters,
                                std::span<const NarrowString> components) {
  bool isWhole = true;
  const auto encode = [this, &isWhole](const NarrowString& component) -> NarrowString& {
    isWhole = Encode(component) && isWhole;
    return encoded_;
  };
  const bool needsParameters = JoinComponents(components, encode, value_);
  parameters_ = parameters;
  if (needsParameters) parameters_.append(TextParameters());
  Append(name, parameters_, value_);
  return isWhole;
}

bool OldLines::AppendNumber(NarrowStringView parameters, NarrowStringView number) {
  work_ = number;
  bool isWhole = std::erase(work_, '\0') == 0 && Utf8ToWide(work_, wide_);
  for (char& c : work_) {
    if (c != '\r' && c != '\n') continue;
    c = ' ';
    isWhole = false;
  }
  const NarrowStringView value = TrimLeft(work_);
  isWhole = isWhole && value.size() == number.size();
  if (!value.empty()) Append(RowOf(CardProperty::Telephone).v21, parameters, value);
  return isWhole;
}

void OldLines::Append(NarrowStringView name, NarrowStringView parameters, NarrowStringView value) {
  AppendProperty(out_, name, parameters, value);
}

}  // namespace pim
