// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/icalendar/RuleText.h"

#include <cstdlib>
#include <limits>

#include "formats/icalendar/RuleDates.h"
#include "pim/manager/TypeWords.h"
#include "support/DateTimeText.h"

namespace pim {
namespace {

// A list of RRULE under way, of which numbers beyond the largest are left out.
class RulePart {
 public:
  RulePart(RuleText& rule, const char* name) : rule_(rule), name_(name) {}

  void Add(const std::string& entry) {
    rule_.text.append(isEmpty_ ? name_ : ",").append(entry);
    isEmpty_ = false;
  }
  void AddNumbers(const RecurrenceList& numbers, std::int32_t largest, bool countsFromEnd) {
    for (const std::int32_t number : numbers) {
      if (IsWithin(number, largest, countsFromEnd)) Add(std::to_string(number));
    }
  }
  // False, with a loss told, for a number that is none.
  bool IsWithin(std::int32_t number, std::int32_t largest, bool countsFromEnd) {
    const bool isGood =
        number != 0 && number <= largest && number >= (countsFromEnd ? -largest : 1);
    if (!isGood) rule_.loss = FormatReason::BadValue;
    return isGood;
  }
  bool isEmpty() const { return isEmpty_; }

 private:
  RuleText& rule_;
  const char* name_;
  bool isEmpty_ = true;
};

// By its number from 0, as `day + 1` counts from 1.
std::string WeekdayOf(const icaltimetype& day) {
  return std::string(WeekdayWord(icaltime_day_of_week(day) - 1));
}

void AddWeekdays(RulePart& part, const RecurrenceList& weekdays, const std::string& position) {
  for (const std::int32_t weekday : weekdays) {
    if (weekday == std::numeric_limits<std::int32_t>::max() ||
        !part.IsWithin(weekday + 1, kDaysOfWeek, false))
      continue;
    part.Add(position + std::string(WeekdayWord(weekday)));
  }
}

// Without positions or weekdays those of the start.
void AddPositions(RuleText& rule, const MonthlyByPosData& data, const icaltimetype& start) {
  constexpr std::int32_t kWeeks = 5;
  RulePart part(rule, ";BYDAY=");
  const RecurrenceList own = {(start.day - 1) / kDaysOfWeek + 1};
  for (const std::int32_t position : data.positions.empty() ? own : data.positions) {
    if (!part.IsWithin(position, kWeeks, true)) continue;
    const std::string number = std::to_string(position);
    if (data.weekdays.empty()) {
      part.Add(number + WeekdayOf(start));
    } else {
      AddWeekdays(part, data.weekdays, number);
    }
  }
  // None of all that it names is one.
  if (part.isEmpty()) rule.text.clear();
}

void AddDays(RuleText& rule, const DaysData& data, const icaltimetype& start) {
  struct Row {
    std::int32_t type;
    const char* name;
    std::int32_t largest;
    bool countsFromEnd;
  };
  constexpr Row kRows[] = {
      {RECUR_MONTHLY_BY_DAY, ";BYMONTHDAY=", 31, true},
      {RECUR_YEARLY_BY_MONTH, ";BYMONTH=", 12, false},
      {RECUR_YEARLY_BY_DAY, ";BYYEARDAY=", 366, false},
  };
  bool isEmpty = true;
  if (data.type == RECUR_WEEKLY) {
    RulePart part(rule, ";BYDAY=");
    AddWeekdays(part, data.days, {});
    isEmpty = part.isEmpty();
  }
  for (const Row& row : kRows) {
    if (row.type != data.type) continue;
    RulePart part(rule, row.name);
    part.AddNumbers(data.days, row.largest, row.countsFromEnd);
    isEmpty = part.isEmpty();
    // A yearly rule without lists keeps to the start's day of its month.
    if (data.days.empty() && row.type == RECUR_YEARLY_BY_DAY)
      part.Add(std::to_string(icaltime_day_of_year(start)));
  }
  if (isEmpty && !data.days.empty()) rule.text.clear();
}

const char* FrequencyOf(std::int32_t type) {
  switch (type) {
    case RECUR_DAILY:
      return "FREQ=DAILY";
    case RECUR_WEEKLY:
      return "FREQ=WEEKLY";
    case RECUR_MONTHLY_BY_POS:
    case RECUR_MONTHLY_BY_DAY:
      return "FREQ=MONTHLY";
    default:
      return "FREQ=YEARLY";
  }
}

// The part that ends the rule: RRULE has either a number or a last date, so that of both the one
// that comes first is written.
void AddEnd(RuleText& rule, const RecurrenceData& data, const icaltimetype& start,
            const COleDateTimeNull& end) {
  if (data.count < 0 || end.status == StatusInvalid) rule.loss = FormatReason::BadValue;
  const auto until = IcalUtc(end);
  const std::string counted = rule.text + ";COUNT=" + std::to_string(data.count);
  if (data.count > 0 && until) {
    const auto first = CountEndsFirst(counted, start, *until);
    if (first.value_or(false)) {
      rule.text = counted;
      return;
    }
    if (!first) rule.loss = FormatReason::RuleTooRich;
  } else if (data.count > 0) {
    rule.text = counted;
  }
  if (!until) return;
  DateTimeText date(end);
  date.AddDate();
  if (start.is_date == 0) date.AddMinutes().AddSeconds().Add("Z");
  rule.text.append(";UNTIL=").append(date.view());
}

}  // namespace

RuleText RRuleOf(const RecurrenceData& data, const icaltimetype& start) {
  return RRuleOf(data, start, data.endDate);
}

RuleText RRuleOf(const RecurrenceData& data, const icaltimetype& start,
                 const COleDateTimeNull& end) {
  RuleText rule;
  if (data.interval < 1) return {{}, FormatReason::BadValue};
  // libical reads it into a short, whatever it is.
  if (data.interval > std::numeric_limits<short>::max()) return {{}, FormatReason::RuleTooRich};
  rule.text = FrequencyOf(data.type);
  if (data.interval > 1) rule.text.append(";INTERVAL=").append(std::to_string(data.interval));
  if (const auto* byPosition = dynamic_cast<const MonthlyByPosData*>(&data)) {
    AddPositions(rule, *byPosition, start);
  } else if (const auto* byDays = dynamic_cast<const DaysData*>(&data)) {
    AddDays(rule, *byDays, start);
  }
  if (rule.text.empty()) return rule;
  AddEnd(rule, data, start, end);
  // Longer lists and intervals than the library takes stand in no file that another one made.
  if (icalrecurrencetype_from_string(rule.text.c_str()).freq == ICAL_NO_RECURRENCE)
    return {{}, FormatReason::RuleTooRich};
  return rule;
}

}  // namespace pim
