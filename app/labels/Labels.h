#pragma once

#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "pim/support/Strings.h"

namespace pim::app {

// The words of one language, as lines "key = text" in UTF-8.
struct LabelFile {
  std::string_view language;  // ISO 639-1
  std::string_view text;
};

// Those that the program holds, English first.
std::span<const LabelFile> LabelFiles();

// The words of a language named as in LANG ("de", "de_DE.UTF-8"); null when there are none.
const LabelFile* FindLabels(std::string_view language);
// The words of the user's language, by LC_ALL, LC_MESSAGES and LANG; English otherwise.
const LabelFile& UsersLabels();

// Keys and words, in order. Blank lines and lines that begin with # say nothing; a line without an
// equals sign is put into `bad` as it stands, where that isn't null.
std::vector<std::pair<WideString, WideString>> ReadLabels(std::string_view text,
                                                          std::string* bad = nullptr);

}  // namespace pim::app
