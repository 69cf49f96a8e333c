// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/prepare/Preparer.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "formats/prepare/BlockSteps.h"
#include "support/ByteOrderMark.h"

namespace pim {
namespace {

constexpr std::string_view kCardWord = "VCARD";
constexpr std::string_view kFrameWord = "VCALENDAR";
constexpr std::string_view kItemWords[] = {"VEVENT", "VTODO", "VMEMO", "VJOURNAL"};

bool IsItemWord(std::string_view word) {
  return std::ranges::find(kItemWords, word) != std::end(kItemWords);
}
bool IsRecordWord(std::string_view word) {
  return word == kCardWord || word == kFrameWord || IsItemWord(word);
}

std::string InCapitals(std::string_view text) {
  std::string capitals;
  for (const char c : Trim(text)) capitals += ToUpper(c);
  return capitals;
}

std::string_view ValueOf(std::string_view line, const LineHead& head) {
  return head.hasColon() ? Trim(line.substr(head.colon + 1)) : std::string_view();
}

}  // namespace

Preparer::Preparer(PrepareStepMask steps, const PrepareObserver& observer, TakePrepared take,
                   FindGroups groups)
    : notes_(observer),
      bytes_(steps, notes_),
      take_(std::move(take)),
      findGroups_(std::move(groups)),
      steps_(steps) {
  Room(1);
}

char* Preparer::Room(std::size_t size) {
  if (capacity_ - size_ < size) {
    const std::size_t wanted = std::max(size_ + size, 2 * size_);
    auto grown = std::make_unique_for_overwrite<char[]>(wanted);
    std::copy_n(text_.get(), size_, grown.get());
    text_ = std::move(grown);
    capacity_ = wanted;
  }
  return text_.get() + size_;
}

void Preparer::Took(std::size_t count) {
  const std::string_view piece(text_.get() + size_, count);
  if (bytes_.Passes(piece)) {
    size_ += count;
  } else {
    mended_.clear();
    bytes_.Append(piece, false, line_, mended_);
    std::copy_n(mended_.data(), mended_.size(), Room(mended_.size()));
    size_ += mended_.size();
  }
  Scan(false);
}

void Preparer::Finish() {
  mended_.clear();
  bytes_.Append({}, true, line_, mended_);
  std::copy_n(mended_.data(), mended_.size(), Room(mended_.size()));
  size_ += mended_.size();
  Scan(true);
  if (block_.kind != BlockKind::None) CloseBlock(at_, line_, {});
  CloseFrame();
  EmitAsItIs(at_, line_);
  notes_.Flush();
}

void Preparer::Scan(bool isLast) {
  if (!isBegun_) {
    if (size_ < kUtf8Mark.size() && !isLast) return;
    isBegun_ = true;
    if (Bytes(0, size_).starts_with(kUtf8Mark)) {
      at_ = kUtf8Mark.size();
      EmitAsItIs(at_, line_);
    }
  }
  while (at_ < size_) {
    PassPlainLines();
    if (at_ == size_) break;
    const std::size_t from = std::max(at_, searched_);
    const auto* const feed =
        static_cast<const char*>(std::memchr(text_.get() + from, '\n', size_ - from));
    if (feed == nullptr && !isLast) break;
    const std::size_t end =
        feed == nullptr ? size_ : static_cast<std::size_t>(feed + 1 - text_.get());
    const std::string_view line = Bytes(at_, end);
    TakeLine(line);
    isFeedAlone_ = line.ends_with('\n') && !line.ends_with("\r\n");
    at_ = end;
    ++line_;
  }
  const bool isInBlock = block_.kind != BlockKind::None;
  EmitAsItIs(isInBlock ? block_.begin : at_, isInBlock ? block_.line : line_);
  // What a long record or line has is looked at once, and stays where it is.
  if (begin_ != 0) std::memmove(text_.get(), text_.get() + begin_, size_ - begin_);
  size_ -= begin_;
  searched_ = size_;
  at_ -= begin_;
  if (isInBlock) block_.begin -= begin_;
  begin_ = 0;
}

void Preparer::TakeLine(std::string_view line) {
  switch (joints_.Take(line, Has(PrepareStep::Base64))) {
    case LineJoints::Kind::Begins:
      return TakeProperty(line);
    case LineJoints::Kind::Base64:
      block_.needsWork = true;
      break;
    case LineJoints::Kind::Blank:
    case LineJoints::Kind::GoesOn:
      break;
  }
}

void Preparer::TakeProperty(std::string_view line) {
  const LineHead& head = joints_.head();
  const bool isInAgent = std::exchange(isBehindAgent_, false);
  if (EqualsIgnoringCase(head.name, "BEGIN")) {
    TakeBegin(InCapitals(ValueOf(line, head)), isInAgent);
  } else if (EqualsIgnoringCase(head.name, "END")) {
    if (!Has(PrepareStep::Joined) || !PartJoined(line))
      TakeEnd(line, InCapitals(ValueOf(line, head)));
  } else if (block_.kind != BlockKind::None) {
    LookAt(line, head);
  } else if (isFrameOpen_) {
    TakeFrameLine(line, head.name);
  }
}

void Preparer::TakeBegin(const std::string& word, bool isInAgent) {
  if (word == kCardWord) {
    if (block_.kind == BlockKind::Card && isInAgent) {
      ++block_.depth;
      return;
    }
    CloseUnended(word);
    OpenBlock(BlockKind::Card, word);
  } else if (word == kFrameWord) {
    if (block_.kind != BlockKind::None) CloseBlock(at_, line_, {});
    if (isFrameOpen_) {
      EmitAsItIs(at_, line_);
      CloseFrame();
      if (Has(PrepareStep::MissingEnd)) Emit(MissingEnd(word), line_, 0);
    }
    isFrameOpen_ = true;
  } else if (IsItemWord(word)) {
    CloseUnended(word);
    OpenBlock(BlockKind::Item, word);
  } else if (block_.kind == BlockKind::None && isFrameOpen_) {
    OpenBlock(BlockKind::Component, word);
  }
}

void Preparer::TakeEnd(std::string_view line, const std::string& word) {
  const std::size_t end = at_ + line.size();
  if (block_.kind != BlockKind::None && word == block_.word) {
    if (block_.depth == 0) return CloseBlock(end, line_ + 1, {});
    --block_.depth;
  } else if (word == kFrameWord && isFrameOpen_) {
    if (block_.kind != BlockKind::None) CloseBlock(at_, line_, {});
    EmitAsItIs(at_, line_);
    CloseFrame();
  }
}

// "END:VCARDBEGIN:VCARD".
bool Preparer::PartJoined(std::string_view line) {
  constexpr std::string_view kBegin = "BEGIN:";
  const LineHead& head = joints_.head();
  if (!head.hasColon()) return false;
  std::size_t at = head.colon + 1;
  while (at < line.size() && !EqualsIgnoringCase(line.substr(at, kBegin.size()), kBegin)) ++at;
  if (at == line.size()) return false;
  const std::string word = InCapitals(line.substr(head.colon + 1, at - head.colon - 1));
  const std::string_view rest = line.substr(at);
  if (!IsRecordWord(word) || !IsRecordWord(InCapitals(rest.substr(kBegin.size())))) return false;
  const std::string ending = "END:" + word + (line.ends_with("\r\n") ? "\r\n" : "\n");
  if (block_.kind != BlockKind::None && block_.word == word && block_.depth == 0) {
    CloseBlock(at_, line_, ending);
  } else if (word == kFrameWord && isFrameOpen_) {
    if (block_.kind != BlockKind::None) CloseBlock(at_, line_, {});
    EmitAsItIs(at_, line_);
    CloseFrame();
    Emit(ending, line_, 0);
  } else {
    return false;
  }
  notes_.Add(PrepareStep::Joined, line_, line_, "END and BEGIN parted");
  at_ += at;
  begin_ = at_;
  TakeLine(rest);
  return true;
}

// A property of the calendar itself.
void Preparer::TakeFrameLine(std::string_view line, std::string_view name) {
  constexpr std::string_view kIdle[] = {"PRODID", "CALSCALE", "METHOD", "GEO", "VERSION"};
  const std::string_view value = ValueOf(line, joints_.head());
  if (EqualsIgnoringCase(name, "TZ")) {
    frame_.zone.TakeOffset(value);
  } else if (EqualsIgnoringCase(name, "DAYLIGHT")) {
    frame_.zone.TakeDaylight(value);
  } else if (EqualsIgnoringCase(name, "VERSION") && value == "2.0" && Has(PrepareStep::ICalendar)) {
    EmitAsItIs(at_, line_);
    frame_.down = std::make_unique<ICalendarDown>();
    std::string older(line);
    older.replace(static_cast<std::size_t>(value.data() - line.data()), value.size(), "1.0");
    Emit(older, line_, 1);
    begin_ = at_ + line.size();
    beginLine_ = line_ + 1;
    notes_.Add(PrepareStep::ICalendar, line_, line_, "iCalendar 2.0 becomes vCalendar 1.0");
  } else if (frame_.down && EqualsIgnoringCase(name, "X-WR-TIMEZONE") &&
             frame_.down->TakeFloatingZone(std::string(value))) {
    notes_.Add(PrepareStep::ICalendar, line_, line_, "times without a zone are of this one");
  } else if (frame_.down && std::ranges::none_of(kIdle, [name](std::string_view idle) {
               return EqualsIgnoringCase(idle, name);
             })) {
    notes_.AddLoss(line_, {std::string(name)});
  }
}

void Preparer::LookAt(std::string_view line, const LineHead& head) {
  bool needs = head.GoesOn();
  if (!head.params.empty()) {
    needs = needs || (Has(PrepareStep::Charsets) && MayNeedCharset(joints_.coding()));
    needs = needs ||
            (block_.kind == BlockKind::Card && Has(PrepareStep::Types) && MayNeedTypesParted(head));
  }
  if (block_.kind == BlockKind::Card) {
    needs = needs || (Has(PrepareStep::Prefixes) && MayNeedPrefixOff(head));
    isBehindAgent_ = EqualsIgnoringCase(head.name, "AGENT") && ValueOf(line, head).empty();
    needs = needs || (Has(PrepareStep::VCard) && SaysModernVersion(head, ValueOf(line, head)));
  } else if (block_.kind == BlockKind::Item && !frame_.down) {
    block_.hasDisplayAlarm = block_.hasDisplayAlarm || EqualsIgnoringCase(head.name, "DALARM");
    // An empty one is none.
    block_.hasAudioAlarm = block_.hasAudioAlarm || (EqualsIgnoringCase(head.name, "AALARM") &&
                                                    !ValueOf(line, head).empty());
    needs = needs || (frame_.zone.isKnown() && Has(PrepareStep::Times) && TellsTime(head.name));
  }
  block_.needsWork = block_.needsWork || needs;
}

void Preparer::OpenBlock(BlockKind kind, const std::string& word) {
  block_ = Block();
  block_.begin = at_;
  block_.line = line_;
  block_.word = word;
  block_.kind = kind;
  block_.needsWork = frame_.down != nullptr && kind != BlockKind::Card;
}

// A record begins where another one is open: one of the same kind lacks its END.
void Preparer::CloseUnended(const std::string& word) {
  if (block_.kind == BlockKind::None) return;
  const bool isMended = block_.word == word && Has(PrepareStep::MissingEnd);
  std::string missing;
  for (int depth = 0; isMended && depth <= block_.depth; ++depth) missing += MissingEnd(word);
  CloseBlock(at_, line_, missing);
}

void Preparer::CloseBlock(std::size_t end, std::int64_t endLine, std::string_view missing) {
  const bool raises = Has(PrepareStep::Alarms) && block_.hasDisplayAlarm && !block_.hasAudioAlarm;
  if (block_.needsWork || raises) {
    EmitBlock(end, endLine, missing);
  } else if (!missing.empty()) {
    EmitAsItIs(end, endLine);
    Emit(missing, endLine, 0);
  }
  block_ = Block();
}

void Preparer::CloseFrame() {
  ReleaseWaiting(true);
  frame_ = FrameState();
  isFrameOpen_ = false;
}

}  // namespace pim
