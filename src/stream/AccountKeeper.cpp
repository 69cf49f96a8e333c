// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "stream/AccountKeeper.h"

namespace pim {
namespace {

struct VerdictRow {
  NarrowStringView name;
  std::int64_t AccountTotals::*count;
};
// By the numbers of Verdict.
constexpr VerdictRow kVerdicts[] = {
    {"frame", &AccountTotals::frame},     {"kept", &AccountTotals::kept},
    {"changed", &AccountTotals::changed}, {"dropped", &AccountTotals::dropped},
    {"rejected", &AccountTotals::unread}, {"unread", &AccountTotals::unread},
};
const VerdictRow& RowOf(Verdict verdict) { return kVerdicts[static_cast<std::size_t>(verdict)]; }

constexpr LossMask kPlacesOfLines = LOSS_BEHIND_END | LOSS_NESTED;

}  // namespace

NarrowStringView NameOf(Verdict verdict) { return RowOf(verdict).name; }

void AccountTotals::Add(const AccountEntry& entry) {
  const std::int64_t count = entry.last - entry.first + 1;
  lines += count;
  this->*RowOf(entry.verdict).count += count;
}

AccountTotals& AccountTotals::operator+=(const AccountTotals& other) {
  lines += other.lines;
  for (const auto count : {&AccountTotals::frame, &AccountTotals::kept, &AccountTotals::changed,
                           &AccountTotals::dropped, &AccountTotals::unread})
    this->*count += other.*count;
  return *this;
}

NarrowStringView TextOf(TextFault fault) {
  switch (fault) {
    case TextFault::None:
      break;
    case TextFault::NoParameter:
      return "no parameter behind a semicolon";
    case TextFault::NoParameterValue:
      return "no value behind the equals sign of a parameter";
    case TextFault::NoBase64:
      return "a byte that belongs to no base64";
    case TextFault::NoMemory:
      return "not enough memory";
  }
  return {};
}

AccountKeeper::AccountKeeper(TakeEntry take, VObjectParser& parser,
                             std::span<const std::uint8_t> fields, NameOfRecord nameOfLast)
    : take_(std::move(take)),
      parser_(parser),
      fields_(fields),
      lines_(parser),
      places_(fields.size()),
      nameOfLast_(std::move(nameOfLast)) {}

LossMask AccountKeeper::PlaceOfLine() const {
  if (record_ < 0) return LOSS_BEFORE_FIRST;
  return isOpen_ ? 0 : LossMask{LOSS_BEHIND_END};
}

void AccountKeeper::Begin(NarrowStringView name, PropertyKind kind, LossMask why) {
  if (record_ < 0) Flush();
  TakeBlankLines(lines_.First());
  if (kind != PropertyKind::Frame) why |= PlaceOfLine();
  Append(1, Verdict::Frame, why, name);
  entries_.back().kind = kind;
  entries_.back().isDecided = false;
  parser_.valueLosses = 0;
  inProperty_ = true;
  hasValue_ = beginsRecord_ = false;
}

void AccountKeeper::TellParameter(LossMask losses, NarrowStringView name, NarrowStringView value) {
  Tell(losses);
  Entry& entry = entries_.back();
  if ((losses & LOSS_TYPE_IGNORED) == 0 || entry.ignoredSize != 0) return;
  const std::size_t before = names_.size();
  names_.append(name);
  if (!value.empty()) names_.append(1, '=').append(value);
  entry.ignoredSize = static_cast<std::uint32_t>(names_.size() - before);
}

void AccountKeeper::TellFrame(LossMask losses) {
  Entry& entry = entries_.back();
  entry.kind = PropertyKind::Unknown;
  entry.why |= losses | PlaceOfLine();
}

void AccountKeeper::Write(std::uint8_t number, Written written) {
  Place& place = places_[number];
  const std::uint32_t current = Current();
  entries_[current].written |= 1U << fields_[number];
  if (!written.same) {
    for (const Holder& holder : place.holders) {
      if (holder.follows) continue;
      --entries_[holder.entry].held;
      entries_[holder.entry].isReplaced = true;
    }
    place.holders.clear();
  }
  if (place.needs != kNone) --entries_[place.needs].needed;
  place.needs = written.same || written.isJoint ? kNone : current;
  if (place.needs != kNone) ++entries_[current].needed;
  if (!written.says) return;
  place.holders.push_back({current, written.follows});
  if (!written.follows) ++entries_[current].held;
}

void AccountKeeper::Add(std::uint8_t field) {
  Entry& entry = entries_.back();
  entry.into |= 1U << field;
  ++entry.needed;
}

void AccountKeeper::EndProperty() {
  Entry& entry = entries_.back();
  const std::int64_t last = lines_.Last();
  entry.lines = static_cast<std::uint32_t>(last - lastLine_);
  lastLine_ = last;
  const LossMask losses = std::exchange(parser_.valueLosses, 0);
  if (entry.kind == PropertyKind::Frame) {
    // What a carriage return has joined on may be a line of its own.
    if (!beginsRecord_ && (losses & LOSS_RETURN) != 0) TellFrame(LOSS_RETURN);
  } else {
    entry.why |= losses;
  }
  if (!hasValue_ && entry.kind == PropertyKind::Known && (entry.why & LOSS_BAD_BASE64) == 0)
    entry.why |= LOSS_EMPTY;
  inProperty_ = false;
  if (entry.kind == PropertyKind::Frame) return;
  if (entry.kind == PropertyKind::Unknown || (entry.why & LOSS_EMPTY) != 0) {
    entry.verdict = Verdict::Dropped;
    entry.isDecided = true;
    JoinAlike();
  }
}

void AccountKeeper::TakeJunk() {
  if (record_ < 0) Flush();
  TakeBlankLines(lines_.First());
  const std::int64_t last = lines_.Last();
  Append(last - lastLine_, Verdict::Dropped, LOSS_NO_COLON | PlaceOfLine());
  lastLine_ = last;
  JoinAlike();
}

void AccountKeeper::JoinAlike() {
  if (entries_.size() < 2) return;
  Entry& one = entries_[entries_.size() - 2];
  const Entry& other = entries_.back();
  if (!one.isDecided || one.verdict != other.verdict || one.lines != other.lines ||
      one.why != other.why || one.nameSize != other.nameSize ||
      one.ignoredSize != other.ignoredSize ||
      one.count == std::numeric_limits<std::uint32_t>::max() ||
      NarrowStringView(names_).substr(one.name, one.nameSize + one.ignoredSize) !=
          NarrowStringView(names_).substr(other.name, other.nameSize + other.ignoredSize))
    return;
  ++one.count;
  if (other.name != one.name) names_.resize(other.name);
  entries_.pop_back();
}

void AccountKeeper::BeginRecord() {
  if (isOpen_) Tell(LOSS_NESTED);
  // The property of the BEGIN is the first one of its record.
  Entry begin = entries_.back();
  const NarrowString name = names_.substr(begin.name, begin.nameSize);
  begin.ignoredSize = 0;
  CompleteRecord();
  HandOut(entries_.size() - 1);
  begin.name = 0;
  entries_.push_back(begin);
  names_ = name;
  ++record_;
  isOpen_ = beginsRecord_ = true;
}

void AccountKeeper::Reject(NarrowStringView piece) {
  const std::int64_t first = lines_.First();
  const std::int64_t last =
      lines_.At(piece.data() + parser_.rejectedRun) - std::int64_t{parser_.faultLinesBack};
  if (!inProperty_) {
    TakeBlankLines(first);
    Append(1, Verdict::Rejected, 0, parser_.rejectedName);
  }
  Entry& entry = entries_.back();
  entry.lines = static_cast<std::uint32_t>(last - lastLine_);
  entry.verdict = Verdict::Rejected;
  entry.isDecided = true;
  entry.why = 0;
  lastLine_ = last;
  Flush();
}

void AccountKeeper::EndRejected(NarrowStringView rest) {
  lines_.Pass(rest);
  if (lines_.Total() > lastLine_) Append(lines_.Total() - lastLine_, Verdict::Unread, 0);
  Flush();
}

void AccountKeeper::EndOpen() {
  if (inProperty_) {  // behind a soft break, with which the text ends
    if (entries_.back().kind != PropertyKind::Frame) Tell(LOSS_CUT);
    hasValue_ = true;
    EndProperty();
  } else if (parser_.state != ParserState::StateName) {  // a header
    TakeJunk();
  }
}

void AccountKeeper::Finish() {
  TakeBlankLines(lines_.Total() + 1);
  Flush();
}

void AccountKeeper::TakeBlankLines(std::int64_t next) {
  if (next > lastLine_ + 1) Append(next - 1 - lastLine_, Verdict::Frame, 0);
  lastLine_ = next - 1;
}

void AccountKeeper::Append(std::int64_t lines, Verdict verdict, LossMask why,
                           NarrowStringView name) {
  Entry entry;
  entry.lines = static_cast<std::uint32_t>(lines);
  entry.name = static_cast<std::uint32_t>(names_.size());
  entry.nameSize = static_cast<std::uint32_t>(name.size());
  entry.why = why;
  entry.verdict = verdict;
  entry.isDecided = true;
  names_.append(name);
  entries_.push_back(entry);
}

void AccountKeeper::Flush() {
  CompleteRecord();
  HandOut(entries_.size());
}

// The first `count` entries are complete, and none is kept.
void AccountKeeper::HandOut(std::size_t count) {
  for (std::size_t number = 0; number < places_.size(); ++number) {
    Place& place = places_[number];
    for (const Holder& holder : place.holders) entries_[holder.entry].into |= 1U << fields_[number];
    place.holders.clear();
    place.needs = kNone;
  }
  WideString title;
  for (Entry& entry : std::span(entries_).first(count)) {
    if (!entry.isDecided) Decide(entry);
    const bool isHeld = entry.verdict == Verdict::Kept || entry.verdict == Verdict::Changed;
    const bool isTold = entry.verdict != Verdict::Frame && entry.verdict != Verdict::Kept;
    if (isTold && title.empty()) title = nameOfLast_();
    AccountEntry told;
    told.record = record_;
    told.name = NarrowStringView(names_).substr(entry.name, entry.nameSize);
    told.ignored = NarrowStringView(names_).substr(entry.name + entry.nameSize, entry.ignoredSize);
    told.verdict = entry.verdict;
    told.same = isHeld && entry.needed == 0;
    told.why = entry.why;
    if (isHeld) told.into = entry.into != 0 ? entry.into : entry.written;
    if (entry.verdict == Verdict::Rejected) told.fault = parser_.fault;
    told.title = title;
    for (std::uint32_t left = entry.count; left > 0; --left) {
      told.first = handedTo_ + 1;
      told.last = handedTo_ += entry.lines;
      take_(told);
    }
  }
  entries_.clear();
  names_.clear();
}

void AccountKeeper::Decide(Entry& entry) const {
  if (entry.kind == PropertyKind::Frame) {
    entry.verdict = Verdict::Frame;
    return;
  }
  if (entry.isReplaced) entry.why |= LOSS_REPLACED;
  const bool isWhole = (entry.why & ~kPlacesOfLines) == 0;
  if (entry.held == 0 && entry.needed == 0 && !isWhole) {
    entry.verdict = Verdict::Dropped;
  } else {
    entry.verdict = isWhole ? Verdict::Kept : Verdict::Changed;
  }
}

}  // namespace pim
