// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/icalendar/ItemText.h"

#include "platform/CodePages.h"
#include "platform/Utf16.h"

namespace pim {
namespace {

constexpr bool IsControl(char16_t unit) {
  return (unit < u' ' && unit != u'\t' && unit != u'\n') || unit == 0x7F;
}

// Where the first unit stands that can't go out as it is; the text's size without one.
std::size_t FindBadUnit(WideStringView wide) {
  for (std::size_t at = 0; at < wide.size(); ++at) {
    if (IsPairAt(wide, at)) {
      ++at;
    } else if (IsControl(wide[at]) || IsSurrogate(wide[at])) {
      return at;
    }
  }
  return wide.size();
}

}  // namespace

ItemText::ItemText(WideStringView wide) {
  if (!wide.empty() && wide.find_first_not_of(u" \t") == WideStringView::npos) {
    loss = FormatReason::BadCharacter;
    return;
  }
  const std::size_t bad = FindBadUnit(wide);
  if (bad == wide.size()) {
    AppendUtf8(wide, text);
    return;
  }
  loss = FormatReason::LineEnd;
  WideString good(wide);
  for (std::size_t at = bad; at < good.size(); ++at) {
    if (good[at] == u'\r') {
      good[at] = u'\n';
    } else if (IsPairAt(good, at)) {
      ++at;
    } else if (IsControl(good[at]) || IsSurrogate(good[at])) {
      good[at] = kReplacementCharacter;
      loss = FormatReason::BadCharacter;
    }
  }
  AppendUtf8(good, text);
}

}  // namespace pim
