// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "pim/platform/Host.h"
#include "platform/CodePages.h"

namespace pim {
namespace {

using namespace std::string_literals;

std::u16string Wide(std::uint32_t page, std::string_view bytes) {
  std::u16string wide = u"what was there before";
  MultiByteToWide(page, bytes, wide);
  return wide;
}

std::string Narrow(std::uint32_t page, std::u16string_view wide) {
  std::string bytes = "what was there before";
  WideToMultiByte(page, wide, bytes);
  return bytes;
}

// `text` in the middle of two ASCII runs of `size` characters.
template <class String>
String InRuns(std::size_t size, const String& text) {
  String whole(size, 'x');
  return whole.append(text).append(size, 'x');
}

class DefaultCodePage : public testing::Test {
 protected:
  ~DefaultCodePage() override { EXPECT_TRUE(SetDefaultCodePage("UTF-8")); }
};

// One U+FFFD for each maximal part, whatever surrounds it: each row stands alone and in ASCII runs
// of every length around a step.
TEST(CodePages, Utf8ToWide) {
  static const struct {
    std::string bytes;
    std::u16string wide;
  } kRows[] = {
      {"", u""},
      {"a\0b"s, u"a\0b"s},
      {"\xC3\xBC\xE6\x97\xA5\xF0\x9F\x98\x80", u"\u00FC\u65E5\U0001F600"},
      {"\xEF\xBB\xBF\xF4\x8F\xBF\xBF", u"\uFEFF\U0010FFFF"},
      {"\x80\xBF\xFF", u"\uFFFD\uFFFD\uFFFD"},
      {"\xC0\xAF\xC1\xBF", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"\xE0\x80\x80", u"\uFFFD\uFFFD\uFFFD"},            // overlong
      {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},            // a surrogate
      {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},  // beyond U+10FFFF
      {"\xE6\x97", u"\uFFFD"},                            // cut off
      {"\xF0\x9F\x98", u"\uFFFD"},
      {"\xF0\x9F\x98\xE6\x97\xA5", u"\uFFFD\u65E5"},  // cut off by a sequence
      {"\xF1\x80\xE1\x80\xC2", u"\uFFFD\uFFFD\uFFFD"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(testing::PrintToString(row.bytes));
    for (std::size_t n = 0; n < 20; ++n)
      EXPECT_EQ(Wide(kCodePageUtf8, InRuns(n, row.bytes)), InRuns(n, row.wide));
  }
}

TEST(CodePages, WideToUtf8) {
  static const struct {
    std::u16string wide;
    std::string bytes;
  } kRows[] = {
      {u"", ""},
      {u"a\0b"s, "a\0b"s},
      {u"\u007F\u0080\u07FF\u0800\uFFFF", "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF"},
      {u"\U00010000\U0010FFFF", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"},
      {{0xD800}, "\xEF\xBF\xBD"},
      {{0xDC00, 0xD800}, "\xEF\xBF\xBD\xEF\xBF\xBD"},
      {{0xD83D, 0xD83D, 0xDE00}, "\xEF\xBF\xBD\xF0\x9F\x98\x80"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(testing::PrintToString(row.bytes));
    for (const std::size_t n : {0U, 1U, 7U, 8U, 9U, 1020U, 1023U, 1024U})
      EXPECT_EQ(Narrow(kCodePageUtf8, InRuns(n, row.wide)), InRuns(n, row.bytes));
  }
}

// Reading a text into a string that was long enough once asks for no new memory.
TEST(CodePages, MemoryIsKept) {
  std::u16string wide(100, u'x');
  const auto* memory = wide.data();
  for (const std::uint32_t page : {kCodePageUtf8, kCodePageShiftJis}) {
    MultiByteToWide(page, "some twenty letters!", wide);
    EXPECT_EQ(wide, u"some twenty letters!");
    EXPECT_EQ(wide.data(), memory);
  }
}

TEST(CodePages, ShiftJis) {
  static const struct {
    std::string bytes;
    std::u16string wide;
  } kRows[] = {
      {"\\~", u"\\~"},
      {"\x93\xFA\x96{", u"\u65E5\u672C"},               // the second trail byte is a brace
      {"\x83\x5C\x5C", u"\u30BD\\"},                    // a trail byte is a backslash
      {"\xB1\x81\x60\x87\x40", u"\uFF71\uFF5E\u2460"},  // Microsoft's rows
      {"\x93", u"\uFFFD"},
      {"a\x81 b", u"a\uFFFD b"},
      {"\xFF\xFF\x93\xFA", u"\uFFFD\uFFFD\u65E5"},
      {"a\0\x93\xFA"s, u"a\0\u65E5"s},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(testing::PrintToString(row.bytes));
    EXPECT_EQ(Wide(kCodePageShiftJis, row.bytes), row.wide);
    if (row.wide.find(u'\uFFFD') == row.wide.npos) {
      EXPECT_EQ(Narrow(kCodePageShiftJis, row.wide), row.bytes);
    }
  }
  EXPECT_EQ(Narrow(kCodePageShiftJis, u"a\u00FC\U0001F600\u65E5"), "a??\x93\xFA");
  EXPECT_EQ(Narrow(kCodePageShiftJis, std::u16string{0xD800, u'b', 0xDC00}), "?b?");
}

// Each pass over an invalid byte starts the converter anew; a megabyte of them has to end soon.
TEST(CodePages, InvalidTextIsLinear) {
  const std::string bytes(1 << 20, '\xFF');
  EXPECT_EQ(Wide(kCodePageShiftJis, bytes), std::u16string(bytes.size(), u'\uFFFD'));
}

TEST_F(DefaultCodePage, Names) {
  const std::string umlaut = "\xFC";
  EXPECT_EQ(Wide(kCodePageDefault, umlaut), u"\uFFFD");
  EXPECT_TRUE(SetDefaultCodePage("CP1252"));
  for (const char* refused : {"", "no-such-page", "CP1252//IGNORE", "UTF-16LE,CP1252", "a b"}) {
    SCOPED_TRACE(refused);
    EXPECT_FALSE(SetDefaultCodePage(refused));
    EXPECT_EQ(Wide(kCodePageDefault, umlaut), u"\u00FC");
  }
  EXPECT_FALSE(SetDefaultCodePage("CP1252\0x"s));
  for (const char* utf8 : {"UTF-8", "utf8", "Utf_8"}) {
    SCOPED_TRACE(utf8);
    EXPECT_TRUE(SetDefaultCodePage(utf8));
    EXPECT_EQ(Wide(kCodePageDefault, "\xC3\xBC"), u"\u00FC");
  }
}

// Pages of which a part looks like ASCII and isn't, or in which letters wait for their accents.
TEST_F(DefaultCodePage, StatefulPages) {
  static const struct {
    const char* page;
    std::string bytes;
    std::u16string wide;
  } kRows[] = {
      {"ISO-2022-JP", "ab\x1B$B\x46|\x4B\\\x1B(Bcd", u"ab\u65E5\u672Ccd"},
      {"UTF-7", "a+ZeVnLA-bc", u"a\u65E5\u672Cbc"},
      {"UTF-16LE", "a\0\xE5\x65"s, u"a\u65E5"},
      {"CP1258", "a\xEC"s, u"\u00E1"},
      {"SHIFT_JIS", "\\~", u"\u00A5\u203E"},
      {"EUC-KR",
       "a\xB0\xA1"
       "b",
       u"a\uAC00b"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.page);
    ASSERT_TRUE(SetDefaultCodePage(row.page));
    for (int again = 0; again < 2; ++again) {  // the state of a text doesn't reach into the next
      EXPECT_EQ(Wide(kCodePageDefault, row.bytes), row.wide);
      Wide(kCodePageDefault, row.bytes.substr(0, row.bytes.size() / 2));
      EXPECT_EQ(Wide(kCodePageDefault, Narrow(kCodePageDefault, row.wide)), row.wide);
    }
  }
  ASSERT_TRUE(SetDefaultCodePage("UTF-16LE"));
  EXPECT_EQ(Wide(kCodePageDefault,
                 "\0\xDC"
                 "a\0b"s),
            u"\uFFFDa\uFFFD");  // units stay aligned
  EXPECT_EQ(Narrow(kCodePageDefault, std::u16string{0xD800, u'a'}),
            "\xFD\xFF"
            "a\0"s);
}

}  // namespace
}  // namespace pim
