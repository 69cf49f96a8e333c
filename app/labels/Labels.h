// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <map>
#include <optional>
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

// Those of the language that the user asked for, else UsersLabels.
const LabelFile& LabelsOf(const std::optional<std::string>& language);

// Keys and words, in order. Blank lines and lines that begin with # say nothing; a line without an
// equals sign is put into `bad` as it stands, where that isn't null.
std::vector<std::pair<WideString, WideString>> ReadLabels(std::string_view text,
                                                          std::string* bad = nullptr);

// The words of one language by their keys.
class Titles {
 public:
  explicit Titles(const LabelFile& file);
  // The title of a field ("mail"), as its label FIELD_mail has it. Every language has all of them.
  const std::string& Of(std::string_view field) const;

 private:
  std::map<std::string, std::string, std::less<>> byField_;
};

}  // namespace pim::app
