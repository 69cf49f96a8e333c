// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>

#include "pim/platform/Host.h"
#include "platform/CodePages.h"
#include "platform/Files.h"
#include "support/FileNames.h"
#include "tests/platform/Scoped.h"

namespace pim {
namespace {

using test::TemporaryFolder;

// Takes a path as an export does.
void Take(const WideString& path) { ASSERT_TRUE(WriteFile(NativePath(path), "")); }

TEST(FileNames, Clean) {
  EXPECT_EQ(CleanFileName(u"A/B:C"), u"ABC");
  EXPECT_EQ(CleanFileName(u"\\/?\":<>|*"), u"");
  EXPECT_EQ(CleanFileName(u" a.b\t\u65E5. "), u" a.b\t\u65E5. ");
}

TEST(FileNames, Unique) {
  const TemporaryFolder folder;
  const WideString base = WideFromUtf8(folder.path()) + u"\\";
  static constexpr struct {
    const char16_t* wanted;
    const char16_t* given;
  } kRows[] = {
      {u"Doe.vcf", u"Doe.vcf"},    {u"Doe.vcf", u"Doe(2).vcf"},
      {u"Doe.vcf", u"Doe(3).vcf"}, {u"Doe(2).vcf", u"Doe(2)(2).vcf"},
      {u"a.b.vcf", u"a.b.vcf"},    {u"a.b.vcf", u"a.b(2).vcf"},
      {u".vcf", u".vcf"},          {u".vcf", u"(2).vcf"},
  };
  for (const auto& row : kRows) {
    const WideString path = UniqueFileName(base + row.wanted);
    EXPECT_EQ(path, base + row.given);
    Take(path);
  }
  std::filesystem::create_directory(folder / "taken.vcf");
  EXPECT_EQ(UniqueFileName(base + u"taken.vcf"), base + u"taken(2).vcf");
  std::filesystem::create_directory(folder / "dotted.d");
  Take(base + u"dotted.d\\name");
  EXPECT_EQ(UniqueFileName(base + u"dotted.d\\name"), base + u"dotted(2).d\\name");
  EXPECT_EQ(UniqueFileName(WideString(u"a\0b.vcf", 7)), WideString(u"a\0b.vcf", 7));
}

TEST(FileNames, UniqueNearTheLimit) {
  const TemporaryFolder folder;
  const WideString base = WideFromUtf8(folder.path()) + u"\\";
  const WideString long_path = base + WideString(250, u'a') + u".vcf";
  EXPECT_EQ(UniqueFileName(long_path), long_path);  // a free path stays at any length
  Take(long_path);
  for (int counter = 2; counter < 12; ++counter) {
    const WideString suffix = u"(" + WideFromUtf8(std::to_string(counter)) + u").vcf";
    const WideString path = UniqueFileName(long_path);
    EXPECT_EQ(path, long_path.substr(0, 259 - suffix.size()) + suffix);
    Take(path);
  }
  const WideString extension = base + u"x." + WideString(300, u'e');  // no room for a stem
  Take(extension);
  EXPECT_EQ(UniqueFileName(extension), WideString(u"(2).").append(300, u'e'));
}

// Long Japanese names, which the file system doesn't take whole: each still gets a file of its own.
TEST(FileNames, LongNamesStayApart) {
  const TemporaryFolder folder;
  const WideString base = WideFromUtf8(folder.path()) + u"\\" + WideString(120, u'\u6F22');
  UniqueNames names;
  for (const char16_t* end : {u"A.vcf", u"B.vcf", u"A.vcf", u"C.x y z w.vcf"})
    Take(names.Next(base + end, PathExists));
  EXPECT_EQ(folder.Count(), 4U);
  const WideString dotted = base + u"." + WideString(120, u'\u6F22');  // the dot lies in the cut
  for (int i = 0; i < 3; ++i) Take(names.Next(dotted, PathExists));
  EXPECT_EQ(folder.Count(), 7U);
}

// A row of equal names gives what single calls give, also where other files lie in the way, a name
// that was given isn't used, or another start has taken it.
TEST(FileNames, UniqueNamesAsSingleCalls) {
  const TemporaryFolder folder;
  const WideString base = WideFromUtf8(folder.path()) + u"\\";
  Take(base + u"Doe(4).vcf");
  UniqueNames names;
  for (int i = 0; i < 40; ++i) {
    const WideString wanted = base + (i % 7 == 3 ? u"Doe(12).vcf" : u"Doe.vcf");
    const WideString path = names.Next(wanted, PathExists);
    EXPECT_EQ(path, UniqueFileName(wanted));
    if (i % 5 != 0) Take(path);
  }
}

TEST(FileNames, NewGuids) {
  const WideString text = NewGuidText();
  EXPECT_EQ(text.size(), 36U);
  EXPECT_EQ(std::count(text.begin(), text.end(), u'-'), 4);
  EXPECT_NE(text, NewGuidText());
}

TEST(FileNames, Folders) {
  WideString dir = u"before";
  SetAppDataFolder("/data");
  GetAppDataDir(dir);
  EXPECT_EQ(dir, u"/data\\");
  EXPECT_EQ(GetCallerIdPath(), u"/data\\Tessaly Works\\Tessaly Deskmate IV\\CallerId");
  SetAppDataFolder("");
  const test::ScopedVariable data("XDG_DATA_HOME", nullptr);
  const test::ScopedVariable home("HOME", nullptr);
  GetAppDataDir(dir);
  EXPECT_EQ(dir, u"\\");
}

}  // namespace
}  // namespace pim
