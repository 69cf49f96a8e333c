// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <vector>

#include "app/input/PreparedText.h"
#include "pim/stream/TextRejects.h"

namespace pim::app {

// The lines of a file by those of what is read of it: of the text without its rejected parts, which
// may have been prepared.
class LineMap {
 public:
  // `prepared` is null for a text that is the file's own, and must outlive this.
  explicit LineMap(const std::vector<RejectedPart>& parts, const PreparedText* prepared = nullptr)
      : prepared_(prepared) {
    std::int64_t left = 0;
    for (const RejectedPart& part : parts) {
      left += part.lastLine - part.firstLine + 1;
      rows_.push_back({part.lastLine + 1 - left, left});
    }
  }
  std::int64_t Original(std::int64_t line) const {
    const auto next = std::ranges::upper_bound(rows_, line, {}, &Row::first);
    if (next != rows_.begin()) line += std::prev(next)->left;
    return prepared_ == nullptr ? line : prepared_->Original(line);
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
  const PreparedText* prepared_;
  std::vector<Row> rows_;
};

}  // namespace pim::app
