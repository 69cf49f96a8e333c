// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "pim/Export.h"
#include "pim/stream/TextAccount.h"
#include "pim/stream/TextHead.h"

namespace pim {

// Which parts of a text are no good, so that the rest can be read. Any number of threads may look
// into texts at once, the same one too.

// What of a text is rejected when it is read. The other bytes, put together as they stand, are a
// text that is read to its end, and gives the other records.
struct RejectedPart {
  std::size_t offset = 0;             // in the text, in bytes
  std::size_t size = 0;               // in bytes
  std::int64_t firstLine = 0;         // physical lines of the text, from 1
  std::int64_t lastLine = 0;          // the same as the first for a single line
  std::int64_t line = 0;              // the one in which it is rejected
  std::size_t lineOffset = 0;         // where the property begins that is rejected, in bytes
  TextFault fault = TextFault::None;  // why
  NarrowString property;              // the name of that property
  // A record from its BEGIN to its END and what else would land on it, or to where the next one
  // begins; nothing for a line that stands ahead of the first record or behind an END.
  std::optional<TextObject> object;
};

// All that is rejected of a text.
struct RejectedParts {
  std::vector<RejectedPart> parts;  // in order
  std::int64_t records = 0;         // that begin in the text, the rejected ones too
};

// What a reader of that form rejects of the text. Linear in the text, however much of it is
// rejected. A byte order mark is not stepped over. Throws std::bad_alloc.
PIM_EXPORT RejectedParts RejectedPartsOf(NarrowStringView text, TextForm form);

// A copy of the text without them, which must be the parts of that text. Throws std::bad_alloc.
PIM_EXPORT NarrowString WithoutParts(NarrowStringView text, const std::vector<RejectedPart>& parts);

}  // namespace pim
