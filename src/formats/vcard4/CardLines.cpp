// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/vcard4/CardLines.h"

#include <algorithm>

#include "platform/Utf16.h"
#include "platform/Utf8.h"
#include "stream/ObjectWords.h"
#include "support/PlainText.h"

namespace pim {
namespace {

constexpr std::size_t kLongestUnit = 3;

constexpr bool ContinuesCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

// The unit at the start of `text`, at which a run ended; gives how many units it took.
std::size_t AppendSpecial(WideStringView text, bool isUri, char*& to, TextLosses& losses) {
  const char16_t unit = text.front();
  if (unit >= 0x80) {
    const std::size_t units = IsPairAt(text, 0) ? 2 : 1;
    if (units == 1 && IsSurrogate(unit)) losses.characters = true;
    to += EncodeUtf8(text.substr(0, units), to);
    return units;
  }
  if (unit == '\r' || unit == '\n') {
    const bool isUsual = text.starts_with(u"\r\n");
    losses.lineEnds = losses.lineEnds || !isUsual;
    *to++ = '\\';
    *to++ = 'n';
    return isUsual ? 2 : 1;
  }
  if (!IsPlain(unit) && unit != '=') {
    losses.characters = true;
    return 1;
  }
  if (unit == '\\' || (!isUri && (unit == ',' || unit == ';'))) *to++ = '\\';
  *to++ = static_cast<char>(unit);
  return 1;
}

}  // namespace

void CardLines::StartCard(NarrowString& out) {
  out_ = &out;
  out.append(kBeginWord).append(1, ':').append(kContactObject.text).append("\r\n");
  out.append(kVersionWord).append(isV4_ ? ":4.0\r\n" : ":3.0\r\n");
}

void CardLines::EndCard() {
  out_->append(kEndWord).append(1, ':').append(kContactObject.text).append("\r\n");
}

void CardLines::Grow(std::size_t more) { line_.resize(std::max(2 * line_.size(), size_ + more)); }

void CardLines::Preferred() {
  if (!isV4_) return Type({0, "", "PREF"});
  Copy(";PREF=1");
}

void CardLines::Service(NarrowStringView word) {
  Copy(";");
  Copy(kServiceParameter);
  Copy("=");
  Copy(word);
}

void CardLines::Derived() {
  Copy(";");
  Copy(isV4_ ? kDerivedParameter : kOwnDerivedParameter);
  Copy("=");
  Copy(kDerivedWord);
}

TextLosses CardLines::Part(WideStringView text) {
  TextLosses losses;
  Reserve(1 + kLongestUnit * text.size());
  if (!isFirst_) Copy(shape_ == ValueShape::List ? "," : ";");
  isFirst_ = false;
  char* to = line_.data() + size_;
  for (;;) {
    const std::size_t run = NarrowPlain<RunStops::AtListSeparators>(text, to);
    to += run;
    text.remove_prefix(run);
    if (text.empty()) break;
    text.remove_prefix(AppendSpecial(text, shape_ == ValueShape::Uri, to, losses));
  }
  size_ = static_cast<std::size_t>(to - line_.data());
  return losses;
}

void CardLines::Ascii(NarrowStringView start, NarrowStringView value) {
  Reserve(1 + start.size() + value.size());
  Copy(":");
  Copy(start);
  Copy(value);
  EndLine();
}

void CardLines::Picture(const MediaRow& media, NarrowStringView base64) {
  if (isV4_) {
    Copy(":");
    Copy(kDataScheme);
    Copy(media.media);
    Copy(";base64,");
  } else {
    Copy(";ENCODING=b;TYPE=");
    Copy(media.word);
    Copy(":");
  }
  Reserve(base64.size());
  Copy(base64);
  Fold();
}

// Never inside of a character. A further line's blank counts as one of its bytes.
void CardLines::Fold() {
  NarrowStringView rest(line_.data(), size_);
  for (std::size_t width = kWidth; rest.size() > width; width = kWidth - 1) {
    std::size_t cut = width;
    while (ContinuesCharacter(rest[cut])) --cut;
    out_->append(rest.substr(0, cut)).append("\r\n ");
    rest.remove_prefix(cut);
  }
  out_->append(rest).append("\r\n");
}

}  // namespace pim
