#include "vcalendar/VCalendarWriter.h"

#include <limits>

#include "records/CategoryWords.h"
#include "support/DateTimeZones.h"
#include "support/TextCodec.h"
#include "vcalendar/DateTimeText.h"
#include "vcalendar/RecurrenceWriter.h"
#include "vcalendar/VCalendarWords.h"

namespace pim {
namespace {

constexpr NarrowStringView kHead = "BEGIN:VCALENDAR\r\nVERSION:1.0\r\n";
constexpr NarrowStringView kTail = "END:VCALENDAR";

constexpr NarrowStringView NameOf(VCalPropertyId id) {
  return TextOf(kVCalendarProperties, static_cast<std::uint32_t>(id));
}

// The text under construction, with the work strings that all its lines share.
class CalendarText {
 public:
  CalendarText() : text_(kHead) {}

  void AppendItem(const CCalendar& item);
  NarrowStringView Finish() { return text_.append(kTail); }
  std::size_t size() const { return text_.size(); }

 private:
  void AppendWord(NarrowStringView name, NarrowStringView word) {
    AppendProperty(text_, name, {}, word);
  }
  void AppendTextLine(NarrowStringView name, WideStringView field);
  void AppendDateTimeLine(NarrowStringView name, const COleDateTime& value);
  void AppendDayLine(NarrowStringView name, const COleDateTimeNull& value, NarrowStringView time);
  void AppendAlarmLine(const COleDateTime& alarm, bool local);
  void AppendSpan(const CCalendar& item, bool isTodo);
  void AppendCategoryLine(std::uint32_t mask);
  void AppendClassLine(std::int32_t code);
  void AppendHolidayLine(std::uint8_t mark);
  void AppendTodoLines(const CCalendar& item);
  void AppendMinutes(const CalendarFields& fields);

  NarrowString text_;
  NarrowString encoded_;
  NarrowString value_;
};

void CalendarText::AppendTextLine(NarrowStringView name, WideStringView field) {
  if (field.empty()) return;
  EncodeText(field, encoded_);
  AppendProperty(text_, name, NeedsTextParameters(encoded_) ? TextParameters() : NarrowStringView{},
                 encoded_);
}

// Date and time into `value_`; the seconds are always two zeros.
void CalendarText::AppendMinutes(const CalendarFields& fields) {
  value_.clear();
  AppendDate(value_, fields);
  value_.append(1, 'T');
  AppendPadded(value_, fields.hour, 2);
  AppendPadded(value_, fields.minute, 2);
  value_.append("00");
}

void CalendarText::AppendDateTimeLine(NarrowStringView name, const COleDateTime& value) {
  const auto fields = value.GetFields();
  if (!fields) return;
  AppendMinutes(*fields);
  AppendWord(name, value_.append(1, 'Z'));
}

// A day of an all-day item, in local time.
void CalendarText::AppendDayLine(NarrowStringView name, const COleDateTimeNull& value,
                                 NarrowStringView time) {
  const auto fields = UtcToLocal(value).GetFields();
  if (!fields) return;
  value_.clear();
  AppendDate(value_, *fields);
  AppendWord(name, value_.append(time));
}

// The last three fields, snooze, count and text, are left empty.
void CalendarText::AppendAlarmLine(const COleDateTime& alarm, bool local) {
  const auto fields = alarm.GetFields();
  if (!fields) return;
  AppendMinutes(*fields);
  AppendWord(NameOf(VCAL_AALARM), value_.append(local ? ";;;" : "Z;;;"));
}

// A day ends at its hour 24, not at hour 0 of the next one, so that start and end name one day.
void CalendarText::AppendSpan(const CCalendar& item, bool isTodo) {
  if (item.allday == 1) {
    AppendDayLine(NameOf(VCAL_DTSTART), item.start_time, "T000000");
    AppendDayLine(NameOf(VCAL_DTEND), item.end_time, "T240000");
    return;
  }
  AppendDateTimeLine(NameOf(VCAL_DTSTART), item.start_time);
  if (!isTodo) AppendDateTimeLine(NameOf(VCAL_DTEND), item.end_time);
}

// One line at most: that of the first word, in the table's order, whose bit is set.
void CalendarText::AppendCategoryLine(std::uint32_t mask) {
  for (const Word& word : kCategoryWords)
    if ((mask & word.code) != 0) return AppendWord(NameOf(VCAL_CATEGORIES), word.text);
}

void CalendarText::AppendClassLine(std::int32_t code) {
  const NarrowStringView word = TextOf(kClassWords, static_cast<std::uint32_t>(code));
  if (!word.empty()) AppendWord(NameOf(VCAL_CLASS), word);
}

void CalendarText::AppendHolidayLine(std::uint8_t mark) {
  if (mark != 0) AppendWord(NameOf(VCAL_X_HOLIDAY), mark == 1 ? kHolidayYes : kHolidayNo);
}

void CalendarText::AppendTodoLines(const CCalendar& item) {
  if (item.priority != PRIORITY_NONE)
    AppendWord(NameOf(VCAL_PRIORITY), std::to_string(item.priority));
  AppendWord(NameOf(VCAL_STATUS), TextOf(kStatusWords, static_cast<std::uint32_t>(item.status)));
}

void CalendarText::AppendItem(const CCalendar& item) {
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
  AppendRuleLines(text_, item.recurrence, item.exceptionRule);
  AppendCategoryLine(isMemo ? CATEGORY_MEMO : item.GetCategories());
  AppendClassLine(item.class_);
  AppendHolidayLine(item.set_holiday);
  if (isMemo) AppendTextLine(NameOf(VCAL_X_COLOR), item.color);
  if (isTodo) AppendTodoLines(item);
  AppendWord("END", word);
}

}  // namespace

void WriteVCalendar(const CCalendars& items, VObjectBuffer& buffer) {
  constexpr std::size_t kLongestText = std::numeric_limits<std::int32_t>::max();
  if (items.GetCount() == 0) return;
  CalendarText text;
  for (std::int32_t i = 0; i < items.GetCount(); ++i) {
    buffer.tag = static_cast<std::uint16_t>(items[i].tag);
    text.AppendItem(items[i]);
    if (text.size() + kTail.size() > kLongestText) throw SizeOverflow();
  }
  const NarrowStringView whole = text.Finish();
  buffer.bytes.Assign(whole.data(), whole.size());
}

}  // namespace pim
