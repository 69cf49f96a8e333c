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

void AccountKeeper::Begin(NarrowStringView name, PropertyKind kind, LossMask why) {
  if (record_ < 0) Flush();
  const std::int64_t first = lines_.First();
  TakeBlankLines(first);
  if (kind != PropertyKind::Frame) {
    if (record_ < 0) why |= LOSS_BEFORE_FIRST;
    if (record_ >= 0 && !isOpen_) why |= LOSS_BEHIND_END;
  }
  Append(first, first, Verdict::Dropped, why, name);
  entries_.back().kind = kind;
  entries_.back().isDecided = false;
  parser_.valueLosses = 0;
  inProperty_ = true;
  hasValue_ = false;
}

void AccountKeeper::TellJoined() {
  Entry& entry = entries_.back();
  entry.kind = PropertyKind::Unknown;
  entry.why |= LOSS_JOINED;
}

void AccountKeeper::Write(std::uint8_t number, Written written) {
  Place& place = places_[number];
  const std::uint32_t current = Current();
  if (!written.same) {
    for (const Holder& holder : place.holders) {
      Entry& entry = entries_[holder.entry];
      --entry.held;
      if (!holder.follows) entry.isReplaced = true;
    }
    place.holders.clear();
  }
  if (place.needs != kNone) --entries_[place.needs].needed;
  place.needs = written.same || written.isJoint ? kNone : current;
  if (place.needs != kNone) ++entries_[current].needed;
  if (!written.says) return;
  place.holders.push_back({current, written.follows});
  ++entries_[current].held;
}

void AccountKeeper::Add(std::uint8_t field) {
  Entry& entry = entries_.back();
  entry.into |= 1U << field;
  ++entry.needed;
}

void AccountKeeper::EndProperty() {
  Entry& entry = entries_.back();
  entry.last = lastLine_ = lines_.Last();
  entry.why |= std::exchange(parser_.valueLosses, 0);
  if (!hasValue_ && entry.kind == PropertyKind::Known && (entry.why & LOSS_BAD_BASE64) == 0)
    entry.why |= LOSS_EMPTY;
  inProperty_ = false;
}

void AccountKeeper::TakeJunk() {
  if (record_ < 0) Flush();
  const std::int64_t first = lines_.First();
  TakeBlankLines(first);
  lastLine_ = lines_.Last();
  Append(first, lastLine_, Verdict::Dropped,
         record_ < 0 ? LOSS_NO_COLON | LOSS_BEFORE_FIRST : LOSS_NO_COLON);
}

void AccountKeeper::BeginRecord() {
  if (isOpen_) Tell(LOSS_NESTED);
  // The property of the BEGIN is the first one of its record.
  const Entry begin = entries_.back();
  const NarrowString name = names_.substr(names_.size() - begin.nameSize);
  CompleteRecord();
  HandOut(entries_.size() - 1);
  entries_.push_back(begin);
  names_ = name;
  ++record_;
  isOpen_ = true;
}

void AccountKeeper::Reject(NarrowStringView piece) {
  const std::int64_t first = lines_.First();
  const std::int64_t last = lines_.At(piece.data() + parser_.rejectedRun);
  if (!inProperty_) {
    TakeBlankLines(first);
    Append(first, last, Verdict::Rejected, 0, parser_.rejectedName);
  } else {
    Entry& entry = entries_.back();
    entry.last = last;
    entry.verdict = Verdict::Rejected;
    entry.isDecided = true;
    entry.why = 0;
  }
  lastLine_ = last;
  Flush();
}

void AccountKeeper::EndRejected(NarrowStringView rest) {
  lines_.Pass(rest);
  if (lines_.Total() > lastLine_) Append(lastLine_ + 1, lines_.Total(), Verdict::Unread, 0);
  Flush();
}

void AccountKeeper::EndOpen() {
  if (inProperty_) {  // behind a soft break, with which the text ends
    Tell(LOSS_CUT);
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
  if (next > lastLine_ + 1) Append(lastLine_ + 1, next - 1, Verdict::Frame, 0);
  lastLine_ = next - 1;
}

AccountKeeper::Entry& AccountKeeper::Append(std::int64_t first, std::int64_t last, Verdict verdict,
                                            LossMask why, NarrowStringView name) {
  Entry entry;
  entry.first = first;
  entry.last = last;
  entry.nameSize = static_cast<std::uint32_t>(name.size());
  entry.why = why;
  entry.verdict = verdict;
  entry.isDecided = true;
  names_.append(name);
  return entries_.emplace_back(entry);
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
  const NarrowStringView names = names_;
  std::size_t name = 0;
  WideString title;
  for (Entry& entry : std::span(entries_).first(count)) {
    if (!entry.isDecided) Decide(entry);
    const bool isHeld = entry.verdict == Verdict::Kept || entry.verdict == Verdict::Changed;
    const bool isTold = entry.verdict != Verdict::Frame && entry.verdict != Verdict::Kept;
    if (isTold && title.empty()) title = nameOfLast_();
    take_({entry.first, entry.last, record_, names.substr(name, entry.nameSize), entry.verdict,
           isHeld && entry.needed == 0, entry.why, isHeld ? entry.into : 0, title});
    name += entry.nameSize;
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
