// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "vcalendar/VCalendarWriter.h"

#include <limits>

#include "records/CategoryWords.h"
#include "stream/ObjectWords.h"
#include "support/DateTimeText.h"
#include "support/DateTimeZones.h"
#include "support/PropertyLines.h"
#include "support/QuotedPrintable.h"
#include "vcalendar/RecurrenceWriter.h"
#include "vcalendar/VCalendarWords.h"

namespace pim {

// One frame holds the blocks of all items, each with its lines in one fixed order, whatever the
// kind; few lines belong to a kind alone. Times are UTC with seconds 00, but the days of an all-day
// item are local ones: a device shows them without converting.

namespace {

constexpr NarrowStringView kVersion = "1.0";

constexpr NarrowStringView NameOf(VCalPropertyId id) {
  return TextOf(kVCalendarProperties, static_cast<std::uint32_t>(id));
}

// Appends the lines of items.
class ItemLines {
 public:
  explicit ItemLines(NarrowString& text) : lines_(text) {}

  void AppendItem(const CCalendar& item);
  void AppendWord(NarrowStringView name, NarrowStringView word) { lines_.Append(name, {}, word); }

 private:
  void AppendTextLine(NarrowStringView name, WideStringView field) {
    if (!field.empty()) lines_.AppendText(name, {}, field);
  }
  void AppendDateTimeLine(NarrowStringView name, const COleDateTime& value);
  void AppendDayLine(NarrowStringView name, const COleDateTimeNull& value, NarrowStringView time);
  void AppendAlarmLine(const COleDateTime& alarm, bool local);
  void AppendSpan(const CCalendar& item, bool isTodo);
  void AppendCategoryLine(std::uint32_t mask);
  void AppendClassLine(std::int32_t code);
  void AppendHolidayLine(std::uint8_t mark);
  void AppendTodoLines(const CCalendar& item);

  PropertyLines lines_;
};

// In UTC; the seconds are always two zeros. A value that is no date has its line too, so that a
// reader learns that there was one.
void ItemLines::AppendDateTimeLine(NarrowStringView name, const COleDateTime& value) {
  if (value.status == StatusNull) return;
  AppendWord(name, DateTimeText(value).AddDate().AddMinutes().Add("00Z"));
}

// A day of an all-day item, in local time; null has its line as well.
void ItemLines::AppendDayLine(NarrowStringView name, const COleDateTimeNull& value,
                              NarrowStringView time) {
  AppendWord(name, DateTimeText(UtcToLocal(value)).AddDate().Add(time));
}

// The last three fields, snooze, count and text, are left empty.
void ItemLines::AppendAlarmLine(const COleDateTime& alarm, bool local) {
  if (alarm.status == StatusNull) return;
  AppendWord(NameOf(VCAL_AALARM),
             DateTimeText(alarm).AddDate().AddMinutes().Add(local ? "00;;;" : "00Z;;;"));
}

// A day ends at its hour 24, not at hour 0 of the next one, so that start and end name one day.
void ItemLines::AppendSpan(const CCalendar& item, bool isTodo) {
  if (item.allday == 1) {
    AppendDayLine(NameOf(VCAL_DTSTART), item.start_time, "T000000");
    AppendDayLine(NameOf(VCAL_DTEND), item.end_time, "T240000");
    return;
  }
  AppendDateTimeLine(NameOf(VCAL_DTSTART), item.start_time);
  if (!isTodo) AppendDateTimeLine(NameOf(VCAL_DTEND), item.end_time);
}

// One line at most: that of the first word, in the table's order, whose bit is set.
void ItemLines::AppendCategoryLine(std::uint32_t mask) {
  for (const Word& word : kCategoryWords)
    if ((mask & word.code) != 0) return AppendWord(NameOf(VCAL_CATEGORIES), word.text);
}

void ItemLines::AppendClassLine(std::int32_t code) {
  const NarrowStringView word = TextOf(kClassWords, static_cast<std::uint32_t>(code));
  if (!word.empty()) AppendWord(NameOf(VCAL_CLASS), word);
}

void ItemLines::AppendHolidayLine(std::uint8_t mark) {
  if (mark != 0) AppendWord(NameOf(VCAL_X_HOLIDAY), mark == 1 ? kHolidayYes : kHolidayNo);
}

void ItemLines::AppendTodoLines(const CCalendar& item) {
  if (item.priority != PRIORITY_NONE)
    AppendWord(NameOf(VCAL_PRIORITY), std::to_string(item.priority));
  AppendWord(NameOf(VCAL_STATUS), TextOf(kStatusWords, static_cast<std::uint32_t>(item.status)));
}

void ItemLines::AppendItem(const CCalendar& item) {
  const bool isTodo = item.calendar_type == static_cast<std::uint8_t>(CalendarType::Todo);
  const bool isMemo = item.calendar_type == static_cast<std::uint8_t>(CalendarType::Memo);
  const bool isAllDay = item.allday == 1;
  // Any other kind goes out as an event.
  const CalendarType block = isTodo   ? CalendarType::Todo
                             : isMemo ? CalendarType::Memo
                                      : CalendarType::Event;
  const NarrowStringView word = TextOf(kItemObjects, static_cast<std::uint32_t>(block));

  AppendWord(NameOf(VCAL_BEGIN), word);
  AppendTextLine(NameOf(VCAL_SUMMARY), item.summary);
  AppendTextLine(NameOf(VCAL_DESCRIPTION), item.description);
  AppendTextLine(NameOf(VCAL_LOCATION), item.location);
  AppendDateTimeLine(kCreatedAsWritten, item.created_time);
  AppendDateTimeLine(NameOf(VCAL_LAST_MODIFIED), item.modified_time);
  AppendDateTimeLine(NameOf(VCAL_X_MODIFIED), item.xmodified_time);
  AppendSpan(item, isTodo);
  if (isTodo) AppendDateTimeLine(NameOf(VCAL_DUE), item.due);
  AppendDateTimeLine(NameOf(VCAL_COMPLETED), item.completed);
  const COleDateTimeNull& alarm = item.reminder.alarm_date;
  AppendAlarmLine(isAllDay ? UtcToLocal(alarm) : alarm, isAllDay);
  AppendRuleLines(lines_, item.recurrence, item.exceptionRule);
  AppendCategoryLine(isMemo ? CATEGORY_MEMO : item.GetCategories());
  AppendClassLine(item.class_);
  AppendHolidayLine(item.set_holiday);
  if (isMemo) AppendTextLine(NameOf(VCAL_X_COLOR), item.color);
  if (isTodo) AppendTodoLines(item);
  AppendWord(kEndWord, word);
}

}  // namespace

void WriteVCalendar(const CCalendars& items, VObjectBuffer& buffer) {
  constexpr std::size_t kLongestText = std::numeric_limits<std::int32_t>::max();
  const NarrowString tail = NarrowString(kEndWord).append(1, ':').append(kCalendarObject.text);
  if (items.GetCount() == 0) return;
  NarrowString text;
  ItemLines lines(text);
  lines.AppendWord(NameOf(VCAL_BEGIN), kCalendarObject.text);
  lines.AppendWord(NameOf(VCAL_VERSION), kVersion);
  for (std::int32_t i = 0; i < items.GetCount(); ++i) {
    lines.AppendItem(items[i]);
    if (text.size() + tail.size() > kLongestText) throw SizeOverflow();
  }
  text.append(tail);
  buffer.tag = static_cast<std::uint16_t>(items[items.GetCount() - 1].tag);
  buffer.bytes.Assign(text.data(), text.size());
}

}  // namespace pim
