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
bool TakeSpanEnd(NarrowStringView value, COleDateTimeNull& field, CCalendar& item) {
  const bool hasForm = IsAllDayForm(value);
  if (!hasForm) {
    item.allday = 0;
  } else if (AllDayPending) {
    item.allday = 1;
  }
  AllDayPending = hasForm;
  return ParseDateTime(value, field);
}

bool TakeAlarm(const VCalReadContext& context, NarrowStringView value, CReminder& reminder) {
  reminder.SetAlramType(DESKMATE_IDS::ALARM_AUDIO);
  reminder.SetType(context.alarmFormat & 0xF0);
  reminder.SetValueType(context.alarmFormat & 0x0F);
  return ParseAlarm(value.data(), static_cast<std::int32_t>(value.size()), context.charset,
                    context.encoding, reminder);
}

std::optional<TextEvent> TakeRule(NarrowStringView value, CRecurrence& holder) {
  ParseRecurrence(value.data(), static_cast<std::int32_t>(value.size()), holder);
  const RecurrenceData* const rule = holder.GetRecurrenceData();
  if (rule == nullptr) return TextEvent::RuleNotUnderstood;
  if (rule->endDate.status == StatusInvalid) return TextEvent::DateNotUnderstood;
  return std::nullopt;
}

// The number behind the first `mark`; 0 without one.
std::int32_t NumberBehind(NarrowStringView text, char mark) {
  const std::size_t at = text.find(mark);
  return at == NarrowStringView::npos ? 0 : ParseNumber(text.substr(at + 1));
}

bool IsUtc(NarrowStringView text) { return text.find('Z') != NarrowStringView::npos; }

}  // namespace

std::optional<TextEvent> TakeVCalendarValue(VCalReadContext& context, const char* bytes,
                                            std::int32_t length, CCalendar& item) {
  const NarrowStringView value = ViewOf(bytes, length);
  bool isDateUnderstood = true;
  switch (context.propertyId) {
    case VCAL_TZ:
      ParseUtcOffset(value, item.zone.tzOffset);
      break;
    case VCAL_DAYLIGHT:
      isDateUnderstood = ParseDaylight(bytes, length, context.charset, context.encoding, item.zone);
      break;
    case VCAL_CATEGORIES:
      ParseCategories(bytes, length, item);
      break;
    case VCAL_CLASS:
      item.class_ = static_cast<std::int32_t>(CodeOfStart(kClassWords, value).value_or(CLASS_NONE));
      break;
    case VCAL_AALARM:
      isDateUnderstood = TakeAlarm(context, value, item.reminder);
      break;
    case VCAL_DTCREATE:
      isDateUnderstood = ParseDateTime(value, item.created_time);
      break;
    case VCAL_LAST_MODIFIED:
      isDateUnderstood = ParseDateTime(value, item.modified_time);
      break;
    case VCAL_X_MODIFIED:
      isDateUnderstood = ParseDateTime(value, item.xmodified_time);
      break;
    case VCAL_DTSTART:
      isDateUnderstood = TakeSpanEnd(value, item.start_time, item);
      break;
    case VCAL_DTEND:
      isDateUnderstood = TakeSpanEnd(value, item.end_time, item);
      break;
    case VCAL_DUE:
      isDateUnderstood = ParseDateTime(value, item.due);
      break;
    case VCAL_COMPLETED:
      isDateUnderstood = ParseDateTime(value, item.completed);
      break;
    case VCAL_SUMMARY:
      TakeText(context, value, item.summary);
      break;
    case VCAL_DESCRIPTION:
      TakeText(context, value, item.description);
      break;
    case VCAL_LOCATION:
      TakeText(context, value, item.location);
      break;
    case VCAL_RRULE:
      return TakeRule(value, item.recurrence);
    case VCAL_XRULE:
      return TakeRule(value, item.exceptionRule);
    case VCAL_PRIORITY:
      item.priority = ParseNumber(value);
      break;
    case VCAL_STATUS:
      item.status =
          static_cast<std::int32_t>(CodeOfStart(kStatusWords, value).value_or(STATUS_NEEDS_ACTION));
      break;
    case VCAL_X_COLOR:
      TakeText(context, value, item.color);
      break;
    case VCAL_X_HOLIDAY:
      item.set_holiday = IsStartOf(kHolidayYes, value) ? 1 : 0;
      break;
    default:
      break;
  }
  if (isDateUnderstood) return std::nullopt;
  return TextEvent::DateNotUnderstood;
}

bool ParseDateTime(NarrowStringView text, COleDateTimeNull& value) {
  const std::int32_t date = ParseNumber(text);
  if (date == 0) {
    value.status = StatusNull;
    return NamesNoDate(text);
  }
  std::int32_t time = NumberBehind(text, 'T');
  if (time / 10000 == 24) time = 0;
  value.SetDateTime(date / 10000, date / 100 % 100, date % 100, time / 10000, time / 100 % 100, 0);
  if (!IsUtc(text)) value = ConvertDateTime(value);
  return value.status == StatusValid;
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

bool ParseDaylight(const char* bytes, std::int32_t length, std::int32_t charset,
                   std::int32_t encoding, CCalendarZone& zone) {
  zone.daylightStart = zone.daylightEnd = {};
  zone.standardName.clear();
  zone.daylightName.clear();
  zone.daylightOffset = {};
  NarrowStringView rest = ViewOf(bytes, length);
  if (TakeToken(rest) != "TRUE") return true;
  bool understood = true;
  if (const auto offset = TakeToken(rest)) ParseUtcOffset(*offset, zone.daylightOffset);
  for (COleDateTimeNull* date : {&zone.daylightStart, &zone.daylightEnd}) {
    const auto token = TakeToken(rest);
    if (token && !ParseDateTime(*token, *date)) understood = false;
  }
  if (const auto name = TakeToken(rest)) zone.standardName = Decoded(*name, charset, encoding);
  if (const auto name = TakeToken(rest)) zone.daylightName = Decoded(*name, charset, encoding);
  return understood;
}

bool ParseAlarm(const char* bytes, std::int32_t length, std::int32_t charset, std::int32_t encoding,
                CReminder& reminder) {
  NarrowStringView rest = ViewOf(bytes, length);
  const bool understood = ParseDateTime(TakeField(rest), reminder.alarm_date);
  ParseDuration(TakeField(rest), reminder.snooze);
  reminder.repeatCount = ParseNumber(TakeField(rest));
  reminder.displayText = Decoded(Trim(TakeField(rest)), charset, encoding);
  return understood;
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
