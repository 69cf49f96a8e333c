#include "app/commands/LinesOfRecords.h"

#include "support/Ascii.h"

namespace pim::app {

// What stands behind a record's END is its own too, but for blank lines and the END of the frame.
void LinesOfRecords::Take(const AccountEntry& entry) {
  if (entry.record < base_) return;
  const auto index = static_cast<std::size_t>(entry.record - base_);
  if (index >= lines_.size()) {
    lines_.resize(index + 1);
    lines_.back() = {entry.first, entry.last};
    hasEnded_ = false;
    return;
  }
  if (entry.verdict == Verdict::Frame) {
    const bool isEnd = EqualsIgnoringCase(entry.name, "END");
    if (!isEnd || hasEnded_) return;
    hasEnded_ = true;
  } else {
    hasEnded_ = false;
  }
  lines_.back().last = entry.last;
}

LinesOfRecords::Lines LinesOfRecords::Of(std::int64_t record) {
  Lines lines;
  for (; base_ <= record && !lines_.empty(); ++base_) {
    lines = lines_.front();
    lines_.pop_front();
  }
  return lines;
}

}  // namespace pim::app
