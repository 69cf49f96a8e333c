// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace pim {

// The texts of the tests and the samples, which all are of the old forms.
inline std::vector<std::string> TestTexts() {
  std::vector<std::string> texts;
  for (const char* folder : {PIM_TEST_DATA, PIM_TEST_DATA "/../../samples"}) {
    for (const auto& file : std::filesystem::directory_iterator(folder)) {
      const auto extension = file.path().extension();
      if (extension != ".vcf" && extension != ".vcs") continue;
      std::ifstream stream(file.path(), std::ios::binary);
      texts.emplace_back(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
    }
  }
  return texts;
}

}  // namespace pim
