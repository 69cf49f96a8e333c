// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/records/CutTexts.h"
#include "tests/vcalendar/VCalendars.h"

namespace pim {
namespace {

std::vector<std::string> GoldenTexts() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(PIM_TEST_DATA))
    if (entry.path().extension() == ".vcs") names.push_back(entry.path().filename().string());
  std::ranges::sort(names);
  return names;
}

// The creation stamp goes out under a word that isn't read.
std::string WithoutCreated(std::string text) {
  for (std::size_t at; (at = text.find("DCREATED:")) != std::string::npos;)
    text.erase(at, text.find('\n', at) + 1 - at);
  return text;
}

class VCalendarGolden : public testing::TestWithParam<std::string> {};

// Each tests/data/*.vcs, read and written in Tokyo, gives its .golden file; what was written comes
// back unchanged, whatever the zone.
TEST_P(VCalendarGolden, RoundTrip) {
  const std::string path = std::string(PIM_TEST_DATA "/") + GetParam();
  for (const char* name : kZones) {
    SCOPED_TRACE(name);
    const ScopedZone zone(name);
    const std::string written = WriteItems(ReadItems(test::ContentOf(path)));
    if (name == kZones[1]) {
      EXPECT_EQ(written, test::ContentOf(path + ".golden"));
    }
    EXPECT_EQ(WriteItems(ReadItems(written)), WithoutCreated(written));
  }
}

TEST_P(VCalendarGolden, Cut) {
  const ShownMessages messages;
  ExpectSameRecordsWhereverCut<VCalendarReader, CCalendars>(
      test::ContentOf(std::string(PIM_TEST_DATA "/") + GetParam()), CalendarMap());
}

std::string TestName(const testing::TestParamInfo<std::string>& golden) {
  std::string name = golden.param.substr(0, golden.param.find('.'));
  std::ranges::replace(name, '-', '_');
  return name;
}
INSTANTIATE_TEST_SUITE_P(Data, VCalendarGolden, testing::ValuesIn(GoldenTexts()), TestName);

}  // namespace
}  // namespace pim
