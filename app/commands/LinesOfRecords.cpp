// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/LinesOfRecords.h"

#include <utility>

#include "support/Ascii.h"

namespace pim::app {

// What stands behind a record's END is its own too, but for blank lines and the END of the frame.
// Objects that are no records begin and end inside one.
void LinesOfRecords::Take(const AccountEntry& entry) {
  if (entry.record < 0) return;
  const auto index = static_cast<std::size_t>(entry.record);
  if (index >= lines_.size()) {
    lines_.resize(index + 1);
    lines_.back() = {entry.first, entry.last};
    hasEnded_ = false;
    depth_ = 0;
    return;
  }
  if (entry.verdict == Verdict::Frame) {
    if (EqualsIgnoringCase(entry.name, "BEGIN")) ++depth_;
    if (!EqualsIgnoringCase(entry.name, "END")) return;
    if (depth_ > 0) {
      --depth_;
    } else if (std::exchange(hasEnded_, true)) {
      return;
    }
  }
  lines_.back().last = entry.last;
}

LinesOfRecords::Lines LinesOfRecords::Of(std::int64_t record) const {
  const auto index = static_cast<std::size_t>(record);
  return index < lines_.size() ? lines_[index] : Lines();
}

}  // namespace pim::app
