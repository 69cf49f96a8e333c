// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/output/ItemText.h"

#include <algorithm>

#include "app/output/Output.h"
#include "pim/manager/TypeWords.h"

namespace pim::app {
namespace {

// What a rule steps by, and what its list counts.
struct RuleWord {
  std::int32_t type;
  const char* unit;
  const char* listed;
};
constexpr RuleWord kRules[] = {
    {RECUR_DAILY, "day", ""},
    {RECUR_WEEKLY, "week", " on"},
    {RECUR_MONTHLY_BY_POS, "month", " in week"},
    {RECUR_MONTHLY_BY_DAY, "month", " on day"},
    {RECUR_YEARLY_BY_MONTH, "year", " in month"},
    {RECUR_YEARLY_BY_DAY, "year", " on day"},
};

// Numbers that count from the end are told as such: "1 last 2-last".
std::string NumberList(const RecurrenceList& numbers) {
  std::string text;
  for (const std::int64_t number : numbers) {
    text.append(1, ' ');
    if (number >= 0) {
      text.append(std::to_string(number));
    } else {
      text.append(number == -1 ? "" : std::to_string(-number) + "-").append("last");
    }
  }
  return text;
}

std::string WeekdayList(const RecurrenceList& weekdays) {
  std::string text;
  for (const std::int32_t weekday : weekdays) text.append(1, ' ').append(WeekdayWord(weekday));
  return text;
}

std::string ListText(const RecurrenceData& rule, const char* listed) {
  std::string text;
  if (const auto* byPos = dynamic_cast<const MonthlyByPosData*>(&rule)) {
    if (!byPos->positions.empty()) text.append(listed).append(NumberList(byPos->positions));
    if (!byPos->weekdays.empty()) text.append(" on").append(WeekdayList(byPos->weekdays));
  } else if (const auto* byDays = dynamic_cast<const DaysData*>(&rule)) {
    if (byDays->days.empty()) return text;
    text.append(listed).append(rule.type == RECUR_WEEKLY ? WeekdayList(byDays->days)
                                                         : NumberList(byDays->days));
  }
  return text;
}

}  // namespace

std::string_view NounOf(CalendarType kind) {
  switch (kind) {
    case CalendarType::Todo:
      return "to-do";
    case CalendarType::Memo:
      return "memo";
    default:
      return "event";
  }
}

WideString ItemName(const CCalendar& item) {
  return (item.summary.empty() ? item.description : item.summary).str();
}

std::string SpanEndText(const CCalendar& item, const COleDateTime& utc, const LocalTimes& times) {
  return item.allday == 1 ? times.Day(utc) : times.Moment(utc);
}

std::string RuleText(const CRecurrence& holder) {
  const RecurrenceData* rule = holder.GetRecurrenceData();
  if (rule == nullptr) return {};
  const auto* word = std::ranges::find(kRules, rule->type, &RuleWord::type);
  if (word == std::end(kRules)) return {};
  std::string text = "every ";
  text.append(rule->interval == 1 ? word->unit : Counted(rule->interval, word->unit));
  text.append(ListText(*rule, word->listed));
  if (rule->count > 0) text.append(", ").append(Counted(rule->count, "time"));
  if (rule->endDate.status != StatusNull)
    text.append(", until ").append(PlainMoment(rule->endDate));
  return text;
}

}  // namespace pim::app
