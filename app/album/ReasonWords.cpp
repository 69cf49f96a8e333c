// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/album/ReasonWords.h"

#include <stdexcept>

#include "platform/CodePages.h"
#include "platform/Utf16.h"

namespace pim::app {

std::string_view ReasonOf(TextFault fault) {
  switch (fault) {
    case TextFault::None:
      break;
    case TextFault::NoParameter:
      return "no-parameter";
    case TextFault::NoParameterValue:
      return "no-parameter-value";
    case TextFault::NoBase64:
      return "no-base64";
    case TextFault::NoMemory:
      return "no-memory";
  }
  return {};
}

WideString DecodedHead(NarrowStringView bytes, std::size_t longest) {
  const bool isCut = bytes.size() > longest;
  WideString head;
  MultiByteToWide(kCodePageDefault, bytes.substr(0, longest), head);
  if (!isCut) return head;
  // A character that the cut goes through.
  if (head.ends_with(kReplacementCharacter)) head.pop_back();
  return head += u'\u2026';
}

ReasonWords::ReasonWords(const LabelFile& file) {
  constexpr WideStringView kPrefix = u"REASON_";
  for (const auto& [key, text] : ReadLabels(file.text)) {
    if (key.starts_with(kPrefix))
      byReason_.emplace(Utf8FromWide(WideStringView(key).substr(kPrefix.size())), text);
  }
}

const WideString& ReasonWords::Of(std::string_view reason) const {
  const auto found = byReason_.find(reason);
  if (found == byReason_.end()) throw std::logic_error("no words for " + std::string(reason));
  return found->second;
}

WideString ReasonWords::Of(const AccountEntry& entry, std::size_t longest) const {
  WideString reasons;
  if (entry.fault != TextFault::None) reasons = Of(ReasonOf(entry.fault));
  for (LossMask left = entry.why; left != 0; left &= left - 1) {
    const LossRow& loss = FirstOf(left);
    reasons.append(reasons.empty() ? u"" : u"; ").append(Of(loss.name));
    if (loss.code == LOSS_TYPE_IGNORED && !entry.ignored.empty())
      reasons.append(u" (").append(DecodedHead(entry.ignored, longest)).append(u")");
  }
  return reasons;
}

WideString ReasonWords::More(std::int64_t count) const {
  constexpr WideStringView kNumber = u"{n}";
  WideString text = Of("more");
  const std::string digits = std::to_string(count);
  if (const std::size_t place = text.find(kNumber); place != WideString::npos)
    text.replace(place, kNumber.size(), WideString(digits.begin(), digits.end()));
  return text;
}

}  // namespace pim::app
