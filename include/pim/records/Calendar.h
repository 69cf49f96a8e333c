// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <utility>

#include "pim/Export.h"
#include "pim/records/Collection.h"
#include "pim/records/Recurrence.h"
#include "pim/records/TypeCodes.h"
#include "pim/records/VObject.h"
#include "pim/support/InlineList.h"

namespace pim {

// What an item's TZ and DAYLIGHT properties said. The system converts by the machine's own zone.
class CCalendarZone {
 public:
  COleDateTimeSpan tzOffset;
  COleDateTimeSpan daylightOffset;
  COleDateTimeNull daylightStart;  // UTC
  COleDateTimeNull daylightEnd;    // UTC
  WideText standardName;
  WideText daylightName;
};

class CReminder {
 public:
  std::uint32_t GetType() const { return reminderType; }
  void SetType(std::uint32_t type) { reminderType = type; }
  std::uint32_t GetValueType() const { return valueType; }
  void SetValueType(std::uint32_t type) { valueType = type; }
  DESKMATE_IDS::Alarm GetAlramType() const { return alarmType; }
  void SetAlramType(DESKMATE_IDS::Alarm type) { alarmType = type; }

  std::uint32_t reminderType = 0;  // ReminderType bits
  std::uint32_t valueType = REMINDER_INLINE;
  DESKMATE_IDS::Alarm alarmType = DESKMATE_IDS::ALARM_NONE;
  COleDateTimeNull alarm_date;  // when the alarm runs, UTC; null when the item has no alarm
  COleDateTimeSpan snooze;
  std::int32_t repeatCount = 0;
  WideText displayText;
};

class CCategory {
 public:
  WideText category_name;
};

// One event, to-do or memo. All its date-times are UTC.
class PIM_EXPORT CCalendar : public CVObject {
 public:
  CCalendar() noexcept;

  CCategory& NewCategory(WideText name) {
    return categories.emplace_back(CCategory{std::move(name)});
  }
  // The category bits of the rows' words, joined; a row with another name adds none.
  std::uint32_t GetCategories() const;
  DESKMATE_IDS::Alarm GetAlarmType() const { return reminder.alarmType; }
  // The whole minutes from the alarm to the start. False and 0 where one of the two isn't valid.
  bool GetAlarmRuntime(std::int32_t& minutes) const;

  std::uint8_t calendar_type = 0;  // CalendarType, or 0
  std::int32_t allday = 0;         // 1 for an all-day item, else 0
  std::uint8_t set_holiday = 0;    // 1 for a holiday mark, else 0
  std::int32_t class_ = CLASS_NONE;
  CCalendarZone zone;
  CReminder reminder;
  COleDateTimeNull start_time;
  COleDateTimeNull end_time;
  COleDateTimeNull due;
  COleDateTimeNull completed;
  WideText summary;
  WideText description;
  WideText location;
  WideText color;  // as the text had it
  CRecurrence recurrence;
  CRecurrence exceptionRule;
  std::int32_t priority = PRIORITY_NONE;
  std::int32_t status = STATUS_NEEDS_ACTION;
  InlineList<CCategory, 1> categories;
};

class PIM_EXPORT CCalendars : public Collection<CCalendar> {
 public:
  // Appends the stored items of the kind by ascending calendar_id. Gives their number, or -1 when
  // there is no store behind `db` or it fails. `option` must be 0.
  [[nodiscard]] std::int32_t OpenFromDB(std::int32_t db, CalendarType kind, std::int32_t option);
  // Stores the items in one transaction and gives each its final calendar_id in `tag`. `saveFlag`
  // false leaves out a new item that equals a stored one. Gives the number newly stored or
  // updated, or -1, after which store and collection are as before.
  [[nodiscard]] std::int32_t SaveToDB(std::int32_t db, bool saveFlag);
};

}  // namespace pim
