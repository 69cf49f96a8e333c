// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/prepare/ByteMender.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "formats/prepare/LineHead.h"

namespace pim {
namespace {

constexpr std::size_t kNone = std::string_view::npos;
constexpr std::size_t kHead = 8;  // bytes by which units are told

// Whether a property begins here, as far as it is there.
enum class Begins : std::uint8_t { No, Yes, Perhaps };

Begins BeginsProperty(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (i > 0 && (c == ':' || c == ';')) return Begins::Yes;
    if (i == kLongestName || !(IsLetter(c) || (i > 0 && (IsDigit(c) || c == '-' || c == '.'))))
      return Begins::No;
  }
  return Begins::Perhaps;
}

// Whether a carriage return stands there that no line feed follows at once. Sixteen bytes at a
// time, since most texts are passed over whole.
bool HasReturnAlone(std::string_view text) {
  using Bytes = unsigned char __attribute__((vector_size(16)));
  const char* at = text.data();
  const char* const end = at + text.size();
  for (; end - at > 64; at += 64) {
    Bytes found = {};
    for (std::ptrdiff_t i = 0; i < 64; i += 16) {
      Bytes bytes;
      Bytes next;
      std::memcpy(&bytes, at + i, sizeof bytes);
      std::memcpy(&next, at + i + 1, sizeof next);
      found |= reinterpret_cast<Bytes>((bytes == '\r') & (next != '\n'));
    }
    std::uint64_t halves[2];
    std::memcpy(halves, &found, sizeof halves);
    if ((halves[0] | halves[1]) != 0) return true;
  }
  for (; at < end; ++at)
    if (*at == '\r' && (at + 1 == end || at[1] != '\n')) return true;
  return false;
}

}  // namespace

bool ByteMender::Passes(std::string_view piece) {
  if (!held_.empty() || returns_ != 0 || (!isDecided_ && piece.size() < kHead)) return false;
  Decide(piece);
  if (decoder_) return false;
  if (Has(PrepareStep::Nul) && piece.find('\0') != kNone) return false;
  if (Has(PrepareStep::LineEnds) && HasReturnAlone(piece)) return false;
  if (ends_ == Ends::Undecided && piece.find('\n') != kNone) ends_ = Ends::LineFeeds;
  return true;
}

void ByteMender::Append(std::string_view piece, bool isLast, std::int64_t line, std::string& out) {
  line_ = line;
  std::string head;
  if (!isDecided_) {
    held_ += piece;
    if (held_.size() < kHead && !isLast) return;
    head = std::exchange(held_, {});
    piece = head;
    Decide(piece);
  }
  if (decoder_) {
    decoded_.clear();
    decoder_->Append(piece, isLast, decoded_);
    piece = decoded_;
  }
  std::size_t nul = 0;
  while (Has(PrepareStep::Nul) && (nul = piece.find('\0')) != kNone) {
    AppendMended(piece.substr(0, nul), false, out);
    const std::int64_t at = line_ + (ends_ == Ends::LineFeeds ? 0 : returns_);
    notes_.Add(PrepareStep::Nul, at, at, "NUL characters taken out");
    piece.remove_prefix(std::min(piece.find_first_not_of('\0', nul), piece.size()));
  }
  AppendMended(piece, isLast, out);
}

void ByteMender::Decide(std::string_view head) {
  if (std::exchange(isDecided_, true) || !Has(PrepareStep::Unicode)) return;
  const TextUnits units = TextUnits::Of(head);
  if (units.size == 1) return;
  decoder_.emplace(units);
  notes_.Add(PrepareStep::Unicode, 1, 1,
             units.size == 2 ? "the text was UTF-16" : "the text was UTF-32");
}

void ByteMender::AppendMended(std::string_view bytes, bool isLast, std::string& out) {
  if (!held_.empty()) {
    whole_ = std::exchange(held_, {});
    whole_ += bytes;
    bytes = whole_;
  }
  const bool mends = Has(PrepareStep::LineEnds);
  while (!bytes.empty() || returns_ != 0) {
    if (returns_ == 0) {
      const std::size_t at = mends ? std::min(bytes.find('\r'), bytes.size()) : bytes.size();
      const std::int64_t feeds = std::ranges::count(bytes.substr(0, at), '\n');
      if (feeds != 0 && ends_ == Ends::Undecided) ends_ = Ends::LineFeeds;
      line_ += feeds;
      out.append(bytes.substr(0, at));
      bytes.remove_prefix(at);
    }
    const std::size_t returns = std::min(bytes.find_first_not_of('\r'), bytes.size());
    returns_ += static_cast<std::int64_t>(returns);
    bytes.remove_prefix(returns);
    if (bytes.empty() && !isLast) break;
    if (returns_ != 0 && !AppendReturns(bytes, isLast, out)) {
      held_ = bytes;
      break;
    }
  }
}

// Gives the carriage returns that stand ahead of the rest. Those ahead of a line feed belong to one
// line end, however many there are. Where line feeds end the lines, another one ends a line only if
// a property follows it: the readers join what it parts, and a line without a colon would be lost.
// False where more of the rest must be known.
bool ByteMender::AppendReturns(std::string_view rest, bool isLast, std::string& out) {
  bool areEnds = false;
  if (!rest.starts_with('\n')) {
    if (ends_ == Ends::Undecided) ends_ = Ends::Returns;
    const Begins begins = BeginsProperty(rest);
    if (ends_ == Ends::LineFeeds && begins == Begins::Perhaps && !isLast) return false;
    areEnds = ends_ == Ends::Returns || begins == Begins::Yes;
  }
  if (!areEnds) out.append(static_cast<std::size_t>(returns_), '\r');
  for (; returns_ != 0 && areEnds; --returns_) {
    notes_.Add(PrepareStep::LineEnds, line_, line_, "a carriage return alone became a line end");
    out.append("\r\n");
    ++line_;
  }
  returns_ = 0;
  return true;
}

}  // namespace pim
