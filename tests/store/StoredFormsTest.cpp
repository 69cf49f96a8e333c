// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <limits>

#include "store/StoredForms.h"
#include "tests/store/SampleRecords.h"

namespace pim {
namespace {

TEST(StoredForms, TextsComeBack) {
  static const WideString kRows[] = {
      u"", u"abc", u"\xD800", u"\xDFFF\xD800", u"a\xD83D\xD83D\xDE00\xDE00z", testing::kHardText,
  };
  for (const WideString& row : kRows) {
    std::string stored = "before";
    AppendStoredText(row, stored);
    WideString read = u"old";
    ReadStoredText(std::string_view(stored).substr(6), read);
    EXPECT_EQ(read, row);
    EXPECT_EQ(ListFromStored(StoredList({row, u"", row})), (std::vector<WideText>{row, u"", row}));
  }
  EXPECT_EQ(ListFromStored(u"Sales"), std::vector<WideText>{u"Sales"});  // another program's
  EXPECT_EQ(ListFromStored(u"\\"), std::vector<WideText>{u"\\"});
  for (const char* bytes : {"\xED", "\xED\xA0", "\xFF\xED\xA0\x80\xC0", "\xED\x9F\xBF\xED\xBF"}) {
    WideString read;
    ReadStoredText(bytes, read);
    EXPECT_NE(read.find(u'\xFFFD') == 0 || read.find(u'\xD7FF') == 0, false) << bytes;
  }
}

TEST(StoredForms, NumbersAreTheNearest) {
  static const struct {
    const char* stored;
    RecurrenceList numbers;
  } kRows[] = {
      {"", {}},
      {"1,31,-1", {1, 31, -1}},
      {"99999999999,-99999999999", {2147483647, -2147483647 - 1}},
      {"x,,7days,", {0, 0, 7}},
  };
  for (const auto& row : kRows) EXPECT_EQ(NumbersFromStored(row.stored), row.numbers);
}

TEST(StoredForms, SecondsOnlyWhereExact) {
  static const struct {
    double day;
    std::optional<std::int64_t> seconds;
  } kRows[] = {
      {25569.0, 0},          {25569.5, 43200},
      {-1.25, -2209226400},  {0.1234567, std::nullopt},
      {-0.5, std::nullopt},  // also written 0.5
      {1e300, std::nullopt}, {std::numeric_limits<double>::quiet_NaN(), std::nullopt},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.day);
    EXPECT_EQ(WholeSecondsOf(testing::Exactly(row.day)), row.seconds);
    if (row.seconds) {
      EXPECT_EQ(TimeFromSeconds(*row.seconds).value, row.day);
    }
  }
  for (const auto farthest :
       {std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()})
    EXPECT_EQ(TimeFromSeconds(farthest).GetYear(), -1);
}

TEST(StoredForms, PlainFileNames) {
  for (const WideStringView name : {u"a.jpg", u"..a", u""}) EXPECT_TRUE(IsPlainFileName(name));
  const WideString withNul(1, u'\0');
  for (const WideStringView name : {WideStringView(u"../a"), WideStringView(u"a\\b"),
                                    WideStringView(u".."), WideStringView(withNul)})
    EXPECT_FALSE(IsPlainFileName(name));
}

}  // namespace
}  // namespace pim
