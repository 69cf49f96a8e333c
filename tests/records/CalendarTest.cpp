// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "pim/records/Calendar.h"
#include "records/CategoryWords.h"

namespace pim {
namespace {

TEST(CCalendar, CategoryMask) {
  static const struct {
    std::vector<const char16_t*> names;
    std::uint32_t mask;
  } kRows[] = {
      {{}, 0},
      {{u"SCHEDULE"}, CATEGORY_APPOINTMENT},
      {{u"BIRTHDAY", u"MEMO", u"BIRTHDAY"}, CATEGORY_BIRTHDAY | CATEGORY_MEMO},
      {{u"Birthday", u"MEM", u"", u"OTHER"}, 0},  // words have a letter case and an end
      {{u"PHONE CALL", u"SICK DAY"}, CATEGORY_PHONE_CALL | CATEGORY_SICK_DAY},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.mask);
    CCalendar item;
    for (const char16_t* name : row.names) item.NewCategory(name);
    EXPECT_EQ(item.GetCategories(), row.mask);
  }
  EXPECT_EQ(TextOf(kCategoryWords, CATEGORY_APPOINTMENT), "APPOINTMENT");
}

TEST(CCalendar, AlarmRuntime) {
  struct Moment {
    int year, month, day, hour, minute, second;
  };
  static constexpr struct {
    Moment alarm;
    Moment start;
    bool valid;
    std::int32_t minutes;
  } kRows[] = {
      {{2024, 2, 29, 23, 50, 0}, {2024, 3, 1, 0, 5, 0}, true, 15},
      {{2024, 1, 1, 12, 0, 0}, {2024, 1, 1, 12, 1, 59}, true, 1},
      {{2024, 1, 1, 12, 10, 0}, {2024, 1, 1, 12, 0, 0}, true, -10},
      {{1899, 12, 29, 6, 0, 0}, {1899, 12, 30, 6, 0, 0}, true, 1440},  // day numbers change sign
      {{2024, 2, 30, 0, 0, 0}, {2024, 3, 1, 0, 0, 0}, false, 0},       // no such day
      {{100, 1, 1, 0, 0, 0}, {9999, 12, 31, 0, 0, 0}, false, 0},       // beyond 32 bits
  };
  const auto set = [](COleDateTimeNull& time, const Moment& m) {
    time.SetDateTime(m.year, m.month, m.day, m.hour, m.minute, m.second);
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.minutes);
    CCalendar item;
    std::int32_t minutes = 7;
    EXPECT_FALSE(item.GetAlarmRuntime(minutes));  // both are null
    EXPECT_EQ(minutes, 0);
    item.reminder.alarm_date.status = item.start_time.status = StatusValid;
    set(item.reminder.alarm_date, row.alarm);
    set(item.start_time, row.start);
    EXPECT_EQ(item.GetAlarmRuntime(minutes), row.valid);
    EXPECT_EQ(minutes, row.minutes);
  }
}

TEST(RecurrenceData, ComparesByTypeAndLists) {
  EXPECT_EQ(MakeRecurrenceData(0), nullptr);
  EXPECT_EQ(MakeRecurrenceData(7), nullptr);
  for (std::int32_t type = RECUR_DAILY; type <= RECUR_YEARLY_BY_DAY; ++type) {
    SCOPED_TRACE(type);
    const auto rule = MakeRecurrenceData(type);
    const auto same = MakeRecurrenceData(type);
    ASSERT_NE(rule, nullptr);
    EXPECT_EQ(rule->type, type);
    EXPECT_TRUE(*rule == *same);
    EXPECT_TRUE(*rule != *MakeRecurrenceData(type % 6 + 1));
    if (auto* days = dynamic_cast<DaysData*>(rule.get())) days->days = {1};
    if (auto* byPosition = dynamic_cast<MonthlyByPosData*>(rule.get())) byPosition->positions = {1};
    if (type == RECUR_DAILY) rule->endDate.status = StatusInvalid;
    EXPECT_TRUE(*rule != *same);
  }
}

}  // namespace
}  // namespace pim
