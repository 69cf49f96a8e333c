// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/vcalendar/VCalendars.h"
#include "vcalendar/RecurrenceReader.h"
#include "vcalendar/RecurrenceWriter.h"

namespace pim {
namespace {

void Parse(std::string_view text, CRecurrence& holder) {
  ParseRecurrence(text.data(), static_cast<std::int32_t>(text.size()), holder);
}

// A rule that was read, written again; empty without one.
std::string Rewritten(std::string_view text) {
  CRecurrence holder;
  Parse(text, holder);
  std::string written;
  const bool isRule = holder.data != nullptr && FormatRule(*holder.data, written);
  EXPECT_EQ(isRule, !written.empty());
  return written;
}

TEST(Recurrence, ReadsRules) {
  static constexpr struct {
    const char* text;
    const char* rewritten;
  } kRows[] = {
      {"D1", "D1 #0"},
      {" \tD007 #5\v", "D7 #5"},
      {"D1 MO TU", "D1 #0"},
      {"D2 20101231T235959Z", "D2 20101231T235959Z"},
      {"D99999999999 #99999999999", "D2147483647 #2147483647"},
      {"D1 20100230T000000", "D1 #0"},  // an invalid end counts as none
      {"W1", "W1 #0"},
      {"W1 th Mo TH #4", "W1 MO TH #4"},
      {"W1 MO #4 20101231T000000Z", "W1 MO #4 20101231T000000Z"},
      {"W1 MO 20101231T000000", "W1 MO  20101231T000000Z"},
      {"W1 #", "W1 #0"},
      {"MP1 1- 1+ MO", "MP1 1+ 1- MO #0"},
      {"MP1 MO", "MP1 MO #0"},
      {"MP1 5-", "MP1 5- #0"},
      {"MD1 LD 15 1", "MD1 1 15 1- #0"},
      {"MD1 5- 10+ 31-", "MD1 10 31- 5- #0"},
      {"YM1 12 1 6", "YM1 1 6 12 #0"},
      {"YD1 366 0001 1", "YD1 1 366 #0"},
  };
  const ShownMessages messages;
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(Rewritten(row.text), row.rewritten);
    EXPECT_EQ(Rewritten(row.rewritten), row.rewritten);
  }
  EXPECT_TRUE(messages.texts.empty());
  CRecurrence ends;
  Parse("W1 MO 20100230T000000", ends);
  EXPECT_EQ(ends.data->endDate.status, StatusInvalid);
  Parse("W1 MO", ends);
  EXPECT_EQ(ends.data->endDate.status, StatusNull);
}

TEST(Recurrence, RefusesTheRest) {
  const ShownMessages messages;
  std::size_t refused = 0;
  for (const char* text : {"X1",
                           "w1",
                           "M1",
                           "YX1",
                           "D",
                           "D0",
                           "D 1",
                           "W MO",
                           "D1a",
                           "W1,2",
                           "D-1",
                           "D1#5",
                           "D1 #x",
                           "D1 #5 x",
                           "D1 # 5",
                           "D1 20100101",
                           "D1 x20101231T000000",
                           "D1 20101231T00000x",
                           "D1 2010123xT000000",
                           "D1 20101231 000000",
                           "D1 20101231T000000z",
                           "W1 XX",
                           "W1 MOTU",
                           "W1 MO 20101231T000000Z #4",
                           "W1 MO #20101231T000000Z",
                           "MP1 6+ MO",
                           "MP1 1 MO",
                           "MP1 1+ MO 2+",
                           "MD1 0",
                           "MD1 05",
                           "MD1 32",
                           "MD1 ld",
                           "MD1 5*",
                           "MD1 -5",
                           "MD1 +",
                           "YM1 0",
                           "YM1 01",
                           "YM1 13",
                           "YD1 0",
                           "YD1 367",
                           "YD1 99999999999",
                           "YD1 -1",
                           "\xE3\x81\x82"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Rewritten(text), "");
    EXPECT_EQ(messages.texts.size(), ++refused);
  }
  EXPECT_EQ(messages.texts.front(), u"Invalid recurrence.\n\nX1");
  EXPECT_EQ(messages.texts.back(), u"Invalid recurrence.\n\n\u3042");
  // The value is shown as it came; the rule before it is gone, the other one isn't.
  const CCalendar item =
      ReadItem("RRULE:D1\nXRULE:W1\nRRULE;CHARSET=SHIFT_JIS:FOO \nRRULE:\nSUMMARY:x");
  EXPECT_EQ(messages.texts.back(), u"Invalid recurrence.\n\nFOO ");
  EXPECT_EQ(item.recurrence.GetRecurrenceData(), nullptr);
  EXPECT_EQ(item.exceptionRule.GetRecurrenceData()->type, RECUR_WEEKLY);
  EXPECT_EQ(item.summary, u"x");
}

// Long values end: a megabyte of entries of either order, and of blanks.
TEST(Recurrence, LongLists) {
  std::string descending = "YD1";
  for (int i = 300'000; i > 0; --i) descending += " " + std::to_string(i % 366 + 1);
  CRecurrence holder;
  Parse(descending, holder);
  ASSERT_NE(holder.data, nullptr);
  EXPECT_EQ(static_cast<DaysData&>(*holder.data).days.size(), 366U);
  EXPECT_EQ(Rewritten("W1" + std::string(1'000'000, ' ') + "MO"), "W1 MO #0");
}

TEST(Recurrence, WritesWhatNoReaderMakes) {
  CRecurrence rule;
  CRecurrence except;
  const auto lines = [&] {
    std::string text;
    PropertyLines out(text);
    AppendRuleLines(out, rule, except);
    return text;
  };
  except.data = MakeRecurrenceData(RECUR_YEARLY_BY_MONTH);
  EXPECT_EQ(lines(), "");
  rule.data = MakeRecurrenceData(RECUR_MONTHLY_BY_POS);
  auto& byPos = static_cast<MonthlyByPosData&>(*rule.data);
  byPos.positions = {0, 2, -2147483647 - 1};
  byPos.weekdays = {7, 2, -1};
  byPos.count = -3;
  EXPECT_EQ(lines(), "RRULE:MP0 0- 2+ 2147483648- TU #-3\r\nXRULE:YM0 #0\r\n");
  byPos.endDate = Moment(987, 2, 3, 4, 5, 6);
  EXPECT_EQ(lines(), "RRULE:MP0 0- 2+ 2147483648- TU  09870203T040506Z\r\nXRULE:YM0 #0\r\n");
  except.data->type = 9;
  EXPECT_EQ(lines(), "RRULE:MP0 0- 2+ 2147483648- TU  09870203T040506Z\r\n");
  byPos.type = 0;
  EXPECT_EQ(lines(), "");
  byPos.type = RECUR_WEEKLY;  // a type that its record isn't of
  EXPECT_NE(lines(), "");
}

TEST(Recurrence, ListsAreSortedAsUnsigned) {
  RecurrenceList list;
  for (const std::int32_t value : {5, -1, 31, -5, 5, 1, -1, 0}) AddSorted(list, value);
  EXPECT_EQ(list, (RecurrenceList{0, 1, 5, 31, -5, -1}));
}

}  // namespace
}  // namespace pim
