// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/icalendar/ContentLines.h"

#include <algorithm>

#include "support/Ascii.h"

namespace pim {
namespace {

// Takes the next physical line off `text`, without its end.
std::string_view TakeLine(std::string_view& text) {
  const std::size_t feed = text.find('\n');
  std::string_view line = text.substr(0, feed);
  text.remove_prefix(feed == std::string_view::npos ? text.size() : feed + 1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

bool IsFolded(std::string_view line) { return line.starts_with(' ') || line.starts_with('\t'); }

bool Says(std::string_view line, std::string_view name) {
  return line.size() > name.size() && line[name.size()] == ':' &&
         EqualsIgnoringCase(line.substr(0, name.size()), name);
}

// Where the colon stands that ends the name and its parameters, quoted ones passed over.
std::size_t FindColon(std::string_view text) {
  bool isQuoted = false;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == '"') isQuoted = !isQuoted;
    if (text[at] == ':' && !isQuoted) return at;
  }
  return std::string_view::npos;
}

// Hands each byte of a text on, its escapes undone, and whether it is a comma that parts.
template <class Take>
void TakeText(std::string_view value, Take take) {
  for (std::size_t at = 0; at < value.size(); ++at) {
    const bool isEscape = value[at] == '\\' && at + 1 < value.size();
    if (isEscape) ++at;
    if (isEscape && (value[at] == 'n' || value[at] == 'N')) {
      take('\n', false);
    } else {
      take(value[at], !isEscape && value[at] == ',');
    }
  }
}

}  // namespace

std::string_view ContentLine::Name() const {
  return Trim(std::string_view(text).substr(0, text.find_first_of(":;")));
}

std::string_view ContentLine::Value() const {
  const std::size_t colon = FindColon(text);
  return colon == std::string_view::npos ? std::string_view()
                                         : std::string_view(text).substr(colon + 1);
}

std::vector<ContentLine> ContentLinesOf(std::string_view component) {
  std::vector<ContentLine> lines;
  std::size_t depth = 0;
  for (std::size_t number = 0; !component.empty(); ++number) {
    const std::string_view line = TakeLine(component);
    if (IsFolded(line) && !lines.empty()) {
      lines.back().text.append(line.substr(1));
      continue;
    }
    if (line.empty()) continue;
    if (!lines.empty() && depth == 0) break;
    if (Says(line, "BEGIN")) ++depth;
    lines.push_back({std::string(line), number, depth});
    if (Says(line, "END") && depth > 0) --depth;
  }
  for (ContentLine& line : lines) line.hasNul = std::erase(line.text, '\0') > 0;
  return lines;
}

LineProperties::LineProperties(const ContentLine& line) {
  // Between a frame of its own libical reads any property alike.
  constexpr std::string_view kHead = "BEGIN:VEVENT\r\n";
  constexpr std::string_view kTail = "\r\nEND:VEVENT\r\n";
  std::string text;
  text.reserve(kHead.size() + line.text.size() + kTail.size());
  text.append(kHead).append(line.text).append(kTail);
  component_.reset(icalcomponent_new_from_string(text.c_str()));
  if (component_ == nullptr) return;
  for (icalproperty* property =
           icalcomponent_get_first_property(component_.get(), ICAL_ANY_PROPERTY);
       property != nullptr;
       property = icalcomponent_get_next_property(component_.get(), ICAL_ANY_PROPERTY)) {
    const bool isGood = icalproperty_isa(property) != ICAL_XLICERROR_PROPERTY &&
                        icalproperty_get_value(property) != nullptr;
    if (isGood) properties_.push_back(property);
  }
}

std::vector<std::string> TextsOf(const ContentLine& line) {
  std::vector<std::string> texts(1);
  TakeText(line.Value(), [&texts](char c, bool isComma) {
    if (isComma) {
      texts.emplace_back();
    } else {
      texts.back().append(1, c);
    }
  });
  return texts;
}

std::string TextOfLine(const ContentLine& line) {
  std::string text;
  TakeText(line.Value(), [&text](char c, bool) { text.append(1, c); });
  return text;
}

std::string ZoneNameOf(const ContentLine& line) {
  for (icalproperty* const property : LineProperties(line)) {
    icalparameter* const zone = icalproperty_get_first_parameter(property, ICAL_TZID_PARAMETER);
    const char* const name = zone == nullptr ? nullptr : icalparameter_get_tzid(zone);
    if (name != nullptr) return name;
  }
  return {};
}

}  // namespace pim
