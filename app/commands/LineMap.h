// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <vector>

#include "pim/stream/TextRejects.h"

namespace pim::app {

// The lines of a text by those of the text without its rejected parts.
class LineMap {
 public:
  explicit LineMap(const std::vector<RejectedPart>& parts) {
    std::int64_t left = 0;
    for (const RejectedPart& part : parts) {
      left += part.lastLine - part.firstLine + 1;
      rows_.push_back({part.lastLine + 1 - left, left});
    }
  }
  std::int64_t Original(std::int64_t line) const {
    const auto next = std::ranges::upper_bound(rows_, line, {}, &Row::first);
    return next == rows_.begin() ? line : line + std::prev(next)->left;
  }
  // The same for the last one of lines that begin with `first`: those up to the next part.
  std::int64_t OriginalLast(std::int64_t first, std::int64_t last) const {
    const auto next = std::ranges::upper_bound(rows_, first, {}, &Row::first);
    if (next != rows_.end()) last = std::min(last, next->first - 1);
    return Original(last);
  }

 private:
  struct Row {
    std::int64_t first;  // line behind a part
    std::int64_t left;   // lines that are left out ahead of it
  };
  std::vector<Row> rows_;
};

}  // namespace pim::app
