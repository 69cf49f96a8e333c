// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "vcalendar/RecurrenceWriter.h"

#include "support/DateTimeText.h"
#include "vcalendar/VCalendarWords.h"

namespace pim {
namespace {

void AppendWeekdays(NarrowString& text, const RecurrenceList& weekdays) {
  for (const std::int32_t weekday : weekdays) {
    const NarrowStringView word = TextOf(kWeekdayWords, static_cast<std::uint32_t>(weekday));
    if (!word.empty()) text.append(word).append(1, ' ');
  }
}

// A number that counts from the end has its minus sign behind it.
void AppendFromEitherEnd(NarrowString& text, const RecurrenceList& numbers,
                         NarrowStringView positiveSign) {
  for (const std::int64_t number : numbers) {
    if (number > 0) {
      text.append(std::to_string(number)).append(positiveSign).append(1, ' ');
    } else {
      text.append(std::to_string(-number)).append("- ");
    }
  }
}

void AppendNumbers(NarrowString& text, const RecurrenceList& numbers) {
  for (const std::int32_t number : numbers) text.append(std::to_string(number)).append(1, ' ');
}

void AppendLists(NarrowString& text, const RecurrenceData& rule) {
  if (const auto* byPos = dynamic_cast<const MonthlyByPosData*>(&rule)) {
    AppendFromEitherEnd(text, byPos->positions, "+");
    AppendWeekdays(text, byPos->weekdays);
  } else if (const auto* byDays = dynamic_cast<const DaysData*>(&rule)) {
    if (rule.type == RECUR_WEEKLY) {
      AppendWeekdays(text, byDays->days);
    } else if (rule.type == RECUR_MONTHLY_BY_DAY) {
      AppendFromEitherEnd(text, byDays->days, {});
    } else {
      AppendNumbers(text, byDays->days);
    }
  }
}

// False when there is no rule to write.
bool AppendRuleLine(PropertyLines& out, VCalPropertyId id, const CRecurrence& holder) {
  NarrowString text;
  if (holder.data == nullptr || !FormatRule(*holder.data, text)) return false;
  out.Append(TextOf(kVCalendarProperties, static_cast<std::uint32_t>(id)), {}, text);
  return true;
}

}  // namespace

void AppendRuleLines(PropertyLines& out, const CRecurrence& recurrence,
                     const CRecurrence& exceptionRule) {
  if (AppendRuleLine(out, VCAL_RRULE, recurrence)) AppendRuleLine(out, VCAL_XRULE, exceptionRule);
}

bool FormatRule(const RecurrenceData& data, NarrowString& text) {
  text = TextOf(kRuleWords, static_cast<std::uint32_t>(data.type));
  if (text.empty()) return false;
  text.append(std::to_string(data.interval));
  const bool ends = data.endDate.GetFields().has_value();
  const bool counted = !ends || data.count > 0;  // #0 says that a rule has no end
  if (data.type != RECUR_DAILY) text.append(1, ' ');
  AppendLists(text, data);
  if (counted)
    text.append(data.type == RECUR_DAILY ? " #" : "#").append(std::to_string(data.count));
  if (ends) text = AppendEndDate(std::move(text), data.endDate);
  return true;
}

NarrowString AppendEndDate(NarrowString text, const COleDateTime& endDate) {
  if (!endDate.GetFields()) return text;
  return text.append(1, ' ').append(
      DateTimeText(endDate).AddDate().AddMinutes().AddSeconds().Add("Z").view());
}

}  // namespace pim
