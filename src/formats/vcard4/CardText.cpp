// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/vcard4/CardText.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "support/Ascii.h"
#include "support/ParameterWords.h"
#include "support/QuotedPrintable.h"

namespace pim {
namespace {

constexpr NarrowStringView kShortBase64 = "b";  // in 3.0

// The colon ahead of the value: the first one outside of quotes, or, where a quote isn't closed,
// the first of all.
std::size_t FindColon(NarrowStringView line) {
  bool isQuoted = false;
  for (std::size_t at = 0; at < line.size(); ++at) {
    if (line[at] == '"') isQuoted = !isQuoted;
    if (line[at] == ':' && !isQuoted) return at;
  }
  return line.find(':');
}

// Cuts off and gives what stands ahead of the next semicolon outside of quotes.
NarrowStringView NextPart(NarrowStringView& header) {
  bool isQuoted = false;
  std::size_t end = 0;
  for (; end < header.size() && (isQuoted || header[end] != ';'); ++end)
    if (header[end] == '"') isQuoted = !isQuoted;
  const NarrowStringView part = header.substr(0, end);
  header.remove_prefix(std::min(end + 1, header.size()));
  return part;
}

CardLine ReadLine(NarrowStringView text, std::size_t number) {
  CardLine line;
  line.line = number;
  const std::size_t colon = FindColon(text);
  if (colon == NarrowStringView::npos) return line;
  NarrowStringView header = text.substr(0, colon);
  line.value = text.substr(colon + 1);
  line.name = Trim(NextPart(header));
  const std::size_t dot = line.name.rfind('.');
  if (dot != NarrowStringView::npos) {
    line.group = line.name.substr(0, dot);
    line.name.remove_prefix(dot + 1);
  }
  while (!header.empty()) {
    const NarrowStringView part = NextPart(header);
    const std::size_t equals = part.find('=');
    CardParameter parameter = {Trim(part.substr(0, equals)), {}, false};
    if (equals != NarrowStringView::npos) {
      parameter.value = part.substr(equals + 1);
      parameter.hasValue = true;
    }
    if (!parameter.name.empty()) line.parameters.push_back(parameter);
  }
  return line;
}

}  // namespace

const CardParameter* CardLine::Find(NarrowStringView parameter) const {
  for (const CardParameter& candidate : parameters)
    if (EqualsIgnoringCase(candidate.name, parameter)) return &candidate;
  return nullptr;
}

bool CardLine::IsQuotedPrintable() const {
  const CardParameter* encoding = Find(kEncodingName);
  if (encoding != nullptr) return EqualsIgnoringCase(encoding->value, kQuotedPrintableWord.text);
  return Find(kQuotedPrintableWord.text) != nullptr;
}

bool CardLine::IsBase64() const {
  const CardParameter* encoding = Find(kEncodingName);
  if (encoding == nullptr) return Find(kBase64Word.text) != nullptr;
  return EqualsIgnoringCase(encoding->value, kShortBase64) ||
         EqualsIgnoringCase(encoding->value, kBase64Word.text);
}

CardText::CardText(NarrowStringView card) {
  unfolded_.reserve(card.size());
  for (std::size_t number = 0; !card.empty(); ++number) {
    const std::size_t end = card.find('\n');
    NarrowStringView physical = card.substr(0, end);
    card.remove_prefix(end == NarrowStringView::npos ? card.size() : end + 1);
    if (physical.ends_with('\r')) physical.remove_suffix(1);
    Take(physical, number);
  }
  EndLine();
}

void CardText::Take(NarrowStringView physical, std::size_t number) {
  const bool isOpen = unfolded_.size() != start_;
  const bool isFold = physical.starts_with(' ') || physical.starts_with('\t');
  if (isOpen && isFold) {
    physical.remove_prefix(1);
  } else if (isOpen && GoesOn(physical)) {
    if (continues_ == Continues::BehindSoftBreak) unfolded_.pop_back();
  } else {
    EndLine();
    number_ = number;
    continues_ = Continues::NotKnown;
  }
  unfolded_.append(physical);
}

// Whether a line that is no fold belongs to the line ahead of it all the same. What that one says
// of its value is looked at once.
bool CardText::GoesOn(NarrowStringView physical) {
  if (physical.empty()) return false;
  const bool isSoftBreak = unfolded_.ends_with('=');
  const bool hasColon = physical.find(':') != NarrowStringView::npos;
  if (!isSoftBreak && hasColon) return false;
  if (continues_ == Continues::NotKnown) {
    const CardLine line = ReadLine(NarrowStringView(unfolded_).substr(start_), 0);
    continues_ = line.IsBase64()            ? Continues::AsBase64
                 : line.IsQuotedPrintable() ? Continues::BehindSoftBreak
                                            : Continues::Never;
  }
  return continues_ == Continues::AsBase64
             ? !hasColon
             : continues_ == Continues::BehindSoftBreak && isSoftBreak;
}

void CardText::EndLine() {
  const NarrowStringView line = NarrowStringView(unfolded_).substr(start_);
  if (!Trim(line).empty()) lines_.push_back(ReadLine(line, number_));
  start_ = unfolded_.size();
}

NarrowStringView ValueOf(const CardLine& line, NarrowString& decoded, bool& isExact) {
  constexpr std::size_t kLongest = std::numeric_limits<std::int32_t>::max();
  if (!line.IsQuotedPrintable() || line.value.size() > kLongest) return line.value;
  decoded.resize(line.value.size());
  std::int32_t written = 0;
  QuotedPrintableDecode(line.value.data(), static_cast<std::int32_t>(line.value.size()),
                        decoded.data(), written, &isExact);
  decoded.resize(static_cast<std::size_t>(written));
  return decoded;
}

std::size_t FindUnescaped(NarrowStringView text, char mark) {
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == '\\') {
      ++at;
    } else if (text[at] == mark) {
      return at;
    }
  }
  return NarrowStringView::npos;
}

void UnescapeText(NarrowStringView value, NarrowString& text) {
  constexpr NarrowStringView kEscaped = "\\,;:\"";
  text.clear();
  for (std::size_t at = 0; at < value.size(); ++at) {
    const char next = value[at] == '\\' && at + 1 < value.size() ? value[at + 1] : '\0';
    if (next == 'n' || next == 'N') {
      text += "\r\n";
      ++at;
    } else if (next != '\0' && kEscaped.find(next) != NarrowStringView::npos) {
      text += next;
      ++at;
    } else {
      text += value[at];
    }
  }
}

}  // namespace pim
