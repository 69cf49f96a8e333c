// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "pim/records/Calendar.h"
#include "records/RecordMap.h"

namespace pim {

namespace {

constexpr FieldMap kCalendarFields[] = {
    {"calendar_type", Field<CCalendar, &CCalendar::calendar_type>},
    {"summary", Field<CCalendar, &CCalendar::summary>},
    {"description", Field<CCalendar, &CCalendar::description>},
    {"location", Field<CCalendar, &CCalendar::location>},
    {"start_time", Field<CCalendar, &CCalendar::start_time>},
    {"end_time", Field<CCalendar, &CCalendar::end_time>},
    {"allday", Field<CCalendar, &CCalendar::allday>},
    {"created_time", Field<CCalendar, &CCalendar::created_time>, FieldRole::Stamp},
    {"modified_time", Field<CCalendar, &CCalendar::modified_time>, FieldRole::Stamp},
    {"set_holiday", Field<CCalendar, &CCalendar::set_holiday>},
    {"class", Field<CCalendar, &CCalendar::class_>},
    {"xmodified_time", FieldAs<WholeSeconds, CCalendar, &CCalendar::xmodified_time>,
     FieldRole::Stamp},
    {"xmodified_time_exact", FieldAs<ExactDay, CCalendar, &CCalendar::xmodified_time>,
     FieldRole::Stamp},
    {"due", Field<CCalendar, &CCalendar::due>},
    {"completed", Field<CCalendar, &CCalendar::completed>},
    {"priority", Field<CCalendar, &CCalendar::priority>},
    {"status", Field<CCalendar, &CCalendar::status>},
    {"color", Field<CCalendar, &CCalendar::color>},
    {"tz_offset", Field<CCalendar, &CCalendar::zone, &CCalendarZone::tzOffset>},
    {"daylight_offset", Field<CCalendar, &CCalendar::zone, &CCalendarZone::daylightOffset>},
    {"daylight_start", Field<CCalendar, &CCalendar::zone, &CCalendarZone::daylightStart>},
    {"daylight_end", Field<CCalendar, &CCalendar::zone, &CCalendarZone::daylightEnd>},
    {"standard_name", Field<CCalendar, &CCalendar::zone, &CCalendarZone::standardName>},
    {"daylight_name", Field<CCalendar, &CCalendar::zone, &CCalendarZone::daylightName>},
};

FieldRef AlarmRuntime(void* entry) {
  std::int32_t minutes = 0;
  if (!static_cast<CCalendar*>(entry)->GetAlarmRuntime(minutes)) return DerivedNumber{};
  return DerivedNumber{minutes};
}

// An entry is the item itself, since the row's runtime needs the item's start.
constexpr FieldMap kAlarmFields[] = {
    {"runtime", AlarmRuntime},
    {"alarm_date", Field<CCalendar, &CCalendar::reminder, &CReminder::alarm_date>},
    {"reminder_type", Field<CCalendar, &CCalendar::reminder, &CReminder::reminderType>},
    {"value_type", Field<CCalendar, &CCalendar::reminder, &CReminder::valueType>},
    {"alarm_type", Field<CCalendar, &CCalendar::reminder, &CReminder::alarmType>},
    {"snooze", Field<CCalendar, &CCalendar::reminder, &CReminder::snooze>},
    {"repeat_count", Field<CCalendar, &CCalendar::reminder, &CReminder::repeatCount>},
    {"display_text", Field<CCalendar, &CCalendar::reminder, &CReminder::displayText>},
};

constexpr FieldMap kRuleFields[] = {
    {"recurrence_type", Field<RuleRow, &RuleRow::type>},
    {"recurrence_count", Field<RuleRow, &RuleRow::count>},
    {"recurrence_time", FieldAs<WholeSeconds, RuleRow, &RuleRow::endDate>},
    {"recurrence_value", Field<RuleRow, &RuleRow::interval>},
    {"recurrence_time_exact", FieldAs<ExactDay, RuleRow, &RuleRow::endDate>},
    {"day_list", Field<RuleRow, &RuleRow::days>},
    {"position_list", Field<RuleRow, &RuleRow::positions>},
};

constexpr FieldMap kCategoryFields[] = {
    {"category_name", Field<CCategory, &CCategory::category_name>},
};

bool HasReminder(const CReminder& reminder) {
  return reminder.reminderType != 0 || reminder.valueType != REMINDER_INLINE ||
         reminder.alarmType != DESKMATE_IDS::ALARM_NONE ||
         reminder.alarm_date.status != StatusNull || reminder.snooze.value != 0.0 ||
         reminder.snooze.status != StatusValid || reminder.repeatCount != 0 ||
         !reminder.displayText.empty();
}

constexpr ListMap kAlarmMap = {
    "CalendarAlarms",
    kAlarmFields,
    [](void* record) {
      return std::size_t{HasReminder(static_cast<CCalendar*>(record)->reminder) ? 1U : 0U};
    },
    [](void* record, std::size_t, RuleRow&) { return record; },
    [](void* record, RuleRow&) {
      return HasReminder(static_cast<CCalendar*>(record)->reminder) ? nullptr : record;
    },
    nullptr};

// The lists of a host, or of another program's row, may stand in any order.
void Sort(RecurrenceList& list) {
  std::ranges::sort(list, {}, [](std::int32_t value) { return static_cast<std::uint32_t>(value); });
  list.erase(std::unique(list.begin(), list.end()), list.end());
}

RuleRow RowOf(const RecurrenceData& rule) {
  RuleRow row{rule.type, rule.interval, rule.count, rule.endDate, {}, {}};
  if (const auto* days = dynamic_cast<const DaysData*>(&rule)) row.days = days->days;
  if (const auto* byPosition = dynamic_cast<const MonthlyByPosData*>(&rule)) {
    row.days = byPosition->weekdays;
    row.positions = byPosition->positions;
  }
  Sort(row.days);
  Sort(row.positions);
  return row;
}

RecurrencePointer RuleOf(RuleRow& row) {
  RecurrencePointer rule = MakeRecurrenceData(row.type);
  if (rule == nullptr) return rule;
  rule->interval = row.interval;
  rule->count = row.count;
  rule->endDate = row.endDate;
  Sort(row.days);
  Sort(row.positions);
  if (auto* days = dynamic_cast<DaysData*>(rule.get())) {
    days->days = std::move(row.days);
  } else if (auto* byPosition = dynamic_cast<MonthlyByPosData*>(rule.get())) {
    byPosition->weekdays = std::move(row.days);
    byPosition->positions = std::move(row.positions);
  }
  return rule;
}

template <auto Rule>
constexpr ListMap RuleMap(std::string_view table) {
  return {table,
          kRuleFields,
          [](void* record) {
            const auto* rule = (static_cast<CCalendar*>(record)->*Rule).GetRecurrenceData();
            return std::size_t{rule != nullptr ? 1U : 0U};
          },
          [](void* record, std::size_t, RuleRow& work) -> void* {
            work = RowOf(*(static_cast<CCalendar*>(record)->*Rule).GetRecurrenceData());
            return &work;
          },
          [](void* record, RuleRow& work) -> void* {
            if ((static_cast<CCalendar*>(record)->*Rule).GetRecurrenceData()) return nullptr;
            work = {};
            return &work;
          },
          [](void* record, RuleRow& work) {
            (static_cast<CCalendar*>(record)->*Rule).data = RuleOf(work);
          }};
}

}  // namespace

const RecordMap& CalendarMap() {
  static const ListMap lists[] = {
      kAlarmMap,
      RuleMap<&CCalendar::recurrence>("CalendarRecurrences"),
      RuleMap<&CCalendar::exceptionRule>("CalendarExceptionRules"),
      VectorMap<CCalendar, &CCalendar::categories>("CalendarCategories", kCategoryFields),
      VectorMap<CCalendar, &CCalendar::xitems>("CalendarXItems", XItemFields()),
  };
  static const RecordMap map{"Calendars", kCalendarFields, lists};
  return map;
}

}  // namespace pim
