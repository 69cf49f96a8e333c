// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/redact/Redactor.h"

#include <algorithm>
#include <vector>

#include "formats/prepare/ValueBytes.h"
#include "support/Base64.h"

namespace pim {
namespace {

// Properties whose values are no secret, and say how a text is read.
constexpr std::string_view kKept[] = {
    "BEGIN",    "END",      "VERSION", "PRODID",       "CALSCALE",  "METHOD",   "CLASS",
    "STATUS",   "PRIORITY", "X-BLOOD", "X-FAVORITE",   "X-HOLIDAY", "X-COLOR",  "TZ",
    "DAYLIGHT", "RRULE",    "XRULE",   "EXRULE",       "TRANSP",    "SEQUENCE", "KIND",
    "TZID",     "ACTION",   "TRIGGER", "TZOFFSETFROM", "TZOFFSETTO"};

// Those that begin with a date.
constexpr std::string_view kDates[] = {
    "BDAY",          "X-ANNI",     "X-EVENTDAY", "ANNIVERSARY", "X-ANNIVERSARY", "REV",
    "DTSTART",       "DTEND",      "DUE",        "COMPLETED",   "DTCREATE",      "DCREATED",
    "LAST-MODIFIED", "X-MODIFIED", "AALARM",     "DALARM",      "DTSTAMP",       "CREATED",
    "EXDATE",        "RDATE",      "MALARM",     "PALARM"};

// Those whose words in capitals are the formats' own.
constexpr std::string_view kWords[] = {"CATEGORIES"};

// Whose base64 is a picture, a sound or a key, and no text.
constexpr std::string_view kBinary[] = {"PHOTO", "LOGO", "SOUND", "KEY", "ATTACH"};

template <std::size_t Count>
bool IsOneOf(const std::string_view (&names)[Count], std::string_view name) {
  const std::string_view bare = name.substr(name.rfind('.') + 1);
  return std::ranges::any_of(
      names, [bare](std::string_view one) { return EqualsIgnoringCase(one, bare); });
}

TextMask::Charset CharsetOf(const LineHead& head) {
  const std::string_view charset = LineCoding::Of(head.params).charset;
  // A number is read as any other text, whatever its line says.
  if (charset.empty() || EqualsIgnoringCase(charset, "UTF-8") ||
      EqualsIgnoringCase(head.name, "TEL"))
    return TextMask::Charset::Utf8;
  return EqualsIgnoringCase(charset, "SHIFT_JIS") ? TextMask::Charset::ShiftJis
                                                  : TextMask::Charset::Other;
}

// Whether a part of a value is one that the formats know: a word of theirs, a duration, a number.
bool IsFormal(std::string_view part, bool isDate) {
  constexpr std::size_t kLongest = 18;  // "SPECIAL OCCASION" is the longest word
  part = Trim(part);
  return part.size() <= kLongest && std::ranges::all_of(part, [isDate](char c) {
           return (c >= 'A' && c <= 'Z') || c == ' ' || c == '-' || c == '+' ||
                  (isDate && IsDigit(c));
         });
}

// A value of dates or words with semicolons or commas between: each by itself.
void MaskParts(const TextMask& mask, TextMask::Charset charset, bool isDate, std::string& bytes) {
  for (std::size_t begin = 0; begin < bytes.size();) {
    const std::size_t end = std::min(bytes.find_first_of(";,", begin), bytes.size());
    const std::size_t first = std::min(bytes.find_first_not_of(" \t", begin), end);
    std::string part = bytes.substr(first, end - first);
    const bool isMoved = isDate && mask.MoveDate(part);
    if (!isMoved && !IsFormal(part, isDate)) {
      const std::string before = part;
      mask.MaskFields(part, charset);
      // What is no date stays none.
      std::string date = part;
      if (isDate && mask.MoveDate(date)) part = before;
    }
    bytes.replace(first, end - first, part);
    begin = end + 1;
  }
}

std::uint32_t DigitValue(char c) { return static_cast<std::uint32_t>(kBase64Alphabet.find(c)); }

// Base64 of a text: masks the text. False where it isn't whole.
bool MaskBase64Text(const TextMask& mask, TextMask::Charset charset, std::string& base64) {
  std::vector<std::size_t> places;
  std::size_t padding = 0;
  for (std::size_t i = 0; i < base64.size(); ++i) {
    const bool isDigit = kBase64Alphabet.find(base64[i]) != NarrowStringView::npos;
    if (isDigit && padding == 0) {
      places.push_back(i);
    } else if (base64[i] == '=') {
      ++padding;
    } else if (!IsBlank(base64[i])) {
      return false;
    }
  }
  if ((places.size() + padding) % 4 != 0 || padding > 2) return false;
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
  return true;
}

}  // namespace

void Redactor::TakeProperty(std::string_view property) {
  const LineHead head = LineHead::Of(property);
  out_.clear();
  if (head.hasColon()) {
    out_ = property.substr(0, head.colon + 1);
    MaskValue(head, property.substr(head.colon + 1), out_);
  } else if (head.params.empty()) {
    // A line that is no property, which may have been a part of one.
    MaskText(LineHead(), property, out_);
  } else {
    out_ = property;
  }
  take_(out_);
}

void Redactor::MaskValue(const LineHead& head, std::string_view value, std::string& out) {
  const LineCoding coding = LineCoding::Of(head.params);
  if (IsOneOf(kKept, head.name)) {
    out += value;
  } else if (coding.isBase64) {
    std::string base64(value);
    if (IsOneOf(kBinary, head.name) || !MaskBase64Text(mask_, CharsetOf(head), base64))
      mask_.MaskBase64(base64);
    out += base64;
  } else {
    MaskText(head, value, out);
  }
}

void Redactor::MaskText(const LineHead& head, std::string_view value, std::string& out) {
  ValueBytes masked(value, LineCoding::Of(head.params).isQuotedPrintable);
  const bool isDate = IsOneOf(kDates, head.name);
  if (isDate || IsOneOf(kWords, head.name)) {
    MaskParts(mask_, CharsetOf(head), isDate, masked.bytes);
  } else {
    const std::size_t begin = std::min(masked.bytes.find_first_not_of(" \t"), masked.bytes.size());
    std::string rest = masked.bytes.substr(begin);
    mask_.MaskFields(rest, CharsetOf(head));
    masked.bytes.replace(begin, std::string::npos, rest);
  }
  out += masked.Text();
}

}  // namespace pim
