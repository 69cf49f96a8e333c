// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/redact/Redactor.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "formats/prepare/ValueBytes.h"
#include "support/Base64.h"
#include "support/ByteOrderMark.h"

namespace pim {
namespace {

// Properties whose values are no secret, and say how a text is read.
constexpr std::string_view kKept[] = {
    "BEGIN",    "END",      "VERSION", "PRODID",       "CALSCALE",  "METHOD",   "CLASS",
    "STATUS",   "PRIORITY", "X-BLOOD", "X-FAVORITE",   "X-HOLIDAY", "X-COLOR",  "TZ",
    "DAYLIGHT", "RRULE",    "XRULE",   "EXRULE",       "TRANSP",    "SEQUENCE", "KIND",
    "TZID",     "ACTION",   "TRIGGER", "TZOFFSETFROM", "TZOFFSETTO"};

// Days of cards, and times of items with what stands behind them.
constexpr std::string_view kDays[] = {"BDAY", "X-ANNI", "X-EVENTDAY", "ANNIVERSARY",
                                      "X-ANNIVERSARY"};
constexpr std::string_view kTimes[] = {"REV",       "DTSTART",       "DTEND",     "DUE",
                                       "COMPLETED", "DTCREATE",      "DCREATED",  "DTSTAMP",
                                       "CREATED",   "LAST-MODIFIED", "X-MODIFIED"};
constexpr std::string_view kTimeLists[] = {"AALARM", "DALARM", "MALARM",
                                           "PALARM", "EXDATE", "RDATE"};

// Those whose words in capitals are the formats' own.
constexpr std::string_view kWords[] = {"CATEGORIES"};

// Whose base64 is a picture or a key, and no text.
constexpr std::string_view kBinary[] = {"PHOTO", "LOGO", "KEY", "ATTACH"};

template <std::size_t Count>
bool IsOneOf(const std::string_view (&names)[Count], std::string_view name) {
  const std::string_view bare = name.substr(name.rfind('.') + 1);
  return std::ranges::any_of(
      names, [bare](std::string_view one) { return EqualsIgnoringCase(one, bare); });
}

Redactor::Coding CodingOf(std::string_view params) {
  const LineCoding coding = LineCoding::Of(params);
  Redactor::Coding own;
  own.isQuotedPrintable = coding.isQuotedPrintable;
  own.isBase64 = coding.isBase64 && !coding.isB;
  if (IsWordInText(coding.charset, "SHIFT_JIS")) {
    own.charset = TextMask::Charset::ShiftJis;
  } else if (!coding.charset.empty() && !IsWordInText(coding.charset, "UTF-8")) {
    own.charset = TextMask::Charset::Other;
  }
  return own;
}

// A number is read as any other text, whatever its line says.
TextMask::Charset CharsetOf(const Redactor::Property& property) {
  return EqualsIgnoringCase(property.name, "TEL") ? TextMask::Charset::Utf8
                                                  : property.coding.charset;
}

enum class PartKind : std::uint8_t { Word, Day, Time };

// Whether a part of a value is one that the formats know: a word of theirs, a duration, a number.
bool IsFormal(std::string_view part, PartKind kind) {
  constexpr std::size_t kLongest = 18;  // "SPECIAL OCCASION" is the longest word
  part = Trim(part);
  return part.size() <= kLongest && std::ranges::all_of(part, [kind](char c) {
           return (c >= 'A' && c <= 'Z') || c == ' ' || c == '-' || c == '+' ||
                  (kind == PartKind::Time && IsDigit(c));
         });
}

// What is no date stays none, and of the same kind to the readers, who take its first digits, those
// behind a T, and any Z.
void MaskNoDate(const TextMask& mask, TextMask::Charset charset, PartKind kind, std::string& part) {
  const std::string before = part;
  mask.MaskFields(part, charset);
  if (kind == PartKind::Day) {
    // Nothing but zeros says that there is no day.
    for (std::size_t i = 0; i < part.size(); ++i)
      if (before[i] == '0' || part[i] == '0') part[i] = before[i];
    std::string date = part;
    if (mask.MoveDate(date)) part = before;
    return;
  }
  for (std::size_t i = 0; i < part.size(); ++i)
    if (IsDigit(before[i]) || (before[i] >= 'A' && before[i] <= 'Z')) part[i] = before[i];
}

// A time with all that stands behind it.
void MaskTime(const TextMask& mask, TextMask::Charset charset, std::string& bytes) {
  constexpr std::size_t kDate = 8;
  const std::size_t first = std::min(bytes.find_first_not_of(" \t"), bytes.size());
  std::string time = bytes.substr(first);
  const std::size_t tail = mask.MoveDate(time) ? kDate : 0;
  std::string rest = time.substr(tail);
  if (!IsFormal(rest, PartKind::Time)) MaskNoDate(mask, charset, PartKind::Time, rest);
  bytes.replace(first, std::string::npos, time.substr(0, tail) + rest);
}

// A value of dates or words with semicolons or commas between: each by itself.
void MaskParts(const TextMask& mask, TextMask::Charset charset, PartKind kind, std::string& bytes) {
  constexpr int kFormalParts = 3;  // of an alarm: its time, its snooze, its count
  int number = 0;
  for (std::size_t begin = 0; begin < bytes.size(); ++number) {
    const std::size_t end = std::min(bytes.find_first_of(";,", begin), bytes.size());
    const std::size_t first = std::min(bytes.find_first_not_of(" \t", begin), end);
    std::string part = bytes.substr(first, end - first);
    const bool isMoved = kind != PartKind::Word && mask.MoveDate(part);
    if (!isMoved && !IsFormal(part, kind)) {
      if (kind == PartKind::Word || (kind == PartKind::Time && number >= kFormalParts)) {
        mask.MaskFields(part, charset);
      } else {
        MaskNoDate(mask, charset, kind, part);
      }
    }
    bytes.replace(first, end - first, part);
    begin = end + 1;
  }
}

std::uint32_t DigitValue(char c) { return static_cast<std::uint32_t>(kBase64Alphabet.find(c)); }

// Base64 of a text: masks the text, where it is whole.
void MaskBase64Text(const TextMask& mask, TextMask::Charset charset, std::string& base64) {
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
  mask.MaskFields(bytes, charset);
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

}  // namespace

void Redactor::TakeProperty(std::string_view property) {
  out_.clear();
  if (std::exchange(isFirst_, false) && property.starts_with(kUtf8Mark)) {
    out_ = kUtf8Mark;
    property.remove_prefix(kUtf8Mark.size());
  }
  const LineHead head = LineHead::Of(property);
  if (head.hasColon()) {
    out_ += property.substr(0, head.colon + 1);
    MaskValue({AsTokenised(head.name), CodingOf(head.params)}, property.substr(head.colon + 1));
  } else if (head.params.empty()) {
    // A line that is no property, which may have been a part of one.
    MaskText({}, property);
  } else {
    out_ += property;
  }
  take_(out_);
}

void Redactor::MaskValue(const Property& property, std::string_view value) {
  if (IsOneOf(kKept, property.name)) {
    out_ += value;
  } else if (property.coding.isBase64) {
    std::string base64(value);
    // Base64 of a text that isn't whole would say something else to the readers; it stays.
    IsOneOf(kBinary, property.name) ? mask_.MaskBase64(base64)
                                    : MaskBase64Text(mask_, CharsetOf(property), base64);
    out_ += base64;
  } else {
    MaskText(property, value);
  }
}

void Redactor::MaskText(const Property& property, std::string_view value) {
  ValueBytes masked(value, property.coding.isQuotedPrintable);
  const TextMask::Charset charset = CharsetOf(property);
  if (IsOneOf(kDays, property.name)) {
    MaskParts(mask_, charset, PartKind::Day, masked.bytes);
  } else if (IsOneOf(kTimes, property.name)) {
    MaskTime(mask_, charset, masked.bytes);
  } else if (IsOneOf(kTimeLists, property.name)) {
    MaskParts(mask_, charset, PartKind::Time, masked.bytes);
  } else if (IsOneOf(kWords, property.name)) {
    MaskParts(mask_, charset, PartKind::Word, masked.bytes);
  } else {
    const std::size_t begin = std::min(masked.bytes.find_first_not_of(" \t"), masked.bytes.size());
    std::string rest = masked.bytes.substr(begin);
    mask_.MaskFields(rest, charset);
    masked.bytes.replace(begin, std::string::npos, rest);
  }
  out_ += masked.Text();
}

}  // namespace pim
