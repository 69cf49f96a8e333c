#include "app/labels/Labels.h"

#include <algorithm>
#include <cstdlib>

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
