#include "vcalendar/VCalendarValues.h"

#include <algorithm>
#include <cstring>
#include <optional>

#include "records/CategoryWords.h"
#include "support/DateTimeZones.h"
#include "support/Numbers.h"
#include "support/TextCodec.h"
#include "vcalendar/RecurrenceReader.h"
#include "vcalendar/VCalendarReader.h"
#include "vcalendar/VCalendarWords.h"

namespace pim {

bool AllDayPending = false;

namespace {

NarrowStringView ViewOf(const char* bytes, std::int32_t length) {
  return {bytes, static_cast<std::size_t>(length)};
}

// Takes the next run of bytes without a semicolon off `rest`; nothing when there is no more.
std::optional<NarrowStringView> TakeToken(NarrowStringView& rest) {
  rest.remove_prefix(std::min(rest.find_first_not_of(';'), rest.size()));
  if (rest.empty()) return std::nullopt;
  const NarrowStringView token = rest.substr(0, rest.find(';'));
  rest.remove_prefix(token.size());
  return token;
}

// Takes what stands ahead of the next semicolon, and that, off `rest`.
NarrowStringView TakeField(NarrowStringView& rest) {
  const NarrowStringView field = rest.substr(0, rest.find(';'));
  rest.remove_prefix(std::min(field.size() + 1, rest.size()));
  return field;
}

WideText Decoded(NarrowStringView text, std::int32_t charset, std::int32_t encoding) {
  WideString work;
  WideText decoded;
  DecodeText(text.data(), static_cast<std::int32_t>(text.size()), charset, encoding, work, decoded);
  return decoded;
}

// The first carriage return, or npos. Byte by byte there are library calls that are fast.
std::size_t FindReturn(WideStringView text) {
  const auto* const bytes = reinterpret_cast<const unsigned char*>(text.data());
  const std::size_t size = text.size() * sizeof(char16_t);
  for (std::size_t at = 0; at < size; ++at) {
    const void* found = std::memchr(bytes + at, '\r', size - at);
    if (found == nullptr) break;
    at = static_cast<std::size_t>(static_cast<const unsigned char*>(found) - bytes);
    if (text[at / sizeof(char16_t)] == u'\r') return at / sizeof(char16_t);
  }
  return WideStringView::npos;
}

// Replaces each CR LF by its LF.
void JoinLineEnds(WideString& text) {
  std::size_t to = std::min(text.find(u"\r\n"), text.size());
  for (std::size_t from = to; from < text.size(); ++from) {
    if (text[from] != u'\r' || from + 1 == text.size() || text[from + 1] != u'\n')
      text[to++] = text[from];
  }
  text.resize(to);
}

void TakeText(VCalReadContext& context, NarrowStringView value, WideText& field) {
  DecodeText(value.data(), static_cast<std::int32_t>(value.size()), context.charset,
             context.encoding, context.text, field);
  if (FindReturn(field) == WideStringView::npos) return;
  context.text = field.view();
  JoinLineEnds(context.text);
  field = context.text;
}

// Start or end of an item, which is all-day when both neighbours have the form.
void TakeSpanEnd(NarrowStringView value, COleDateTimeNull& field, CCalendar& item) {
  const bool hasForm = IsAllDayForm(value);
  if (!hasForm) {
    item.allday = 0;
  } else if (AllDayPending) {
    item.allday = 1;
  }
  AllDayPending = hasForm;
  ParseDateTime(value, field);
}

void TakeAlarm(const VCalReadContext& context, NarrowStringView value, CReminder& reminder) {
  reminder.SetAlramType(DESKMATE_IDS::ALARM_AUDIO);
  reminder.SetType(context.alarmFormat & 0xF0);
  reminder.SetValueType(context.alarmFormat & 0x0F);
  ParseAlarm(value.data(), static_cast<std::int32_t>(value.size()), context.charset,
             context.encoding, reminder);
}

// The number behind the first `mark`; 0 without one.
std::int32_t NumberBehind(NarrowStringView text, char mark) {
  const std::size_t at = text.find(mark);
  return at == NarrowStringView::npos ? 0 : ParseNumber(text.substr(at + 1));
}

bool IsUtc(NarrowStringView text) { return text.find('Z') != NarrowStringView::npos; }

}  // namespace

void TakeVCalendarValue(VCalReadContext& context, const char* bytes, std::int32_t length,
                        CCalendar& item) {
  const NarrowStringView value = ViewOf(bytes, length);
  switch (context.propertyId) {
    case VCAL_TZ:
      return ParseUtcOffset(value, item.zone.tzOffset);
    case VCAL_DAYLIGHT:
      return ParseDaylight(bytes, length, context.charset, context.encoding, item.zone);
    case VCAL_CATEGORIES:
      return ParseCategories(bytes, length, item);
    case VCAL_CLASS:
      item.class_ = static_cast<std::int32_t>(CodeOfStart(kClassWords, value).value_or(CLASS_NONE));
      return;
    case VCAL_AALARM:
      return TakeAlarm(context, value, item.reminder);
    case VCAL_DTCREATE:
      return ParseDateTime(value, item.created_time);
    case VCAL_LAST_MODIFIED:
      return ParseDateTime(value, item.modified_time);
    case VCAL_X_MODIFIED:
      return ParseDateTime(value, item.xmodified_time);
    case VCAL_DTSTART:
      return TakeSpanEnd(value, item.start_time, item);
    case VCAL_DTEND:
      return TakeSpanEnd(value, item.end_time, item);
    case VCAL_DUE:
      return ParseDateTime(value, item.due);
    case VCAL_COMPLETED:
      return ParseDateTime(value, item.completed);
    case VCAL_SUMMARY:
      return TakeText(context, value, item.summary);
    case VCAL_DESCRIPTION:
      return TakeText(context, value, item.description);
    case VCAL_LOCATION:
      return TakeText(context, value, item.location);
    case VCAL_RRULE:
      return ParseRecurrence(bytes, length, item.recurrence);
    case VCAL_XRULE:
      return ParseRecurrence(bytes, length, item.exceptionRule);
    case VCAL_PRIORITY:
      item.priority = ParseNumber(value);
      return;
    case VCAL_STATUS:
      item.status =
          static_cast<std::int32_t>(CodeOfStart(kStatusWords, value).value_or(STATUS_NEEDS_ACTION));
      return;
    case VCAL_X_COLOR:
      return TakeText(context, value, item.color);
    case VCAL_X_HOLIDAY:
      item.set_holiday = IsStartOf(kHolidayYes, value) ? 1 : 0;
      return;
    default:
      return;
  }
}

void ParseDateTime(NarrowStringView text, COleDateTimeNull& value) {
  const std::int32_t date = ParseNumber(text);
  if (date == 0) {
    value.status = StatusNull;
    return;
  }
  std::int32_t time = NumberBehind(text, 'T');
  if (time / 10000 == 24) time = 0;
  value.SetDateTime(date / 10000, date / 100 % 100, date % 100, time / 10000, time / 100 % 100, 0);
  if (!IsUtc(text)) value = ConvertDateTime(value);
}

bool IsAllDayForm(NarrowStringView text) {
  if (ParseNumber(text) == 0 || IsUtc(text)) return false;
  const std::int32_t time = NumberBehind(text, 'T');
  const std::int32_t hour = time / 10000;
  return (hour == 0 || hour == 24) && time / 100 % 100 == 0;
}

void ParseUtcOffset(NarrowStringView text, COleDateTimeSpan& span) {
  const std::int64_t hours = ParseNumber(text);
  const std::int64_t minutes = NumberBehind(text, ':');
  span.SetDateTimeSpan(0, 0, Saturated(hours * 60 + (hours < 0 ? -minutes : minutes)), 0);
}

void ParseDuration(NarrowStringView text, COleDateTimeSpan& span) {
  span = {};
  if (!text.starts_with('P')) return;
  text.remove_prefix(1);
  bool inTime = false;
  std::int32_t number = 0;
  std::int32_t years = 0;
  std::int32_t months = 0;
  std::int32_t days = 0;
  std::int32_t hours = 0;
  std::int32_t minutes = 0;
  std::int32_t seconds = 0;
  for (const char c : text) {
    if (IsDigit(c)) {
      number = WithDigit(number, c);
      continue;
    }
    if (!IsLetter(c)) return;
    if (c == 'T') inTime = true;
    if (c == 'Y' && !inTime) years = number;
    if (c == 'M') (inTime ? minutes : months) = number;
    if (c == 'D' && !inTime) days = number;
    if (c == 'H' && inTime) hours = number;
    if (c == 'S' && inTime) seconds = number;
    number = 0;
  }
  const std::int64_t allDays = std::int64_t{years} * 365 + std::int64_t{months} * 30 + days;
  span.SetDateTimeSpan(Saturated(allDays), hours, minutes, seconds);
}

void ParseDaylight(const char* bytes, std::int32_t length, std::int32_t charset,
                   std::int32_t encoding, CCalendarZone& zone) {
  zone.daylightStart = zone.daylightEnd = {};
  zone.standardName.clear();
  zone.daylightName.clear();
  zone.daylightOffset = {};
  NarrowStringView rest = ViewOf(bytes, length);
  if (TakeToken(rest) != "TRUE") return;
  if (const auto offset = TakeToken(rest)) ParseUtcOffset(*offset, zone.daylightOffset);
  if (const auto start = TakeToken(rest)) ParseDateTime(*start, zone.daylightStart);
  if (const auto end = TakeToken(rest)) ParseDateTime(*end, zone.daylightEnd);
  if (const auto name = TakeToken(rest)) zone.standardName = Decoded(*name, charset, encoding);
  if (const auto name = TakeToken(rest)) zone.daylightName = Decoded(*name, charset, encoding);
}

void ParseAlarm(const char* bytes, std::int32_t length, std::int32_t charset, std::int32_t encoding,
                CReminder& reminder) {
  NarrowStringView rest = ViewOf(bytes, length);
  ParseDateTime(TakeField(rest), reminder.alarm_date);
  ParseDuration(TakeField(rest), reminder.snooze);
  reminder.repeatCount = ParseNumber(TakeField(rest));
  reminder.displayText = Decoded(Trim(TakeField(rest)), charset, encoding);
}

void ParseCategories(const char* bytes, std::int32_t length, CCalendar& item) {
  NarrowStringView rest = ViewOf(bytes, length);
  std::uint32_t mask = 0;
  while (const auto token = TakeToken(rest)) mask |= CategoryBitOf(Trim(*token));
  for (const std::uint32_t kept : {CATEGORY_APPOINTMENT, CATEGORY_ANNIVERSARY, CATEGORY_BIRTHDAY}) {
    if ((mask & kept) == 0) continue;
    const NarrowStringView word = TextOf(kCategoryWords, kept);
    item.NewCategory(WideString(word.begin(), word.end()));
  }
  if ((mask & CATEGORY_MEMO) != 0)
    item.calendar_type = static_cast<std::uint8_t>(CalendarType::Memo);
}

}  // namespace pim
