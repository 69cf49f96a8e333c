// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <iterator>
#include <string>

#include "formats/prepare/BlockSteps.h"
#include "formats/prepare/TypeWords.h"

namespace pim {
namespace {

// Words that would say how the value is written if they stood alone.
constexpr std::string_view kCodingWords[] = {"BASE64", "QUOTED-PRINTABLE", "8BIT", "ENCODING",
                                             "CHARSET"};

bool MayStandAlone(std::string_view word) {
  return word.find_first_of("=\"\\") == std::string_view::npos &&
         std::ranges::none_of(kCodingWords, [word](std::string_view coding) {
           return EqualsIgnoringCase(coding, word);
         });
}

std::string AsParameter(std::string_view word) {
  return (MayStandAlone(word) ? ";" : ";TYPE=") + std::string(word);
}

// The words of a list, each as a parameter.
std::string Parted(std::string_view list) {
  std::string parts;
  while (!list.empty()) {
    const std::size_t comma = std::min(list.find(','), list.size());
    std::string word;
    for (const char c : list.substr(0, comma))
      if (c != '"' && !IsWhiteSpace(c)) word += c;
    if (!word.empty()) parts += AsParameter(word);
    list.remove_prefix(std::min(comma + 1, list.size()));
  }
  return parts;
}

}  // namespace

bool HasTypeParameter(std::string_view params) {
  if (params.find('=') == std::string_view::npos) return false;
  bool hasType = false;
  ForEachParameter(params, [&hasType](std::string_view name, std::string_view, std::string_view) {
    hasType = hasType || EqualsIgnoringCase(name, "TYPE");
  });
  return hasType;
}

bool MayNeedTypesParted(const LineHead& head) {
  if (!HasTypeParameter(head.params)) return false;
  const CardTypes* const types = TypesOfProperty(head.name);
  return head.params.find_first_of(",\"") != std::string_view::npos ||
         (types != nullptr && !types->takesTypeEquals);
}

void PartTypes(PropertyLine& line, PrepareNotes& notes) {
  const LineHead head = line.head();
  if (!head.hasColon() || !MayNeedTypesParted(head)) return;
  const CardTypes* const types = TypesOfProperty(head.name);
  std::string params;
  bool isChanged = false;
  ForEachParameter(
      head.params, [&](std::string_view name, std::string_view value, std::string_view whole) {
        const bool isType = EqualsIgnoringCase(name, "TYPE");
        const bool isList = isType && value.find_first_of(",\"") != std::string_view::npos;
        const bool isWord = isType && types != nullptr && !types->takesTypeEquals &&
                            types->Knows(value) && MayStandAlone(value);
        if (isList || isWord) {
          params += Parted(value);
          isChanged = true;
        } else {
          params += ";";
          params += whole;
        }
      });
  if (!isChanged) return;
  const auto at = static_cast<std::size_t>(head.params.data() - line.text.data());
  line.text.replace(at, head.params.size(), params);
  notes.Add(PrepareStep::Types, line.first, line.last, "types became words of their own");
}

}  // namespace pim
