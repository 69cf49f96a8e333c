// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/icalendar/RuleDown.h"

#include <algorithm>
#include <set>
#include <utility>

#include "formats/icalendar/DownTimes.h"
#include "pim/manager/TypeWords.h"
#include "support/Numbers.h"

namespace pim {
namespace {

constexpr std::int32_t kMonths = 12;
constexpr std::int32_t kWeeksOfMonth = 5;

// As records keep lists: negative numbers behind all positive ones, none twice.
RecurrenceList ListOf(const std::set<std::int32_t>& numbers) {
  RecurrenceList list(numbers.begin(), numbers.end());
  std::ranges::sort(list, {},
                    [](std::int32_t number) { return static_cast<std::uint32_t>(number); });
  return list;
}

template <std::size_t Size>
std::set<std::int32_t> NumbersOf(const short (&list)[Size]) {
  const auto* const end = std::find(std::begin(list), std::end(list), ICAL_RECURRENCE_ARRAY_MAX);
  return {std::begin(list), end};
}

// The lists of a rule. Weekdays are from 0, Sunday.
struct RuleLists {
  explicit RuleLists(const icalrecurrencetype& rule)
      : months(NumbersOf(rule.by_month)),
        monthDays(NumbersOf(rule.by_month_day)),
        yearDays(NumbersOf(rule.by_year_day)),
        places(NumbersOf(rule.by_set_pos)) {
    for (const short day : rule.by_day) {
      if (day == ICAL_RECURRENCE_ARRAY_MAX) break;
      const int position = icalrecurrencetype_day_position(day);
      days.emplace(position, icalrecurrencetype_day_day_of_week(day) - 1);
      weekdays.insert(icalrecurrencetype_day_day_of_week(day) - 1);
      positions.insert(position);
    }
    hasOthers = !NumbersOf(rule.by_second).empty() || !NumbersOf(rule.by_minute).empty() ||
                !NumbersOf(rule.by_hour).empty() || !NumbersOf(rule.by_week_no).empty() ||
                rule.rscale != nullptr;
  }

  // Whether no list but those given stands.
  bool IsOnly(bool ofDays, bool ofMonthDays = false, bool ofMonths = false) const {
    return (ofDays || days.empty()) && (ofMonthDays || monthDays.empty()) &&
           (ofMonths || months.empty()) && yearDays.empty() && places.empty();
  }
  bool HasNoPositions() const {
    return std::ranges::all_of(positions, [](std::int32_t position) { return position == 0; });
  }

