// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>

#include "pim/support/Strings.h"

namespace pim {

// What a host may be told of a text while it is read, besides the records. Nothing of it changes
// what is read. Notices come in the thread that reads; a text's watcher holds no more than those of
// the record being read.

// What is told.
enum class TextEvent : std::uint8_t {
  DateNotUnderstood,  // a date with a value that is none; the record stays without it
  RuleNotUnderstood,  // a repeat or exception rule; the item stays without it
  RecordsJoined,      // a BEGIN in the line of an END: it begins nothing, its record isn't seen
  EndsInsideRecord,   // the text ends ahead of the END of its last record, or of a calendar's frame
  EndsInsideValue,    // it ends behind that END, but inside a group of base64
};

// One thing that is told of a text. It holds copies and may be kept.
struct TextNotice {
  TextEvent event;  // what it is
  // From 1, each line feed ending one: where the property begins, for EndsInsideRecord the record.
  std::int64_t line = 0;
  NarrowString property = {};  // of a date or rule; ASCII, in capitals
  NarrowString value = {};     // the bytes of its value
  // What the record is called: a formatted name, else given and family name; a summary, else a
  // description. Empty where it has none, and for a frame.
  WideString record = {};
};

// Takes one notice. They come in the order of their lines, one for the text's end last, when their
// record is complete, and all of them before the reading ends.
using WatchText = std::function<void(const TextNotice& notice)>;

}  // namespace pim
