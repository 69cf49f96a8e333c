// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/album/LineMarks.h"

#include <algorithm>
#include <span>

#include "pim/manager/TextReading.h"

namespace pim::app {
namespace {

// Of what a text says, and nothing limits.
constexpr std::size_t kMostBytes = 400;

// What a page doesn't show, though it is kept.
constexpr std::string_view kUnshown = "unshown";

bool IsKept(Verdict verdict) { return verdict == Verdict::Frame || verdict == Verdict::Kept; }

// Whether the entry is what the record's picture comes from.
bool IsOfPicture(const AccountEntry& entry) {
  static const auto kNumber = [] {
    const std::span<const NarrowStringView> fields = RecordFields(TextForm::VCard);
    return std::ranges::find(fields, "photo") - fields.begin();
  }();
  return (entry.into >> kNumber & 1U) != 0;
}

}  // namespace

void LineMarks::Add(LineMark mark) {
  if (HasRoom()) {
    marks_.push_back(std::move(mark));
    return;
  }
  if (further_++ == 0)
    marks_.push_back({.first = mark.first, .last = mark.last, .verdict = mark.verdict});
  marks_.back().last = mark.last;
}

void LineMarks::AddPicture(std::string_view reason) {
  if (!picture_) return;
  picture_->verdict = kUnshown;
  picture_->why = words_->Of(reason);
  // The row that stands for the rest stays the last one.
  const auto end = marks_.end() - (further_ != 0 ? 1 : 0);
  const auto place =
      std::ranges::upper_bound(marks_.begin(), end, picture_->first, {}, &LineMark::first);
  marks_.insert(place, std::move(*picture_));
  picture_.reset();
}

std::int64_t LineMarks::count() const {
  return static_cast<std::int64_t>(marks_.size()) + std::max<std::int64_t>(further_ - 1, 0);
}

void LineMarks::Write(JsonWriter& json) const {
  json.StartArray();
  for (const LineMark& mark : marks_) {
    const bool isRest = further_ != 0 && &mark == &marks_.back();
    json.StartArray();
    json.Value(mark.first);
    json.Value(mark.last);
    json.Utf8(mark.verdict);
    json.Value(WideStringView(mark.name));
    json.Value(WideStringView(isRest ? words_->More(further_) : mark.why));
    json.Value(WideStringView(mark.head));
    json.EndArray();
  }
  json.EndArray();
}

void MarkKeeper::BeginText(TextForm form, NarrowStringView text, std::int64_t linesAhead) {
  form_ = form;
  rest_ = text;
  line_ = 1;
  linesAhead_ = linesAhead;
}

// A record's entries come ahead of it, its BEGIN first.
void MarkKeeper::Take(const AccountEntry& entry) {
  LineMarks& marks = entry.record < 0 ? file_ : record_;
  const std::int64_t first = linesAhead_ + entry.first;
  if (entry.record >= 0 && marks.line() == 0) marks.SetLine(first);
  const bool isKept = IsKept(entry.verdict);
  const bool isPicture = form_ == TextForm::VCard && IsOfPicture(entry);
  if (isKept && !isPicture) return;
  LineMark mark{.first = first, .last = linesAhead_ + entry.last, .verdict = NameOf(entry.verdict)};
  if (isPicture || marks.HasRoom()) {
    mark.name = DecodedHead(entry.name, kMostBytes);
    mark.why = words_->Of(entry, kMostBytes);
    mark.head = HeadOf(entry.first, entry.last);
  }
  if (isPicture) marks.SetPicture(mark);
  if (!isKept) marks.Add(std::move(mark));
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
  return DecodedHead(bytes, kMostBytes);
}

}  // namespace pim::app
