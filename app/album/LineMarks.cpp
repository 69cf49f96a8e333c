// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/album/LineMarks.h"

#include <algorithm>

#include "app/output/Account.h"
#include "platform/CodePages.h"
#include "platform/Utf16.h"

namespace pim::app {
namespace {

// Of what a text says, and nothing limits.
constexpr std::size_t kMostBytes = 400;

bool IsKept(Verdict verdict) { return verdict == Verdict::Frame || verdict == Verdict::Kept; }

}  // namespace

void LineMarks::Add(LineMark mark) {
  if (HasRoom()) {
    marks_.push_back(std::move(mark));
    return;
  }
  if (further_++ == 0) {
    marks_.push_back({.first = mark.first, .last = mark.last, .verdict = mark.verdict});
  }
  marks_.back().last = mark.last;
  marks_.back().why = std::to_string(further_) + " more that aren't kept as they stand";
}

void LineMarks::Write(JsonWriter& json) const {
  json.StartArray();
  for (const LineMark& mark : marks_) {
    json.StartArray();
    json.Value(mark.first);
    json.Value(mark.last);
    json.Utf8(NameOf(mark.verdict));
    json.Utf8(mark.name);
    json.Utf8(mark.why);
    json.Value(WideStringView(mark.head));
    json.EndArray();
  }
  json.EndArray();
}

void MarkKeeper::BeginText(NarrowStringView text, std::int64_t linesAhead) {
  rest_ = text;
  line_ = 1;
  linesAhead_ = linesAhead;
}

// A record's entries come ahead of it, its BEGIN first.
void MarkKeeper::Take(const AccountEntry& entry) {
  LineMarks& marks = entry.record < 0 ? file_ : record_;
  const std::int64_t first = linesAhead_ + entry.first;
  if (entry.record >= 0 && marks.line() == 0) marks.SetLine(first);
  if (IsKept(entry.verdict)) return;
  LineMark mark{.first = first, .last = linesAhead_ + entry.last, .verdict = entry.verdict};
  if (marks.HasRoom()) {
    mark.name = entry.name.substr(0, kMostBytes);
    mark.why = ReasonsOf(entry).substr(0, kMostBytes);
    mark.head = HeadOf(entry.first, entry.last);
  }
  marks.Add(std::move(mark));
}

WideString MarkKeeper::HeadOf(std::int64_t first, std::int64_t last) {
  for (; line_ < first; ++line_)
    rest_.remove_prefix(std::min(rest_.find('\n'), rest_.size() - 1) + 1);
  NarrowStringView left = rest_;
  NarrowString bytes;
  for (std::int64_t line = first; line <= last && bytes.size() <= kMostBytes; ++line) {
    const std::size_t size = std::min(left.find('\n'), left.size());
    NarrowStringView text = left.substr(0, std::min(size, kMostBytes + 1));
    if (text.size() == size && text.ends_with('\r')) text.remove_suffix(1);
    bytes.append(line == first ? "" : "\n").append(text);
    left.remove_prefix(std::min(size + 1, left.size()));
  }
  const bool isCut = bytes.size() > kMostBytes;
  bytes.resize(std::min(bytes.size(), kMostBytes));
  WideString head;
  MultiByteToWide(kCodePageDefault, bytes, head);
  // A character that the cut goes through.
  if (isCut && head.ends_with(kReplacementCharacter)) head.pop_back();
  return head;
}

}  // namespace pim::app
