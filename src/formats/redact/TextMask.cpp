// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/redact/TextMask.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <span>

#include "formats/redact/LetterRanges.h"
#include "support/Ascii.h"
#include "support/Base64.h"

namespace pim {
namespace {

// A shift for each place that depends on all that stands ahead of it: so nothing is told by what
// letters have in common, and two fields that differ still do.
class Shifts {
 public:
  explicit Shifts(std::uint64_t key) : state_(key) {}

  std::uint32_t Of(std::uint32_t character, const LetterRange& range) {
    const std::uint32_t other = WithoutTaking(character, range);
    Take(character);
    return other;
  }
  std::uint32_t WithoutTaking(std::uint32_t character, const LetterRange& range) const {
    const auto shift = static_cast<std::uint32_t>(Next() % range.size());
    return range.first + (character - range.first + shift) % range.size();
  }
  void Take(std::uint32_t character) { state_ = (state_ ^ character) * 0x9E3779B97F4A7C15; }

 private:
  // The finish of SplitMix64.
  std::uint64_t Next() const {
    std::uint64_t word = state_ + 0x9E3779B97F4A7C15;
    word = (word ^ (word >> 30)) * 0xBF58476D1CE4E5B9;
    word = (word ^ (word >> 27)) * 0x94D049BB133111EB;
    return word ^ (word >> 31);
  }

  std::uint64_t state_;
};

constexpr std::uint32_t ByteAt(std::string_view bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]);
}

// The size of the well-formed sequence of UTF-8 there; 0 where there is none.
std::size_t SequenceAt(std::string_view bytes, std::size_t at, std::uint32_t& character) {
  const std::uint32_t lead = ByteAt(bytes, at);
  const std::size_t size = lead < 0x80   ? 1
                           : lead < 0xC2 ? 0
                           : lead < 0xE0 ? 2
                           : lead < 0xF0 ? 3
                           : lead < 0xF5 ? 4
                                         : 0;
  if (size == 0 || bytes.size() - at < size) return 0;
  character = size == 1 ? lead : lead & (0x7FU >> size);
  for (std::size_t i = 1; i < size; ++i) {
    const std::uint32_t byte = ByteAt(bytes, at + i);
    if ((byte & 0xC0) != 0x80) return 0;
    character = character << 6 | (byte & 0x3F);
  }
  const bool isLong = size == 3 ? character < 0x800 : size == 4 && character < 0x10000;
  const bool isSurrogate = character >= 0xD800 && character < 0xE000;
  return isLong || isSurrogate || character > 0x10FFFF ? 0 : size;
}

void Encode(std::uint32_t character, std::size_t size, char* to) {
  for (std::size_t i = size; i-- > 1; character >>= 6)
    to[i] = static_cast<char>(0x80 | (character & 0x3F));
  constexpr std::uint32_t kLeads[] = {0, 0, 0xC0, 0xE0, 0xF0};
  *to = static_cast<char>(kLeads[size] | character);
}

// Bytes that mean the same to UTF-8, but for those that ask for a second byte of their own.
constexpr LetterRange kOtherBytes[] = {{0x80, 0x9F}, {0xA1, 0xBF}, {0xC2, 0xDF},
                                       {0xE1, 0xEC}, {0xEE, 0xEF}, {0xF1, 0xF3}};

// Kana in one byte; rows of two bytes by their lead bytes, and their second ones.
constexpr LetterRange kShiftJisKana = {0xA6, 0xDD};
constexpr LetterRange kShiftJisKanji = {0x89, 0x97};  // leads whose second bytes all are kanji
// A backslash, 0x5C, stays what it is and is never made: the readers see it in the second byte too.
constexpr LetterRange kShiftJisSeconds[] = {{0x40, 0x5B}, {0x5D, 0x7E}, {0x80, 0xFC}};
constexpr LetterRange kShiftJisRow82[] = {{0x4F, 0x58}, {0x60, 0x79}, {0x81, 0x9A}, {0x9F, 0xF1}};
constexpr LetterRange kShiftJisRow83[] = {{0x40, 0x5B}, {0x5D, 0x7E}, {0x80, 0x96}};

