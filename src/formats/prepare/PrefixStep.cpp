// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <string>
#include <unordered_map>

#include "formats/prepare/BlockSteps.h"
#include "formats/prepare/TypeWords.h"
#include "formats/vcard4/CardWords.h"
#include "pim/records/TypeCodes.h"

namespace pim {
namespace {

// The prefix of a name that is known without it, its dot included; empty for any other name.
std::string_view PrefixOf(std::string_view name) {
  const std::size_t dot = name.find('.');
  if (dot == 0 || dot == std::string_view::npos || name.size() > kLongestName ||
      !std::ranges::all_of(name.substr(0, dot),
                           [](char c) { return IsLetter(c) || IsDigit(c) || c == '-'; }))
    return {};
  const std::string_view rest = name.substr(dot + 1);
  const bool isKnown = PropertyOf(rest).has_value() || EqualsIgnoringCase(rest, kLabelProperty) ||
                       EqualsIgnoringCase(rest, "X-ABADR");
  return isKnown ? name.substr(0, dot + 1) : std::string_view();
}

bool IsLabel(const PropertyLine& line) {
  const LineHead head = line.head();
  return EqualsIgnoringCase(head.name.substr(PrefixOf(head.name).size()), kLabelProperty);
}

// Puts what a label says into the type of the property that it is for. False where that has no word
// for it.
bool PutIntoType(PropertyLine& line, std::string_view label) {
  const LineHead head = line.head();
  const std::string_view name = head.name.substr(PrefixOf(head.name).size());
  const CardTypes* const types = TypesOfProperty(name);
  if (types == nullptr || !head.hasColon()) return false;
  const std::string words = types->wordsOfLabel(label);
  if (words.empty()) return false;
  std::string params;
  for (std::string_view rest = words; !rest.empty();) {
    const std::size_t blank = std::min(rest.find(' '), rest.size());
    params.append(";").append(rest.substr(0, blank));
    rest.remove_prefix(std::min(blank + 1, rest.size()));
  }
  line.text.insert(head.colon, params);
  return true;
}

}  // namespace

bool MayNeedPrefixOff(const LineHead& head) { return !PrefixOf(head.name).empty(); }

void TakePrefixesOff(std::vector<PropertyLine>& lines, PrepareNotes& notes) {
  // Labels first, since they find what they are for by the prefix.
  std::unordered_map<std::string, PropertyLine*> labelled;
  for (PropertyLine& line : lines) {
    const std::string_view prefix = PrefixOf(line.head().name);
    if (!prefix.empty() && !IsLabel(line)) labelled.try_emplace(std::string(prefix), &line);
  }
  for (PropertyLine& label : lines) {
    const std::string_view prefix = PrefixOf(label.head().name);
    if (prefix.empty() || !IsLabel(label)) continue;
    // The first label of a prefix alone counts.
    const auto own = labelled.extract(std::string(prefix));
    if (own.empty() || !PutIntoType(*own.mapped(), Trim(label.value()))) continue;
    notes.Add(PrepareStep::Prefixes, label.first, label.last, "the label became a type");
    label.text.clear();
  }
  // Where one ended a picture, a blank line does.
  bool isPicture = false;
  for (PropertyLine& line : lines) {
    if (line.text.empty() && isPicture) line.text = "\r\n";
    isPicture = LineCoding::Of(line.head().params).isBase64;
  }
  std::erase_if(lines, [](const PropertyLine& line) { return line.text.empty(); });
  for (PropertyLine& line : lines) {
    const std::string prefix(PrefixOf(line.head().name));
    if (prefix.empty()) continue;
    if (IsLabel(line)) {
      notes.AddLoss(line.first, {std::string(kLabelProperty), FormatVerdict::Dropped,
                                 FormatReason::TypeIgnored, 0});
    }
    // With a carriage return ahead of it, which the readers pass over.
    line.text.erase(0, line.text.find(prefix) + prefix.size());
    notes.Add(PrepareStep::Prefixes, line.first, line.last, "\"" + prefix + "\" taken off");
  }
}

}  // namespace pim
