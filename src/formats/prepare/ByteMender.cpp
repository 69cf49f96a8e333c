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

}  // namespace

bool ByteMender::Passes(std::string_view piece) {
  if (!held_.empty() || (!isDecided_ && piece.size() < kHead)) return false;
  Decide(piece);
  if (decoder_) return false;
  if (Has(PrepareStep::Nul) && std::memchr(piece.data(), 0, piece.size()) != nullptr) return false;
  std::size_t feeds = 0;
  std::size_t returns = 0;
  for (const char c : piece) {
    feeds += c == '\n' ? 1 : 0;
    returns += c == '\r' ? 1 : 0;
  }
  std::size_t pairs = 0;
  for (std::size_t i = 1; i < piece.size(); ++i)
    pairs += piece[i] == '\n' && piece[i - 1] == '\r' ? 1 : 0;
  if (Has(PrepareStep::LineEnds) && returns != pairs) return false;
  if (feeds != 0 && ends_ == Ends::Undecided) ends_ = Ends::LineFeeds;
  line_ += static_cast<std::int64_t>(feeds);
  return true;
}

void ByteMender::Append(std::string_view piece, bool isLast, std::string& out) {
  if (!isDecided_) {
    held_ += piece;
    if (held_.size() < kHead && !isLast) return;
    whole_ = std::exchange(held_, {});
    piece = whole_;
    Decide(piece);
  }
  if (decoder_) {
    decoded_.clear();
    decoder_->Append(piece, isLast, decoded_);
    piece = decoded_;
  }
  if (Has(PrepareStep::Nul) && piece.find('\0') != std::string_view::npos) {
    plain_.clear();
    AppendWithoutNul(piece, plain_);
    piece = plain_;
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

void ByteMender::AppendWithoutNul(std::string_view bytes, std::string& out) {
  std::int64_t line = line_ + std::ranges::count(held_, '\n');
  while (!bytes.empty()) {
    const std::size_t nul = std::min(bytes.find('\0'), bytes.size());
    line += std::ranges::count(bytes.substr(0, nul), '\n');
    out.append(bytes.substr(0, nul));
    bytes.remove_prefix(nul);
    if (bytes.empty()) break;
    notes_.Add(PrepareStep::Nul, line, line, "NUL characters taken out");
    bytes.remove_prefix(std::min(bytes.find_first_not_of('\0'), bytes.size()));
  }
}

void ByteMender::AppendMended(std::string_view bytes, bool isLast, std::string& out) {
  if (!held_.empty()) {
    whole_ = std::exchange(held_, {});
    whole_ += bytes;
    bytes = whole_;
  }
  const bool mends = Has(PrepareStep::LineEnds);
  while (!bytes.empty()) {
    const std::size_t at = mends ? std::min(bytes.find('\r'), bytes.size()) : bytes.size();
    const std::int64_t feeds = std::ranges::count(bytes.substr(0, at), '\n');
    if (feeds != 0 && ends_ == Ends::Undecided) ends_ = Ends::LineFeeds;
    line_ += feeds;
    out.append(bytes.substr(0, at));
    bytes.remove_prefix(at);
    if (bytes.empty()) break;
    const std::size_t taken = AppendReturns(bytes, isLast, out);
    if (taken == 0) {
      held_ = bytes;
      break;
    }
    bytes.remove_prefix(taken);
  }
}

// Takes the carriage returns at the head. Those ahead of a line feed belong to one line end,
// however many there are. Where line feeds end the lines, another one ends a line only if a
// property follows it: the readers join what it parts, and a line without a colon would be lost.
// Gives 0 where what follows must be known.
std::size_t ByteMender::AppendReturns(std::string_view bytes, bool isLast, std::string& out) {
  const std::size_t count = bytes.find_first_not_of('\r');
  if (count == kNone && !isLast) return 0;
  const std::string_view rest = bytes.substr(std::min(count, bytes.size()));
  if (rest.starts_with('\n')) {
    out.append(bytes.substr(0, count));
    return count;
  }
  if (ends_ == Ends::Undecided) ends_ = Ends::Returns;
  const std::size_t returns = bytes.size() - rest.size();
  const Begins begins = BeginsProperty(rest);
  if (ends_ == Ends::LineFeeds && begins == Begins::Perhaps && !isLast) return 0;
  if (ends_ == Ends::LineFeeds && begins != Begins::Yes) {
    out.append(bytes.substr(0, returns));
    return returns;
  }
  for (std::size_t i = 0; i < returns; ++i) {
    notes_.Add(PrepareStep::LineEnds, line_, line_, "a carriage return alone became a line end");
    out.append("\r\n");
    ++line_;
  }
  return returns;
}

}  // namespace pim
