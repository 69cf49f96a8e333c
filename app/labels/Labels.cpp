// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/labels/Labels.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

#include "platform/CodePages.h"
#include "support/Ascii.h"

namespace pim::app {

const LabelFile* FindLabels(std::string_view language) {
  const std::string_view wanted = language.substr(0, language.find_first_of("_.@-"));
  const std::span<const LabelFile> files = LabelFiles();
  const auto found = std::ranges::find_if(
      files, [wanted](const LabelFile& file) { return EqualsIgnoringCase(file.language, wanted); });
  return found == files.end() ? nullptr : &*found;
}

Titles::Titles(const LabelFile& file) {
  constexpr WideStringView kPrefix = u"FIELD_";
  for (const auto& [key, text] : ReadLabels(file.text)) {
    if (!key.starts_with(kPrefix)) continue;
    byField_.emplace(Utf8FromWide(WideStringView(key).substr(kPrefix.size())), Utf8FromWide(text));
  }
}

const std::string& Titles::Of(std::string_view field) const {
  const auto found = byField_.find(field);
  if (found == byField_.end()) throw std::logic_error("no title for " + std::string(field));
  return found->second;
}

// The first variable that is set decides, as for all programs.
const LabelFile& UsersLabels() {
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* language = std::getenv(name);
    if (language == nullptr || *language == '\0') continue;
    const LabelFile* found = FindLabels(language);
    return found == nullptr ? LabelFiles().front() : *found;
  }
  return LabelFiles().front();
}

const LabelFile& LabelsOf(const std::optional<std::string>& language) {
  const LabelFile* found = language ? FindLabels(*language) : nullptr;
  return found != nullptr ? *found : UsersLabels();
}

std::vector<std::pair<WideString, WideString>> ReadLabels(std::string_view text, std::string* bad) {
  std::vector<std::pair<WideString, WideString>> labels;
  while (!text.empty()) {
    const std::string_view whole = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(whole.size() + 1, text.size()));
    const std::string_view line = Trim(whole);
    if (line.empty() || line.front() == '#') continue;
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) {
      if (bad != nullptr) *bad = line;
      continue;
    }
    labels.emplace_back(WideFromUtf8(Trim(line.substr(0, equals))),
                        WideFromUtf8(Trim(line.substr(equals + 1))));
  }
  return labels;
}

}  // namespace pim::app
