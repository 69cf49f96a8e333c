// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/input/TextWindows.h"

#include <algorithm>

#include "app/output/Output.h"

namespace pim::app {
namespace {

constexpr std::size_t kWindow = std::size_t{1} << 20;

}  // namespace

bool TextWindows::Next() {
  if (hasBegun_ && isLast()) return false;
  isFirst_ = !hasBegun_;
  hasBegun_ = true;
  linesAhead_ += std::ranges::count(text(), '\n');
  bytes_.erase(0, size_);
  // A record that is longer than what is there is looked for in twice as much each time.
  for (std::size_t wanted = kWindow;; wanted = 2 * bytes_.size()) {
    Fill(wanted);
    size_ = atEnd_ ? bytes_.size() : LastRecord();
    if (size_ != 0 || atEnd_) return true;
  }
}

void TextWindows::Fill(std::size_t wanted) {
  constexpr std::size_t kPiece = std::size_t{1} << 18;
  while (!atEnd_ && bytes_.size() < wanted) {
    const std::size_t before = bytes_.size();
    bytes_.resize(before + kPiece);
    const std::size_t count = source_.Read(bytes_.data() + before, kPiece);
    bytes_.resize(before + count);
    atEnd_ = count == 0;
  }
}

// Parts that end ahead of the bytes' end tell that the text is rejected there, and all of it
// belongs to one reading.
std::size_t TextWindows::LastRecord() const {
  const std::vector<TextPart> parts = PartsOf(bytes_);
  if (parts.empty()) return 0;
  if (parts.back().offset + parts.back().size != bytes_.size()) return bytes_.size();
  const auto last = std::find_if(parts.rbegin(), parts.rend(), [this](const TextPart& part) {
    return part.object != TextObject::Calendar && FormOf(part.object) == form_;
  });
  return last == parts.rend() ? 0 : last->offset;
}

int TellStretch(const std::string& path, Outcome& outcome, const TextWindows& windows,
                TextForm form, const std::function<void()>& begin) {
  // A text that ends inside something is told of where the file ends alone.
  std::erase_if(outcome.notices, [&windows](const TextNotice& notice) {
    return !windows.isLast() && (notice.event == TextEvent::EndsInsideRecord ||
                                 notice.event == TextEvent::EndsInsideValue);
  });
  const bool isRejected = outcome.result.outcome == TextOutcome::Rejected;
  if (!outcome.notices.empty() || isRejected) begin();
  TellMessages(path, outcome, windows.text(), "; what stands behind it isn't read",
               windows.linesAhead());
  if (windows.isFirst()) TellVersion(path, windows.text(), form);
  return isRejected ? kRejected : kDone;
}

}  // namespace pim::app