  std::set<std::pair<std::int32_t, std::int32_t>> days;
  std::set<std::int32_t> positions;
  std::set<std::int32_t> weekdays;
  std::set<std::int32_t> months;
  std::set<std::int32_t> monthDays;
  std::set<std::int32_t> yearDays;
  std::set<std::int32_t> places;
  bool hasOthers = false;
};

RecurrencePointer ListRule(RecurrenceType type, const std::set<std::int32_t>& days) {
  RecurrencePointer rule = MakeRecurrenceData(type);
  static_cast<DaysData&>(*rule).days = ListOf(days);
  return rule;
}

RecurrencePointer PositionRule(const std::set<std::int32_t>& positions,
                               const std::set<std::int32_t>& weekdays) {
  const bool fits = std::ranges::all_of(positions, [](std::int32_t position) {
    return position != 0 && position >= -kWeeksOfMonth && position <= kWeeksOfMonth;
  });
  if (!fits) return nullptr;
  RecurrencePointer rule = MakeRecurrenceData(RECUR_MONTHLY_BY_POS);
  static_cast<MonthlyByPosData&>(*rule).positions = ListOf(positions);
  static_cast<MonthlyByPosData&>(*rule).weekdays = ListOf(weekdays);
  return rule;
}

// Weekdays of a month, which records have as weeks with days in each.
RecurrencePointer MonthDaysRule(const RuleLists& lists) {
  if (!lists.HasNoPositions()) {
    const bool isProduct = lists.days.size() == lists.positions.size() * lists.weekdays.size();
    return isProduct && lists.places.empty() ? PositionRule(lists.positions, lists.weekdays)
                                             : nullptr;
  }
  if (lists.places.empty()) return PositionRule({1, 2, 3, 4, kWeeksOfMonth}, lists.weekdays);
  return lists.weekdays.size() == 1 ? PositionRule(lists.places, lists.weekdays) : nullptr;
}

// Records' weeks begin on Monday. Another first day counts where a rule leaves weeks out.
bool IsWeekAsOurs(const icalrecurrencetype& rule, const RuleLists& lists,
                  const icaltimetype& start) {
  if (rule.interval == 1 || rule.week_start == ICAL_NO_WEEKDAY) return true;
  const int first = icaltime_day_of_week(start) - 1;
  const auto weekOf = [first](std::int32_t weekday, int weekStart) {
    const auto place = [weekStart](int day) {
      return (day - weekStart + kDaysOfWeek) % kDaysOfWeek;
    };
    return place(weekday) >= place(first);
  };
  return std::ranges::all_of(lists.weekdays, [&](std::int32_t weekday) {
    return weekOf(weekday, rule.week_start - 1) == weekOf(weekday, ICAL_MONDAY_WEEKDAY - 1);
  });
}

RecurrencePointer DailyRule(const icalrecurrencetype& rule, const RuleLists& lists) {
  if (!lists.IsOnly(true) || !lists.HasNoPositions()) return nullptr;
  if (lists.days.empty()) return MakeRecurrenceData(RECUR_DAILY);
  return rule.interval == 1 ? ListRule(RECUR_WEEKLY, lists.weekdays) : nullptr;
}

RecurrencePointer WeeklyRule(const icalrecurrencetype& rule, const RuleLists& lists,
                             const icaltimetype& start) {
  if (!lists.IsOnly(true) || !lists.HasNoPositions() || !IsWeekAsOurs(rule, lists, start))
    return nullptr;
  return ListRule(RECUR_WEEKLY, lists.weekdays);
}

RecurrencePointer MonthlyRule(const RuleLists& lists) {
  if (!lists.months.empty() || !lists.yearDays.empty()) return nullptr;
  if (!lists.days.empty()) return lists.monthDays.empty() ? MonthDaysRule(lists) : nullptr;
  return lists.places.empty() ? ListRule(RECUR_MONTHLY_BY_DAY, lists.monthDays) : nullptr;
}

// `months` becomes the number of months in a step where the rule is a monthly one.
RecurrencePointer YearlyRule(const RuleLists& lists, const icaltimetype& start,
                             std::int32_t& months) {
  if (!lists.yearDays.empty()) {
    const bool isAlone = lists.days.empty() && lists.monthDays.empty() && lists.months.empty() &&
                         lists.places.empty() && *lists.yearDays.begin() > 0;
    return isAlone ? ListRule(RECUR_YEARLY_BY_DAY, lists.yearDays) : nullptr;
  }
  const bool isStartDay =
      lists.monthDays.empty() || lists.monthDays == std::set<std::int32_t>{start.day};
  const bool hasMonth = !lists.months.empty() || lists.monthDays.empty();
  if (lists.days.empty() && isStartDay && hasMonth && lists.places.empty())
    return ListRule(RECUR_YEARLY_BY_MONTH, lists.months);
  // Days of the start's month alone come back every twelfth month.
  if (lists.months != std::set<std::int32_t>{start.month}) return nullptr;
  months = kMonths;
  if (lists.days.empty())
    return lists.places.empty() ? ListRule(RECUR_MONTHLY_BY_DAY, lists.monthDays) : nullptr;
  return lists.monthDays.empty() ? MonthDaysRule(lists) : nullptr;
}

// In UTC, as records keep it. A day is the whole of it for an item with times.
COleDateTimeNull EndOf(icaltimetype until, const icaltimetype& start) {
  if (until.is_date != 0 && start.is_date == 0) {
    until.is_date = 0;
    until.hour = 23;
    until.minute = 59;
    until.second = 59;
    until.zone = start.zone;
  }
  if (until.is_date != 0) return DateTimeOf(until);
  if (until.zone == nullptr) until.zone = start.zone;
  return UtcOfTime(until);
}

// Reads one word of a rule's list into the list that it belongs to.
bool TakeEntry(RecurrenceData& rule, std::string_view word) {
  const auto take = [](RecurrenceList& list, std::int32_t number) {
    if (std::ranges::find(list, number) != list.end()) return false;
    list.push_back(number);
    return true;
  };
  for (std::int32_t weekday = 0; weekday < kDaysOfWeek; ++weekday) {
    if (word != WeekdayWord(weekday)) continue;
    if (rule.type == RECUR_WEEKLY) return take(static_cast<DaysData&>(rule).days, weekday);
    return rule.type == RECUR_MONTHLY_BY_POS &&
           take(static_cast<MonthlyByPosData&>(rule).weekdays, weekday);
  }
  // By the numbers of the kinds.
  constexpr std::int32_t kLargest[] = {0, 0, 0, kWeeksOfMonth, 31, kMonths, 366};
  const bool isNegative = word.ends_with('-');
  if (isNegative || word.ends_with('+')) word.remove_suffix(1);
  const std::int32_t number = ParseNumber(word);
  const bool mayBeNegative = rule.type <= RECUR_MONTHLY_BY_DAY;
  if (number < 1 || number > kLargest[rule.type] || (isNegative && !mayBeNegative)) return false;
  return take(rule.type == RECUR_MONTHLY_BY_POS ? static_cast<MonthlyByPosData&>(rule).positions
                                                : static_cast<DaysData&>(rule).days,
              isNegative ? -number : number);
}

// A date as RuleWords ends with.
COleDateTimeNull EndOfWords(std::string_view word) {
  COleDateTimeNull end;
  if (word.size() != 16) return end;
  const std::int32_t day = ParseNumber(word.substr(0, 8));
  const std::int32_t time = ParseNumber(word.substr(9, 6));
  end.SetDateTime(day / 10000, day / 100 % 100, day % 100, time / 10000, time / 100 % 100,
                  time % 100);
  return end;
}

}  // namespace

RecurrencePointer RuleOfRRule(const std::string& value, const icaltimetype& start) {
  const icalrecurrencetype parts = icalrecurrencetype_from_string(value.c_str());
  const RuleLists lists(parts);
  if (lists.hasOthers || parts.interval < 1) return nullptr;
  RecurrencePointer rule;
  std::int32_t months = 1;
  switch (parts.freq) {
    case ICAL_DAILY_RECURRENCE:
      rule = DailyRule(parts, lists);
      break;
    case ICAL_WEEKLY_RECURRENCE:
      rule = WeeklyRule(parts, lists, start);
      break;
    case ICAL_MONTHLY_RECURRENCE:
      rule = MonthlyRule(lists);
      break;
    case ICAL_YEARLY_RECURRENCE:
      rule = YearlyRule(lists, start, months);
      break;
    default:
      break;
  }
  if (rule == nullptr) return nullptr;
  rule->interval = parts.interval * months;
  rule->count = std::max(parts.count, 0);
  if (icaltime_is_null_time(parts.until) == 0) rule->endDate = EndOf(parts.until, start);
  return rule;
}

RecurrencePointer RuleOfWords(std::string_view words) {
  constexpr std::size_t kLongest = 4'000;  // every list in full takes less
  const std::size_t letters = std::min(words.find_first_of("0123456789"), words.size());
  CRecurrence read;
  for (std::int32_t type = RECUR_DAILY; type <= RECUR_YEARLY_BY_DAY; ++type) {
    RecurrencePointer rule = MakeRecurrenceData(type);
    rule->interval = 1;
    CRecurrence sample;
    sample.data = std::move(rule);
    // The words of any rule begin with its kind's letters and the interval.
    const std::string word = RuleWords(sample);
    if (word.substr(0, word.find('1')) == words.substr(0, letters)) read = std::move(sample);
  }
  if (read.data == nullptr || words.size() > kLongest) return nullptr;
  read.data->interval = ParseNumber(words.substr(letters));
  std::string_view rest = words;
  for (rest.remove_prefix(std::min(rest.find(' '), rest.size())); !rest.empty();
       rest.remove_prefix(std::min(rest.find(' '), rest.size()))) {
    rest = TrimLeft(rest);
    const std::string_view word = rest.substr(0, rest.find(' '));
    if (word.starts_with('#')) {
      read.data->count = ParseNumber(word.substr(1));
    } else if (word.ends_with('Z')) {
      read.data->endDate = EndOfWords(word);
    } else if (!TakeEntry(*read.data, word)) {
      return nullptr;
    }
  }
  if (read.data->interval < 1 || read.data->count < 0) return nullptr;
  // What was read in another way than it is written is none of those texts.
  return RuleWords(read) == words ? std::move(read.data) : nullptr;
}

}  // namespace pim
