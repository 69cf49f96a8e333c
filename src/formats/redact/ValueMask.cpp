// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/redact/ValueMask.h"

#include <algorithm>
#include <vector>

#include "support/Ascii.h"
#include "support/Base64.h"

namespace pim {
namespace {

// What begins and ends objects.
constexpr std::string_view kFrameWords[] = {"VCARD",    "VCALENDAR", "VEVENT",    "VTODO",
                                            "VMEMO",    "VJOURNAL",  "VTIMEZONE", "VALARM",
                                            "STANDARD", "DAYLIGHT"};

// Whether a word stands at the head of the text, the start of one alone, or a BEGIN anywhere: the
// readers tell of all of these.
bool HasFrameWord(std::string_view text) {
  constexpr std::string_view kBegin = "BEGIN";
  for (std::size_t at = 0; at < text.size(); ++at)
    if (EqualsIgnoringCase(text.substr(at, kBegin.size()), kBegin)) return true;
  const std::string_view word = Trim(text);
  return std::ranges::any_of(kFrameWords, [word](std::string_view known) {
    return IsStartOf(known, word) || EqualsIgnoringCase(word.substr(0, known.size()), known);
  });
}

std::uint32_t DigitValue(char c) { return static_cast<std::uint32_t>(kBase64Alphabet.find(c)); }

}  // namespace

void ValueMask::Text(std::string& bytes) {
  const std::size_t begin = std::min(bytes.find_first_not_of(" \t"), bytes.size());
  std::string rest = bytes.substr(begin);
  hasStayed_ = mask_.MaskFields(rest, charset_) || hasStayed_;
  bytes.replace(begin, std::string::npos, rest);
}

void ValueMask::Frame(std::string& bytes) {
  if (HasFrameWord(bytes)) return;
  std::string masked = bytes;
  Text(masked);
  // What begins nothing may not come to begin something.
  if (!HasFrameWord(masked)) bytes = masked;
}

void ValueMask::Code(std::string& bytes) {
  constexpr std::size_t kLongest = 18;
  const std::string_view word = Trim(bytes);
  const bool isWord = word.size() <= kLongest && std::ranges::all_of(word, [](char c) {
                        return IsLetter(c) || c == ' ' || c == '-';
                      });
  if (isWord) return;
  const std::string before = bytes;
  NoDate(PartKind::Time, bytes);
  // Short words may be weekdays.
  for (std::size_t i = 0, size = 0; i <= before.size(); ++i) {
    const bool isLetter = i < before.size() && IsLetter(before[i]);
    if (!isLetter && size <= 2) bytes.replace(i - size, size, before, i - size, size);
    size = isLetter ? size + 1 : 0;
  }
}

// Whether a part of a value is one that the formats know: a word of theirs, a duration, a number.
bool ValueMask::IsFormal(std::string_view part, PartKind kind) {
  constexpr std::size_t kLongest = 18;  // "SPECIAL OCCASION" is the longest word
  part = Trim(part);
  return part.size() <= kLongest && std::ranges::all_of(part, [kind](char c) {
           return (c >= 'A' && c <= 'Z') || c == ' ' || c == '-' || c == '+' ||
                  (kind == PartKind::Time && IsDigit(c));
         });
}

// What is no date stays none, and of the same kind to the readers, who take its first digits, those
// behind a T, and any Z.
void ValueMask::NoDate(PartKind kind, std::string& part) {
  // Nothing but zeros says that there is no day.
  if (part.find_first_not_of("0TZ-: ") == std::string::npos) return;
  const std::string before = part;
  Text(part);
  if (kind == PartKind::Day) {
    for (std::size_t i = 0; i < part.size(); ++i)
      if (before[i] == '0' || part[i] == '0') part[i] = before[i];
    std::string date = part;
    if (mask_.MoveDate(date)) part = before;
    return;
  }
  for (std::size_t i = 0; i < part.size(); ++i)
    if (IsDigit(before[i]) || (before[i] >= 'A' && before[i] <= 'Z')) part[i] = before[i];
}

void ValueMask::Time(std::string& bytes) {
  constexpr std::size_t kDate = 8;
  const std::size_t first = std::min(bytes.find_first_not_of(" \t"), bytes.size());
  std::string time = bytes.substr(first);
  const std::size_t tail = mask_.MoveDate(time) ? kDate : 0;
  std::string rest = time.substr(tail);
  if (!IsFormal(rest, PartKind::Time)) NoDate(PartKind::Time, rest);
  bytes.replace(first, std::string::npos, time.substr(0, tail) + rest);
}

void ValueMask::Day(std::string& bytes) { Parts(PartKind::Day, bytes); }
void ValueMask::Times(std::string& bytes) { Parts(PartKind::Time, bytes); }
void ValueMask::Words(std::string& bytes) { Parts(PartKind::Word, bytes); }

void ValueMask::Parts(PartKind kind, std::string& bytes) {
  constexpr int kFormalParts = 3;  // of an alarm: its time, its snooze, its count
  int number = 0;
  for (std::size_t begin = 0; begin < bytes.size(); ++number) {
    const std::size_t end = std::min(bytes.find_first_of(";,", begin), bytes.size());
    const std::size_t first = std::min(bytes.find_first_not_of(" \t", begin), end);
    std::string part = bytes.substr(first, end - first);
    const bool isMoved = kind != PartKind::Word && mask_.MoveDate(part);
    if (!isMoved && !IsFormal(part, kind)) {
      if (kind == PartKind::Word || (kind == PartKind::Time && number >= kFormalParts)) {
        Text(part);
      } else {
        NoDate(kind, part);
      }
    }
    bytes.replace(first, end - first, part);
    begin = end + 1;
  }
}

void ValueMask::Base64Text(std::string& base64) {
  std::vector<std::size_t> places;
  std::size_t padding = 0;
  for (std::size_t i = 0; i < base64.size(); ++i) {
    const bool isDigit = kBase64Alphabet.find(base64[i]) != NarrowStringView::npos;
    if (isDigit && padding == 0) {
      places.push_back(i);
    } else if (base64[i] == '=') {
      ++padding;
    } else if (!IsBlank(base64[i])) {
      return;
    }
  }
  if ((places.size() + padding) % 4 != 0 || padding > 2) return;
  std::string bytes;
  std::uint32_t bits = 0;
  for (std::size_t i = 0; i < places.size(); ++i) {
    bits = bits << 6 | DigitValue(base64[places[i]]);
    if (i % 4 != 0) bytes += static_cast<char>(bits >> (6 - 2 * (i % 4)));
  }
  Text(bytes);
  for (std::size_t i = 0; i < places.size(); ++i) {
    const std::size_t at = i / 4 * 3 + i % 4;
    const auto byte = [&](std::size_t place) {
      return place < bytes.size() ? static_cast<unsigned char>(bytes[place]) : 0U;
    };
    const std::uint32_t before = i % 4 == 0 ? 0 : byte(at - 1);
    const std::uint32_t pair = before << 8 | (i % 4 == 3 ? 0 : byte(at));
    const std::uint32_t shift = 2 + 2 * static_cast<std::uint32_t>(i % 4);
    base64[places[i]] = kBase64Alphabet[(pair >> shift) & 63];
  }
}

}  // namespace pim
