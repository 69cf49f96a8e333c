// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/icalendar/DownLines.h"

#include "platform/CodePages.h"
#include "support/QuotedPrintable.h"
#include "support/TextCodec.h"

namespace pim {
namespace {

// Quoted-printable of a part of a value that semicolons and the blanks around it would change.
void EscapePart(std::string& encoded) {
  if (encoded.ends_with(' ') || encoded.ends_with('\t'))
    encoded.replace(encoded.size() - 1, 1, encoded.back() == ' ' ? "=20" : "=09");
  std::string escaped;
  escaped.reserve(encoded.size());
  for (const char c : encoded) {
    if (c == ';') {
      escaped.append("=3B");
    } else {
      escaped.append(1, c);
    }
  }
  encoded = std::move(escaped);
}

}  // namespace

void DownLines::AppendWord(std::string_view name, std::string_view word) {
  AppendProperty(out_, name, {}, word);
}

bool DownLines::AppendText(std::string_view name, std::string_view text) {
  const bool isGood = MultiByteToWide(kCodePageUtf8, text, wide_);
  EncodeText(wide_, encoded_, HeadBlank::Escaped);
  AppendProperty(out_, name, NeedsTextParameters(encoded_) ? TextParameters() : NarrowStringView(),
                 encoded_);
  return isGood;
}

bool DownLines::AppendWithText(std::string_view name, std::string_view parameters,
                               std::string_view head, std::string_view text) {
  const bool isGood = MultiByteToWide(kCodePageUtf8, text, wide_);
  EncodeText(wide_, encoded_, HeadBlank::Escaped);
  EscapePart(encoded_);
  std::string all(parameters);
  if (NeedsTextParameters(encoded_)) all.append(TextParameters());
  AppendProperty(out_, name, all, std::string(head).append(encoded_));
  return isGood;
}

}  // namespace pim
