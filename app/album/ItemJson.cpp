// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <iterator>
#include <optional>
#include <string>

#include "app/album/AlbumRecords.h"
#include "app/album/RecordParts.h"
#include "pim/manager/TypeWords.h"

namespace pim::app {
namespace {

std::string_view KindWord(CalendarType kind) {
  switch (kind) {
    case CalendarType::Todo:
      return "todo";
    case CalendarType::Memo:
      return "memo";
    default:
      return "event";
  }
}

// What a rule steps by, and what its list of numbers is called.
constexpr struct {
  std::int32_t type;
  std::string_view unit;
  std::string_view numbers;
} kRuleRows[] = {
    {RECUR_DAILY, "day", ""},
    {RECUR_WEEKLY, "week", ""},
    {RECUR_MONTHLY_BY_POS, "month", ""},
    {RECUR_MONTHLY_BY_DAY, "month", "monthDays"},
    {RECUR_YEARLY_BY_MONTH, "year", "months"},
    {RECUR_YEARLY_BY_DAY, "year", "yearDays"},
};

// Weekdays: "MO", and of weeks of a month "2MO" or "-1MO".
void WriteWeekdays(JsonWriter& json, const RecurrenceData& rule) {
  const auto* const byPosition = dynamic_cast<const MonthlyByPosData*>(&rule);
  if (byPosition == nullptr) {
    const RecurrenceList& days = static_cast<const DaysData&>(rule).days;
    if (!days.empty())
      json.Array("days", days, [&json](std::int32_t day) { json.Utf8(WeekdayWord(day)); });
    return;
  }
  if (byPosition->positions.empty() || byPosition->weekdays.empty()) return;
  json.Array("days", byPosition->positions, [&](std::int32_t position) {
    for (const std::int32_t day : byPosition->weekdays)
      json.Utf8(std::to_string(position).append(WeekdayWord(day)));
  });
}

void WriteRule(JsonWriter& json, const RecurrenceData* rule) {
  if (rule == nullptr) return;
  const auto* const row =
      std::ranges::find(kRuleRows, rule->type, [](const auto& r) { return r.type; });
  if (row == std::end(kRuleRows)) return;
  json.Key("rule");
  json.StartObject();
  json.Utf8Field("unit", row->unit);
  json.Field("every", rule->interval);
  if (rule->type == RECUR_WEEKLY || rule->type == RECUR_MONTHLY_BY_POS) WriteWeekdays(json, *rule);
  if (!row->numbers.empty()) {
    const RecurrenceList& numbers = static_cast<const DaysData&>(*rule).days;
    if (!numbers.empty()) json.Values(row->numbers, numbers);
  }
  if (rule->count > 0) json.Field("count", rule->count);
  if (const auto end = SecondsOf(rule->endDate)) json.Field("until", *end);
  json.EndObject();
}

void WriteRuns(JsonWriter& json, std::string_view key, const std::vector<TimeRun>& runs) {
  if (runs.empty()) return;
  json.Array(key, runs, [&json](const TimeRun& run) {
    json.StartArray();
    json.Value(run.first);
    json.Value(run.step);
    json.Value(run.count);
    json.EndArray();
  });
}

void WriteTime(JsonWriter& json, std::string_view key, const COleDateTime& time) {
  if (const auto seconds = SecondsOf(time)) json.Field(key, *seconds);
}

// When it is due, and how far behind its start where it has to be done again and again.
void WriteDue(JsonWriter& json, const CCalendar& item, OccurrenceFinder& finder) {
  WriteTime(json, "due", item.due);
  const auto due = finder.WallTime(item, item.due);
  if (!due) return;
  json.Field("dueWall", *due);
  const auto start = finder.WallTime(item, item.start_time);
  if (start && item.recurrence.data != nullptr) json.Field("dueAfter", *due - *start);
}

// Every item has the status 0 unless it says another one, and it means something of a to-do alone.
void WriteStatus(JsonWriter& json, const CCalendar& item) {
  const bool isTodo = static_cast<CalendarType>(item.calendar_type) == CalendarType::Todo;
  if (item.status == STATUS_NEEDS_ACTION && !isTodo) return;
  std::string word = InSmallLetters(StatusWord(item.status));
  std::ranges::replace(word, ' ', '-');
  if (!word.empty()) json.Utf8Field("status", word);
}

// The summary, else the first line of the description that says something.
WideStringView TitleOf(const CCalendar& item) {
  if (!item.summary.empty()) return item.summary.view();
  WideStringView text = item.description.view();
  text.remove_prefix(std::min(text.find_first_not_of(u" \t\r\n"), text.size()));
  return text.substr(0, text.find_first_of(u"\r\n"));
}

void WriteItemFields(JsonWriter& json, const CCalendar& item) {
  FieldRows rows(json);
  rows.Add("location", item.location);
  if (item.description != TitleOf(item)) rows.Add("description", item.description);
  for (const CCategory& category : item.categories) rows.Add("category", category.category_name);
  rows.AddAscii("class", InSmallLetters(ClassWord(item.class_)));
  if (item.set_holiday != 0) rows.Add("holiday", u"\u2713");
}

}  // namespace

void WriteRecord(JsonWriter& json, const CCalendar& item, const Occurrences& occurrences,
                 OccurrenceFinder& finder, const PlaceInFile* place) {
  json.StartObject();
  json.Utf8Field("kind", KindWord(static_cast<CalendarType>(item.calendar_type)));
  json.Field("title", TitleOf(item));
  json.Field("allDay", occurrences.isAllDay);
  if (const std::string zone = ZoneTextOf(item.zone); !zone.empty()) json.Utf8Field("zone", zone);
  json.Field("length", occurrences.length);
  if (occurrences.wallLength != occurrences.length)
    json.Field("lengthWall", occurrences.wallLength);
  if (occurrences.earlyEnd) {
    json.Field("end", *occurrences.earlyEnd);
    const auto wall = finder.WallTime(item, item.end_time);
    if (wall && !occurrences.isAllDay) json.Field("endWall", *wall);
  }
  WriteRuns(json, "times", occurrences.times);
  WriteRuns(json, "wall", occurrences.wall);
  if (occurrences.isCut) json.Field("isCut", true);
  WriteRule(json, item.recurrence.GetRecurrenceData());
  WriteDue(json, item, finder);
  WriteTime(json, "completed", item.completed);
  WriteTime(json, "alarm", item.reminder.alarm_date);
  WriteTime(json, "created", item.created_time);
  WriteTime(json, "modified", item.modified_time);
  WriteStatus(json, item);
  if (item.priority > 0) json.Field("priority", item.priority);
  if (!item.color.empty()) json.Field("color", item.color);
  WriteItemFields(json, item);
  WritePlace(json, place);
  json.EndObject();
}

}  // namespace pim::app
