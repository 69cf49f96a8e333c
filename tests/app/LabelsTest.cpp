// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

#include "app/album/ReasonWords.h"
#include "app/labels/Labels.h"
#include "pim/manager/LabelKeys.h"
#include "platform/CodePages.h"

namespace pim::app {
namespace {

// Each language has a word for every key that a rendering asks for, and one for each title and word
// of albums that English has; no other.
TEST(Labels, FilesAreComplete) {
  std::vector<WideString> keys;
  for (const LabelKey& row : kLabelKeys) keys.emplace_back(row.key);
  for (const auto& [key, text] : ReadLabels(LabelFiles().front().text))
    if (!key.starts_with(u"VC")) keys.push_back(key);
  EXPECT_GT(keys.size(), std::size(kLabelKeys));
  std::ranges::sort(keys);
  EXPECT_EQ(LabelFiles().size(), 6U);
  for (const LabelFile& file : LabelFiles()) {
    SCOPED_TRACE(file.language);
    std::string bad;
    std::vector<WideString> found;
    for (const auto& [key, text] : ReadLabels(file.text, &bad)) {
      found.push_back(key);
      EXPECT_NE(text, u"") << Utf8FromWide(key);
    }
    std::ranges::sort(found);
    EXPECT_EQ(found, keys);
    EXPECT_EQ(bad, "");
  }
}

// In English a page says of a line what an account says.
TEST(Labels, ReasonsAreTheAccounts) {
  const ReasonWords words(LabelFiles().front());
  for (const LossRow& row : kLosses) EXPECT_EQ(Utf8FromWide(words.Of(row.name)), row.text);
  for (const TextFault fault : {TextFault::NoParameter, TextFault::NoParameterValue,
                                TextFault::NoBase64, TextFault::NoMemory})
    EXPECT_EQ(Utf8FromWide(words.Of(ReasonOf(fault))), TextOf(fault));
}

TEST(Labels, Languages) {
  static constexpr struct {
    const char* name;
    const char* language;  // null: none
  } kRows[] = {
      {"de", "de"}, {"ja_JP.UTF-8", "ja"}, {"FR@euro", "fr"}, {"C", nullptr}, {"", nullptr}};
  for (const auto& row : kRows) {
    const LabelFile* found = FindLabels(row.name);
    EXPECT_EQ(found == nullptr ? "" : found->language, row.language == nullptr ? "" : row.language);
  }
}

}  // namespace
}  // namespace pim::app
