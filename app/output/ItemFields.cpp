// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/output/Fields.h"
#include "app/output/ItemText.h"
#include "pim/manager/TypeWords.h"

namespace pim::app {
namespace {

// What an item is about, in one line: many devices fill the description alone.
std::string Subject(const CCalendar& item, const LocalTimes&, CellForm form) {
  WideString title = ItemName(item);
  for (char16_t& unit : title)
    if (unit == u'\n' || unit == u'\r') unit = u' ';
  return CellText(title, form);
}
std::string Key(const CCalendar& item, const LocalTimes&, CellForm) {
  return std::to_string(item.tag);
}
std::string Start(const CCalendar& item, const LocalTimes& times, CellForm) {
  return SpanEndText(item, item.start_time, times);
}
std::string End(const CCalendar& item, const LocalTimes& times, CellForm) {
  return SpanEndText(item, item.end_time, times);
}
template <COleDateTimeNull CCalendar::*Field>
std::string Moment(const CCalendar& item, const LocalTimes& times, CellForm) {
  return times.Moment(item.*Field);
}
std::string Created(const CCalendar& item, const LocalTimes& times, CellForm) {
  return times.Moment(item.created_time);
}
std::string Modified(const CCalendar& item, const LocalTimes& times, CellForm) {
  return times.Moment(item.modified_time);
}
std::string Alarm(const CCalendar& item, const LocalTimes& times, CellForm) {
  return times.Moment(item.reminder.alarm_date);
}
template <CRecurrence CCalendar::*Rule>
std::string Repeats(const CCalendar& item, const LocalTimes&, CellForm) {
  return RuleText(item.*Rule);
}
std::string Status(const CCalendar& item, const LocalTimes&, CellForm) {
  return std::string(StatusWord(item.status));
}
std::string Priority(const CCalendar& item, const LocalTimes&, CellForm) {
  return item.priority == PRIORITY_NONE ? std::string() : std::to_string(item.priority);
}
std::string Class(const CCalendar& item, const LocalTimes&, CellForm) {
  return std::string(ClassWord(item.class_));
}
std::string Category(const CCalendar& item, const LocalTimes&, CellForm form) {
  std::string cell;
  for (const CCategory& category : item.categories)
    cell.append(cell.empty() ? "" : ", ").append(CellText(category.category_name, form));
  return cell;
}
template <WideText CCalendar::*Field>
std::string Plain(const CCalendar& item, const LocalTimes&, CellForm form) {
  return CellText(item.*Field, form);
}
std::string AllDay(const CCalendar& item, const LocalTimes&, CellForm) {
  return item.allday == 1 ? "yes" : "";
}
std::string Holiday(const CCalendar& item, const LocalTimes&, CellForm) {
  return item.set_holiday != 0 ? "yes" : "";
}

constexpr FieldRow<CCalendar> kItemFieldRows[] = {
    {"key", false, Key},
    {"subject", false, Subject},
    {"summary", true, Plain<&CCalendar::summary>},
    {"description", true, Plain<&CCalendar::description>},
    {"location", true, Plain<&CCalendar::location>},
    {"start", false, Start},
    {"end", false, End},
    {"all-day", false, AllDay},
    {"due", false, Moment<&CCalendar::due>},
    {"completed", false, Moment<&CCalendar::completed>},
    {"alarm", false, Alarm},
    {"repeats", false, Repeats<&CCalendar::recurrence>},
    {"exceptions", false, Repeats<&CCalendar::exceptionRule>},
    {"category", true, Category},
    {"class", false, Class},
    {"priority", false, Priority},
    {"status", false, Status},
    {"colour", false, Plain<&CCalendar::color>},
    {"holiday", false, Holiday},
    {"created", false, Created},
    {"modified", false, Modified},
};
constexpr std::string_view kEvent[] = {"key",   "start",    "end",      "repeats",
                                       "alarm", "category", "location", "subject"};
constexpr std::string_view kTodo[] = {"key",       "due",     "status", "priority", "start",
                                      "completed", "repeats", "alarm",  "subject"};
constexpr std::string_view kMemo[] = {"key", "modified", "colour", "subject"};

}  // namespace

std::span<const FieldRow<CCalendar>> FieldsOf(const CCalendar*) { return kItemFieldRows; }

std::span<const std::string_view> UsualItemFields(CalendarType kind) {
  switch (kind) {
    case CalendarType::Todo:
      return kTodo;
    case CalendarType::Memo:
      return kMemo;
    default:
      return kEvent;
  }
}

}  // namespace pim::app
