#include <gtest/gtest.h>

#include <vector>

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

}  // namespace
}  // namespace pim