constexpr bool Contains(const LetterRange& range, std::uint32_t value) {
  return value >= range.first && value <= range.last;
}
constexpr bool IsShiftJisLead(std::uint32_t byte) {
  return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

void MaskPair(std::string& bytes, std::size_t at, Shifts& shifts) {
  const std::uint32_t lead = ByteAt(bytes, at);
  const std::uint32_t second = ByteAt(bytes, at + 1);
  const auto put = [&](std::size_t place, std::uint32_t value, const LetterRange& range) {
    bytes[place] = static_cast<char>(shifts.Of(value, range));
  };
  std::span<const LetterRange> rows;
  if (Contains(kShiftJisKanji, lead)) rows = kShiftJisSeconds;
  if (lead == 0x82) rows = kShiftJisRow82;
  if (lead == 0x83) rows = kShiftJisRow83;
  Contains(kShiftJisKanji, lead) ? put(at, lead, kShiftJisKanji) : shifts.Take(lead);
  const auto range = std::ranges::find_if(
      rows, [second](const LetterRange& row) { return Contains(row, second); });
  range != rows.end() ? put(at + 1, second, *range) : shifts.Take(second);
}

}  // namespace

void TextMask::MaskFields(std::string& bytes, Charset charset) const {
  std::size_t begin = 0;
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    const std::uint32_t byte = ByteAt(bytes, at);
    if (byte == '\\' || (charset == Charset::ShiftJis && IsShiftJisLead(byte))) {
      ++at;
    } else if (byte == ';') {
      MaskField(bytes, begin, at, charset);
      begin = at + 1;
    }
  }
  MaskField(bytes, begin, bytes.size(), charset);
}

void TextMask::MaskField(std::string& bytes, std::size_t begin, std::size_t end,
                         Charset charset) const {
  Shifts shifts(key_);
  const std::string_view field = std::string_view(bytes).substr(0, end);
  for (std::size_t at = begin; at < end;) {
    const std::uint32_t byte = ByteAt(field, at);
    if (byte == '\\') {
      at += 2;
      continue;
    }
    if (charset == Charset::ShiftJis && byte >= 0x80) {
      if (IsShiftJisLead(byte) && at + 1 < end) {
        MaskPair(bytes, at, shifts);
        at += 2;
        continue;
      }
      if (Contains(kShiftJisKana, byte))
        bytes[at] = static_cast<char>(shifts.Of(byte, kShiftJisKana));
      ++at;
      continue;
    }
    std::uint32_t character = 0;
    const std::size_t size = SequenceAt(field, at, character);
    if (size != 0) {
      const LetterRange* const range = RangeOf(character);
      if (range != nullptr) Encode(shifts.Of(character, *range), size, bytes.data() + at);
      if (range == nullptr) shifts.Take(character);
      at += size;
      continue;
    }
    // To the readers, all damaged bytes are one character.
    if (charset == Charset::Other) {
      for (const LetterRange& range : kOtherBytes)
        if (Contains(range, byte)) bytes[at] = static_cast<char>(shifts.WithoutTaking(byte, range));
    }
    ++at;
  }
}

void TextMask::MaskBase64(std::string& text) const {
  static constexpr LetterRange kDigits = {0, 63};
  Shifts shifts(key_);
  for (char& c : text) {
    const std::size_t value = kBase64Alphabet.find(c);
    if (value == NarrowStringView::npos) continue;
    c = kBase64Alphabet[shifts.Of(static_cast<std::uint32_t>(value), kDigits)];
  }
}

bool TextMask::MoveDate(std::string& text) const {
  using std::chrono::year_month_day;
  const bool hasHyphens = text.size() >= 10 && text[4] == '-' && text[7] == '-';
  const std::size_t size = hasHyphens ? 10 : 8;
  if (text.size() < size || (text.size() > size && IsDigit(text[size]))) return false;
  std::string digits = text.substr(0, size);
  std::erase(digits, '-');
  int number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error != std::errc() || end != digits.data() + digits.size() || digits.size() != 8 ||
      !IsDigit(digits.front()))
    return false;
  const year_month_day date{std::chrono::year(number / 10000),
                            std::chrono::month(static_cast<unsigned>(number / 100 % 100)),
                            std::chrono::day(static_cast<unsigned>(number % 100))};
  if (!date.ok()) return false;
  constexpr std::uint64_t kMostDays = 3000;
  const auto days = std::chrono::days(1 + key_ % kMostDays);
  const year_month_day moved(std::chrono::sys_days(date) - days);
  const int year = static_cast<int>(moved.year());
  if (year < 100 || number / 10000 < 100) return false;
  char written[16];
  std::snprintf(written, sizeof written, hasHyphens ? "%04d-%02u-%02u" : "%04d%02u%02u", year,
                static_cast<unsigned>(moved.month()), static_cast<unsigned>(moved.day()));
  text.replace(0, size, written);
  return true;
}

}  // namespace pim
