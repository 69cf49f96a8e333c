// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/vcard4/UriText.h"

#include <optional>

#include "platform/CodePages.h"
#include "platform/Utf16.h"
#include "support/Ascii.h"

namespace pim {
namespace {

constexpr bool StandsInUri(char c) {
  return IsLetter(c) || IsDigit(c) ||
         NarrowStringView("-._~@+!$*'()=&").find(c) != NarrowStringView::npos;
}

std::optional<unsigned> HexDigit(char c) {
  if (IsDigit(c)) return static_cast<unsigned>(c - '0');
  const char upper = ToUpper(c);
  if (upper >= 'A' && upper <= 'F') return static_cast<unsigned>(upper - 'A' + 10);
  return std::nullopt;
}

}  // namespace

bool HasLoneSurrogate(WideStringView text) {
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (!IsSurrogate(text[at])) continue;
    if (!IsPairAt(text, at)) return true;
    ++at;
  }
  return false;
}

TextLosses MakeUriPart(WideStringView text, NarrowString& part) {
  constexpr NarrowStringView kDigits = "0123456789ABCDEF";
  NarrowString bytes;
  AppendUtf8(text, bytes);
  part.clear();
  for (const char c : bytes) {
    if (StandsInUri(c)) {
      part += c;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      part.append(1, '%').append(1, kDigits[byte >> 4]).append(1, kDigits[byte & 15]);
    }
  }
  TextLosses losses;
  losses.characters = HasLoneSurrogate(text);
  return losses;
}

NarrowString ReadUriPart(NarrowStringView part) {
  NarrowString bytes;
  bytes.reserve(part.size());
  for (std::size_t at = 0; at < part.size(); ++at) {
    if (part[at] == '%' && part.size() - at > 2) {
      const auto high = HexDigit(part[at + 1]);
      const auto low = HexDigit(part[at + 2]);
      if (high && low) {
        bytes += static_cast<char>(*high << 4 | *low);
        at += 2;
        continue;
      }
    }
    bytes += part[at];
  }
  return bytes;
}

const MediaRow& MediaOf(WideStringView fileName, NarrowStringView bytes) {
  const WideStringView extension = fileName.substr(fileName.rfind(u'.') + 1);
  NarrowString ascii;
  for (const char16_t unit : extension) ascii += unit < 0x80 ? static_cast<char>(unit) : '?';
  for (const MediaRow& row : kMediaRows)
    if (EqualsIgnoringCase(row.extension, ascii)) return row;
  for (const MediaRow& row : kMediaRows)
    if (!row.start.empty() && bytes.starts_with(row.start)) return row;
  return kOtherMedia;
}

}  // namespace pim
