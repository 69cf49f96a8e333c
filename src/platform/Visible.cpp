// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/Visible.h"

#include <algorithm>

#include "platform/CodePages.h"

namespace pim {
namespace {

constexpr bool IsControl(char16_t unit) {
  return unit < 0x20 || (unit >= 0x7F && unit < 0xA0)  // C0, DEL, C1
         || (unit >= 0x2028 && unit <= 0x202E)         // separators, embeddings, overrides
         || (unit >= 0x2066 && unit <= 0x2069);        // isolates
}

void AppendEscape(char16_t unit, std::string& bytes) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  bytes += "\\u";
  for (const unsigned shift : {12U, 8U, 4U, 0U}) bytes += kDigits[unit >> shift & 0xFU];
}

}  // namespace

std::string VisibleUtf8(std::u16string_view text, LineFeeds lineFeeds) {
  const auto is_hidden = [lineFeeds](char16_t unit) {
    return IsControl(unit) && (unit != u'\n' || lineFeeds == LineFeeds::Shown);
  };
  std::string bytes;
  while (!text.empty()) {
    const auto hidden = std::ranges::find_if(text, is_hidden);
    const auto run = static_cast<std::size_t>(hidden - text.begin());
    AppendUtf8(text.substr(0, run), bytes);
    if (run == text.size()) break;
    AppendEscape(*hidden, bytes);
    text.remove_prefix(run + 1);
  }
  return bytes;
}

}  // namespace pim
