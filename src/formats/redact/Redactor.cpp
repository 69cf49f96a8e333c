// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/redact/Redactor.h"

#include <algorithm>
#include <utility>

#include "formats/prepare/ValueBytes.h"
#include "formats/redact/ValueMask.h"
#include "platform/CodePages.h"
#include "support/ByteOrderMark.h"

namespace pim {
namespace {

constexpr std::string_view kFrames[] = {"BEGIN", "END"};
// Properties whose values are no secret, and say how a text is read.
constexpr std::string_view kKept[] = {"PRODID", "TZID"};
// Those whose values are words and numbers of the formats.
constexpr std::string_view kCodes[] = {
    "VERSION", "CALSCALE",   "METHOD",       "CLASS",     "STATUS", "PRIORITY",
    "X-BLOOD", "X-FAVORITE", "TZ",           "DAYLIGHT",  "RRULE",  "XRULE",
    "EXRULE",  "TRANSP",     "X-HOLIDAY",    "X-COLOR",   "KIND",   "ACTION",
    "TRIGGER", "SEQUENCE",   "TZOFFSETFROM", "TZOFFSETTO"};

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

// How the readers take the bytes; a number is any other text to them, whatever its line says.
TextMask::Charset CharsetOf(std::string_view name, std::string_view charset) {
  const bool isOther = charset.empty() || EqualsIgnoringCase(name, "TEL");
  if (!isOther && IsWordInText(charset, "UTF-8", true)) return {};
  if (!isOther && IsWordInText(charset, "SHIFT_JIS", true)) return {"CP932", false};
  TextMask::Charset own;
  own.name = isOther ? std::string(DefaultCodePageName()) : AsTokenised(charset);
  own.isReadAsUtf8 = DefaultCodePageName() == "UTF-8";
  return own;
}

// How a property's value is read.
Redactor::Property PropertyOf(const LineHead& head) {
  const LineCoding coding = LineCoding::Of(head.params);
  Redactor::Property property;
  property.name = AsTokenised(head.name);
  property.charset = CharsetOf(property.name, coding.charset);
  property.isQuotedPrintable = coding.isQuotedPrintable;
  property.isBase64 = coding.isBase64 && !coding.isB;
  return property;
}

}  // namespace

void Redactor::TakeProperty(std::string_view property, std::int64_t line) {
  out_.clear();
  if (std::exchange(isFirst_, false) && property.starts_with(kUtf8Mark)) {
    out_ = kUtf8Mark;
    property.remove_prefix(kUtf8Mark.size());
  }
  const LineHead head = LineHead::Of(property);
  const std::size_t value = head.hasColon() ? head.colon + 1 : 0;
  if (head.GoesOn()) {
    out_ += property;
  } else {
    // A line that is no property may have been a part of one.
    out_ += property.substr(0, value);
    const Property own = head.hasColon() ? PropertyOf(head) : Property();
    if (!MaskValue(own, property.substr(value))) NoteDamage(line);
  }
  take_(out_);
}

void Redactor::NoteDamage(std::int64_t line) {
  if (damagedLines_++ == 0) firstDamaged_ = line;
}

bool Redactor::MaskValue(const Property& property, std::string_view value) {
  ValueBytes masked(value, property.isQuotedPrintable);
  // The readers end a value at the first of its bytes that is damaged: what is text up to there
  // isn't known.
  TextMask::Charset charset = property.charset;
  if (masked.isDamaged() && charset.isReadAsUtf8 && charset.name != "UTF-8") charset.name.clear();
  ValueMask mask(mask_, charset);
  if (IsOneOf(kKept, property.name)) {
    out_ += value;
    return true;
  }
  if (property.isBase64) {
    std::string base64(value);
    // Base64 of a text that isn't whole would say something else to the readers; it stays.
    IsOneOf(kBinary, property.name) ? mask_.MaskBase64(base64) : mask.Base64Text(base64);
    out_ += base64;
    return !mask.hasStayed();
  }
  if (IsOneOf(kFrames, property.name)) {
    mask.Frame(masked.bytes);
  } else if (IsOneOf(kCodes, property.name)) {
    mask.Code(masked.bytes);
  } else if (IsOneOf(kDays, property.name)) {
    mask.Day(masked.bytes);
  } else if (IsOneOf(kTimes, property.name)) {
    mask.Time(masked.bytes);
  } else if (IsOneOf(kTimeLists, property.name)) {
    mask.Times(masked.bytes);
  } else if (IsOneOf(kWords, property.name)) {
    mask.Words(masked.bytes);
  } else {
    mask.Text(masked.bytes);
  }
  out_ += masked.Text();
  return !mask.hasStayed();
}

}  // namespace pim
