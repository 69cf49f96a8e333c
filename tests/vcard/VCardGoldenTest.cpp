// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/records/CutTexts.h"
#include "tests/vcard/VCards.h"

namespace pim {
namespace {

std::vector<std::string> GoldenTexts() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(PIM_TEST_DATA))
    if (entry.path().extension() == ".vcf") names.push_back(entry.path().filename().string());
  std::ranges::sort(names);
  return names;
}

class VCardGolden : public testing::TestWithParam<std::string> {};

// Each tests/data/*.vcf, read and written, gives its .golden file, and that comes back unchanged.
TEST_P(VCardGolden, RoundTrip) {
  const PicturesFolder folder;
  const std::string path = std::string(PIM_TEST_DATA "/") + GetParam();
  const std::string written = WriteCards(ReadCards(FileBytes(path)));
  EXPECT_EQ(written, FileBytes(path + ".golden"));
  EXPECT_EQ(WriteCards(ReadCards(written)), written);
}

TEST_P(VCardGolden, Cut) {
  SetAppDataFolder("/nonexistent");  // pictures have names of their own at each reading
  ExpectSameRecordsWhereverCut<VCardReader, CContacts>(
      FileBytes(std::string(PIM_TEST_DATA "/") + GetParam()), ContactMap());
  SetAppDataFolder({});
}

std::string TestName(const testing::TestParamInfo<std::string>& golden) {
  std::string name = golden.param.substr(0, golden.param.find('.'));
  std::ranges::replace(name, '-', '_');
  return name;
}
INSTANTIATE_TEST_SUITE_P(Data, VCardGolden, testing::ValuesIn(GoldenTexts()), TestName);

}  // namespace
}  // namespace pim
