// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "stream/TextWatcher.h"

#include "stream/ObjectWords.h"
#include "support/Ascii.h"

namespace pim {

WordBehindEnd WordOfEnd(NarrowStringView value) {
  for (std::size_t at = 0; at < value.size(); ++at) {
    const NarrowStringView rest = value.substr(at);
    if (rest.size() <= kBeginWord.size() || rest[kBeginWord.size()] != ':') continue;
    if (!EqualsIgnoringCase(rest.substr(0, kBeginWord.size()), kBeginWord)) continue;
    return {Trim(value.substr(0, at)), true};
  }
  return {Trim(value)};
}

void TextWatcher::Note(TextEvent event, NarrowStringView property, NarrowStringView value) {
  noted_.push_back({event, lines_.First(), NarrowString(property), NarrowString(value), {}});
}

void TextWatcher::TellNoted(WideStringView record) {
  for (TextNotice& notice : std::exchange(noted_, {})) {
    notice.record = record;
    watch_(notice);
  }
}

void TextWatcher::TellEnd(WideStringView record) {
  if (openRecord_ != 0) {
    watch_({TextEvent::EndsInsideRecord, openRecord_, {}, {}, WideString(record)});
  } else if (openFrame_ != 0) {
    watch_({TextEvent::EndsInsideRecord, openFrame_, {}, {}, {}});
  } else {
    watch_({TextEvent::EndsInsideValue, lines_.OpenFirst(), {}, {}, WideString(record)});
  }
}

}  // namespace pim
