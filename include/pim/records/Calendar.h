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

// Events, to-dos and memos: what a vCalendar 1.0 text says of them. Records are values: threads may
// read one together, or one thread alone may change it, and any thread may free it. Setters and
// copies of texts throw std::bad_alloc.

// What an item's TZ and DAYLIGHT properties said. Kept only: the system converts by the machine's
// own zone, and neither is written.
class CCalendarZone {
 public:
  COleDateTimeSpan tzOffset;        // TZ: local time less UTC, valid and 0 without one
  COleDateTimeSpan daylightOffset;  // of daylight time, the same
  COleDateTimeNull daylightStart;   // UTC
  COleDateTimeNull daylightEnd;     // UTC
  WideText standardName;            // such as "EST"
  WideText daylightName;            // such as "EDT"
};

// AALARM: an item's alarm. Of all this only the time is written.
class CReminder {
 public:
  // Give or replace the codes below. GetAlramType is spelt as applications call it.
  std::uint32_t GetType() const { return reminderType; }
  void SetType(std::uint32_t type) { reminderType = type; }
  std::uint32_t GetValueType() const { return valueType; }
  void SetValueType(std::uint32_t type) { valueType = type; }
  DESKMATE_IDS::Alarm GetAlramType() const { return alarmType; }
  void SetAlramType(DESKMATE_IDS::Alarm type) { alarmType = type; }

  std::uint32_t reminderType = 0;             // ReminderType bits
  std::uint32_t valueType = REMINDER_INLINE;  // a ReminderValueType
  // ALARM_AUDIO once an alarm is read, whatever its time.
  DESKMATE_IDS::Alarm alarmType = DESKMATE_IDS::ALARM_NONE;
  COleDateTimeNull alarm_date;   // when the alarm runs, UTC; null when the item has no alarm
  COleDateTimeSpan snooze;       // between two runs
  std::int32_t repeatCount = 0;  // how often it runs again
  WideText displayText;          // shown then
};

// One word of CATEGORIES.
class CCategory {
 public:
  WideText category_name;  // as the text spells it: "BIRTHDAY"
};

// One event, to-do or memo. All its date-times are UTC: times of a text without Z are taken for the
// machine's local ones. Seconds are dropped when they are read.
class PIM_EXPORT CCalendar : public CVObject {
 public:
  // An item of no kind, which allocates nothing.
  CCalendar() noexcept;

  // Adds a category as the last one, and gives it.
  CCategory& NewCategory(WideText name) {
    return categories.emplace_back(CCategory{std::move(name)});
  }
  // The CategoryBit bits of the rows' words, joined; a row with another name adds none.
  std::uint32_t GetCategories() const;
  // The reminder's alarm type.
  DESKMATE_IDS::Alarm GetAlarmType() const { return reminder.alarmType; }
  // Sets the whole minutes from the alarm to the start, negative for an alarm behind it. False and
  // 0 where one of the two isn't valid.
  bool GetAlarmRuntime(std::int32_t& minutes) const;

  std::uint8_t calendar_type = 0;             // CalendarType, or 0
  std::int32_t allday = 0;                    // 1 for an all-day item, else 0
  std::uint8_t set_holiday = 0;               // X-HOLIDAY: 1 for a holiday mark, else 0
  std::int32_t class_ = CLASS_NONE;           // CLASS: an AccessClass
  CCalendarZone zone;                         // TZ and DAYLIGHT
  CReminder reminder;                         // AALARM
  COleDateTimeNull start_time;                // DTSTART; of an all-day item local midnight, in UTC
  COleDateTimeNull end_time;                  // DTEND; of an all-day item on its last day
  COleDateTimeNull due;                       // DUE, of a to-do
  COleDateTimeNull completed;                 // COMPLETED
  WideText summary;                           // SUMMARY; line breaks in texts are line feeds
  WideText description;                       // DESCRIPTION
  WideText location;                          // LOCATION
  WideText color;                             // X-COLOR, as the text had it
  CRecurrence recurrence;                     // RRULE
  CRecurrence exceptionRule;                  // XRULE: the repeats that don't happen
  std::int32_t priority = PRIORITY_NONE;      // PRIORITY: a TodoPriority, or any other number read
  std::int32_t status = STATUS_NEEDS_ACTION;  // STATUS: an ItemStatus
  InlineList<CCategory, 1> categories;        // CATEGORIES, of which the first one is written
};

// The items that one operation works on. One thread at a time uses a collection and the store
// behind `db`. What a store fails with, memory too, comes as -1.
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
