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

namespace {

// The property with the first value of a list, or null for one that libical takes for bad.
IcalOwner<icalproperty> FirstOf(const ContentLine& line) {
  // libical's time grows faster than the parameters.
  constexpr std::size_t kLongest = 4'000;
  const std::size_t size = line.text.size() - line.Value().size();
  const std::size_t end = std::min(line.text.find(',', size), line.text.size());
  // Of an END without a BEGIN it tells the terminal.
  if (end > kLongest || EqualsIgnoringCase(line.Name(), "END")) return nullptr;
  return IcalOwner<icalproperty>(icalproperty_new_from_string(line.text.substr(0, end).c_str()));
}

}  // namespace

std::string ZoneNameOf(const ContentLine& line) {
  const IcalOwner<icalproperty> first = FirstOf(line);
  if (first == nullptr) return {};
  icalparameter* const zone = icalproperty_get_first_parameter(first.get(), ICAL_TZID_PARAMETER);
  const char* const name = zone == nullptr ? nullptr : icalparameter_get_tzid(zone);
  return name == nullptr ? std::string() : std::string(name);
}

bool CountsFromEnd(const ContentLine& line) {
  const IcalOwner<icalproperty> first = FirstOf(line);
  if (first == nullptr) return false;
  icalparameter* const end = icalproperty_get_first_parameter(first.get(), ICAL_RELATED_PARAMETER);
  return end != nullptr && icalparameter_get_related(end) == ICAL_RELATED_END;
}

}  // namespace pim
