// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <thread>
#include <vector>

#include "pim/support/InlineList.h"
#include "pim/support/WideText.h"

namespace pim {
namespace {

// Texts inside the object, on the heap and across the change between the two.
TEST(WideText, KeepsItsText) {
  const std::vector<WideString> texts = {
      u"", u"a", u"sixsix", u"seven77", WideString(1000, u'x'), WideString(u"a\0b", 3), u"\xD800"};
  for (const WideString& from : texts) {
    for (const WideString& to : texts) {
      WideText text(from);
      EXPECT_EQ(text, from);
      text = to;
      EXPECT_EQ(text, to);
      WideText copy(text);
      text = WideText(from);
      copy = std::move(text);
      EXPECT_EQ(copy, from);
      copy = to;
      const WideText moved(std::move(copy));
      EXPECT_EQ(moved, to);
    }
  }
}

TEST(WideText, TakesPartsOfItself) {
  WideText text(u"abcdefghijkl");
  text = text.view().substr(1, 10);
  EXPECT_EQ(text, u"bcdefghijk");
  text = text.view().substr(2, 3);
  EXPECT_EQ(text, u"def");
  WideText& same = text;
  text = same;
  EXPECT_EQ(text, u"def");
}

TEST(WideText, TakesAscii) {
  WideText text(u"\u00e4lter");
  for (const std::string_view ascii : {"", "six666", "seven77", "seventeen letters"}) {
    text.AssignAscii(ascii);
    EXPECT_EQ(text, WideString(ascii.begin(), ascii.end()));
  }
}

// Lists of every size up to some blocks, copied, moved and growing by entries of their own.
TEST(InlineList, KeepsItsEntries) {
  using List = InlineList<WideText, 1>;
  std::vector<WideText> expected;
  List list;
  for (int i = 0; i < 20; ++i) {
    SCOPED_TRACE(i);
    EXPECT_TRUE(std::ranges::equal(list, expected));
    List copy(list);
    List moved(std::move(copy));
    EXPECT_TRUE(copy.empty());
    EXPECT_TRUE(moved == list);
    copy.emplace_back(u"something else");
    copy = list;
    moved = std::move(copy);
    EXPECT_TRUE(moved == list);
    expected.emplace_back(i == 0 ? WideText(u"the first entry") : WideText(expected[0]));
    i == 0 ? list.emplace_back(u"the first entry") : list.emplace_back(list[0]);
  }
}

// Blocks of all sizes lie apart, aligned, and may be freed in another thread than their own, which
// may have ended.
TEST(RecordMemory, SharedBetweenThreads) {
  constexpr std::size_t kBlocks = 3000;
  std::vector<std::vector<std::unique_ptr<WideText>>> texts(2);
  const auto make = [&texts](std::size_t thread) {
    for (std::size_t i = 0; i < kBlocks; ++i)
      texts[thread].push_back(
          std::make_unique<WideText>(WideString(i, static_cast<char16_t>(u'a' + i % 26))));
  };
  const auto check = [&texts](std::size_t thread) {
    for (std::size_t i = 0; i < kBlocks; ++i) {
      const WideString expected(i, static_cast<char16_t>(u'a' + i % 26));
      EXPECT_EQ(*texts[thread][i], expected);
      texts[thread][i].reset();
    }
  };
  std::thread first(make, 0);
  std::thread second(make, 1);
  first.join();
  second.join();
  std::thread third(check, 1);
  check(0);
  third.join();
}

}  // namespace
}  // namespace pim
