// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <set>

#include "pim/platform/Host.h"
#include "platform/AppData.h"
#include "platform/Guid.h"
#include "platform/LetterCase.h"
#include "platform/MessageBox.h"
#include "platform/Visible.h"
#include "tests/platform/Scoped.h"

namespace pim {
namespace {

TEST(Host, MessagesGoToTheSinkOrToStandardError) {
  std::u16string seen;
  SetMessageSink([&seen](std::u16string_view text) { seen += text; });
  AfxMessageBox(u"to the host");
  SetMessageSink(nullptr);
  EXPECT_EQ(seen, u"to the host");
  testing::internal::CaptureStderr();
  AfxMessageBox(u"Invalid.\n\n\u001B[31m\u65E5");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "Invalid.\n\n\\u001B[31m\u65E5\n");
}

TEST(Host, VisibleText) {
  EXPECT_EQ(VisibleUtf8(u"a\nb\t\u007F\u0085c"), "a\\u000Ab\\u0009\\u007F\\u0085c");
  EXPECT_EQ(VisibleUtf8(u"\u202E\u2069\u00E9\u200D\U0001F600"),
            "\\u202E\\u2069\u00E9\u200D\U0001F600");
  EXPECT_EQ(VisibleUtf8(std::u16string{0xD800, 0}), "\uFFFD\\u0000");
}

TEST(Host, AppDataFolder) {
  static constexpr struct {
    const char* data;
    const char* home;
    const char16_t* folder;
  } kRows[] = {
      {"/data/", "/home/u", u"/data"},
      {"relative", "/home/u", u"/home/u/.local/share"},
      {nullptr, "/home/u", u"/home/u/.local/share"},
      {"", nullptr, u""},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(testing::PrintToString(row.folder));
    const test::ScopedVariable data("XDG_DATA_HOME", row.data);
    const test::ScopedVariable home("HOME", row.home);
    EXPECT_EQ(AppDataFolder(), row.folder);
    SetAppDataFolder("/set");
    EXPECT_EQ(AppDataFolder(), u"/set");
    SetAppDataFolder("");
  }
}

TEST(Host, Guids) {
  const GUID guid{{0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF, 0, 1, 2, 3, 4, 5, 6, 0xFF}};
  EXPECT_EQ(StringFromGUID2(guid), u"{01234567-89AB-CDEF-0001-0203040506FF}");
  std::set<std::u16string> texts;
  for (int i = 0; i < 100; ++i) {
    GUID random;
    ASSERT_TRUE(CoCreateGuid(random));
    const std::u16string text = StringFromGUID2(random);
    EXPECT_EQ(text[15], u'4');
    EXPECT_NE(std::u16string_view(u"89AB").find(text[20]), std::u16string_view::npos);
    texts.insert(text);
  }
  EXPECT_EQ(texts.size(), 100U);
}

TEST(Host, LetterCase) {
  static const std::pair<std::u16string, std::u16string> kSame[] = {
      {u"Azaz09[", u"aZAZ09["},           {u"M\u00DCLLER", u"m\u00FCller"}, {u"\u0416", u"\u0436"},
      {u"\u03A3\u03C2", u"\u03C3\u03C3"}, {u"\U00010400", u"\U00010428"},   {u"\uFF21", u"\uFF41"}};
  for (const auto& [a, b] : kSame) EXPECT_EQ(FoldLetterCase(a), FoldLetterCase(b));
  EXPECT_NE(FoldLetterCase(u"\u00DF"), FoldLetterCase(u"ss"));
  EXPECT_NE(FoldLetterCase(u"\u0131"), FoldLetterCase(u"i"));  // dotless i is another letter
  const std::u16string lone{u'A', 0xD801, u'B', 0xDC00};
  EXPECT_EQ(FoldLetterCase(lone), (std::u16string{u'a', 0xD801, u'b', 0xDC00}));
}

}  // namespace
}  // namespace pim
