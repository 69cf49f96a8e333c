// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "vcalendar/VCalendarForms.h"

#include <algorithm>
#include <optional>

#include "records/CategoryWords.h"
#include "support/DateTimeZones.h"
#include "support/Numbers.h"
#include "support/TextCodec.h"
#include "vcalendar/VCalendarWords.h"

namespace pim {
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

LossMask Decode(NarrowStringView bytes, std::int32_t charset, std::int32_t encoding,
                WideText& text) {
  WideString work;
  return DecodeText(bytes.data(), static_cast<std::int32_t>(bytes.size()), charset, encoding, work,
                    text);
}

void TakeDate(NarrowStringView text, COleDateTimeNull& date, ValueOutcome& outcome,
              Telling telling = Telling::Account) {
  const bool isUnderstood = ParseDateTime(text, date);
  if (telling == Telling::Account) outcome.losses |= LossesOfDateTime(text, isUnderstood);
  if (!isUnderstood) outcome.event = TextEvent::DateNotUnderstood;
}

// The number behind the first `mark`; 0 without one.
std::int32_t NumberBehind(NarrowStringView text, char mark) {
  const std::size_t at = text.find(mark);
  return at == NarrowStringView::npos ? 0 : ParseNumber(text.substr(at + 1));
}

bool IsUtc(NarrowStringView text) { return text.find('Z') != NarrowStringView::npos; }

}  // namespace

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

LossMask LossesOfDateTime(NarrowStringView text, bool isUnderstood) {
  if (!isUnderstood) return LOSS_BAD_VALUE;
  text = Trim(text);
  if (NamesNoDate(text)) return 0;
  const bool isUtc = text.ends_with('Z');
  if (isUtc) text.remove_suffix(1);
  constexpr std::size_t kDaySize = 8;
  const NarrowStringView day = text.substr(0, kDaySize);
  const NarrowStringView time = text.substr(day.size());
  const bool hasForm = day.size() == kDaySize && std::ranges::all_of(day, IsDigit) &&
                       (time.empty() || (time.size() == 7 && time[0] == 'T' &&
                                         std::ranges::all_of(time.substr(1), IsDigit)));
  if (!hasForm) return LOSS_BAD_VALUE;
  if (time.starts_with("T24")) return LOSS_TIME_DROPPED;  // the day's end became its start
  return LossIf(!time.empty() && !time.ends_with("00"), LOSS_SECONDS_DROPPED);
}

bool IsAllDayForm(NarrowStringView text) {
  if (ParseNumber(text) == 0 || IsUtc(text)) return false;
  const std::int32_t time = NumberBehind(text, 'T');
  const std::int32_t hour = time / 10000;
  return (hour == 0 || hour == 24) && time / 100 % 100 == 0;
}

bool ParseUtcOffset(NarrowStringView text, COleDateTimeSpan& span) {
  const std::int64_t hours = ParseNumber(text);
  const std::int64_t minutes = NumberBehind(text, ':');
  span.SetDateTimeSpan(0, 0, Saturated(hours * 60 + (hours < 0 ? -minutes : minutes)), 0);
  text = Trim(text);
  const bool isNegative = text.starts_with('-');
  if (isNegative || text.starts_with('+')) text.remove_prefix(1);
  const std::size_t colon = std::min(text.find(':'), text.size());
  const NarrowStringView behind = text.substr(std::min(colon + 1, text.size()));
  const bool hasMinutes = colon != text.size();
  return (colon == 1 || colon == 2) && std::ranges::all_of(text.substr(0, colon), IsDigit) &&
         (!hasMinutes || behind.size() == 2) && std::ranges::all_of(behind, IsDigit) &&
         !(isNegative && hours == 0 && minutes != 0);
}

bool ParseDuration(NarrowStringView text, COleDateTimeSpan& span) {
  span = {};
  if (!text.starts_with('P')) return text.empty();
  text.remove_prefix(1);
  bool inTime = false;
  bool isUnderstood = true;
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
      isUnderstood = isUnderstood && number != std::numeric_limits<std::int32_t>::max();
      continue;
    }
    if (!IsLetter(c)) return false;
    if (c == 'T') {
      inTime = true;
    } else if (c == 'M') {
      (inTime ? minutes : months) = number;
    } else if (c == 'Y' && !inTime) {
      years = number;
    } else if (c == 'D' && !inTime) {
      days = number;
    } else if (c == 'H' && inTime) {
      hours = number;
    } else if (c == 'S' && inTime) {
      seconds = number;
    } else {
      isUnderstood = false;
    }
    number = 0;
  }
  const std::int64_t allDays = std::int64_t{years} * 365 + std::int64_t{months} * 30 + days;
  span.SetDateTimeSpan(Saturated(allDays), hours, minutes, seconds);
  return isUnderstood && span.status == StatusValid && !text.empty() && !IsDigit(text.back());
}

ValueOutcome ParseDaylight(const char* bytes, std::int32_t length, std::int32_t charset,
                           std::int32_t encoding, CCalendarZone& zone) {
  zone.daylightStart = zone.daylightEnd = {};
  zone.standardName.clear();
  zone.daylightName.clear();
  zone.daylightOffset = {};
  ValueOutcome outcome;
  NarrowStringView rest = ViewOf(bytes, length);
  // Tokens move forward into the places of empty ones.
  if (rest.starts_with(';') || rest.find(";;") != NarrowStringView::npos)
    outcome.losses |= LOSS_BAD_VALUE;
  const auto flag = TakeToken(rest);
  if (flag == kDaylightYes) {
    outcome.losses |= LossIf(rest.empty(), LOSS_BAD_VALUE);
    if (const auto offset = TakeToken(rest))
      outcome.losses |= LossIf(!ParseUtcOffset(*offset, zone.daylightOffset), LOSS_BAD_VALUE);
    for (COleDateTimeNull* date : {&zone.daylightStart, &zone.daylightEnd}) {
      if (const auto token = TakeToken(rest)) TakeDate(*token, *date, outcome);
    }
    for (WideText* name : {&zone.standardName, &zone.daylightName}) {
      if (const auto token = TakeToken(rest))
        outcome.losses |= Decode(*token, charset, encoding, *name);
    }
    outcome.losses |= LossIf(TakeToken(rest).has_value(), LOSS_EXTRA_PARTS);
  } else if (!flag || !EqualsIgnoringCase(*flag, kDaylightNo)) {
    outcome.losses |= LOSS_BAD_VALUE;
  } else {
    outcome.losses |= LossIf(TakeToken(rest).has_value(), LOSS_OTHER_PARTS);
  }
  return outcome;
}

ValueOutcome ParseAlarm(const char* bytes, std::int32_t length, std::int32_t charset,
                        std::int32_t encoding, CReminder& reminder, Telling telling) {
  NarrowStringView rest = ViewOf(bytes, length);
  ValueOutcome outcome;
  TakeDate(TakeField(rest), reminder.alarm_date, outcome, telling);
  outcome.losses |= LossIf(!ParseDuration(TakeField(rest), reminder.snooze), LOSS_BAD_VALUE);
  const NarrowStringView count = TakeField(rest);
  reminder.repeatCount = ParseNumber(count);
  outcome.losses |= LossIf(!count.empty() && !IsNumber(count), LOSS_BAD_VALUE);
  outcome.losses |= Decode(Trim(TakeField(rest)), charset, encoding, reminder.displayText);
  outcome.losses |= LossIf(rest.find_first_not_of(';') != NarrowStringView::npos, LOSS_EXTRA_PARTS);
  return outcome;
}

CategoriesRead ParseCategories(const char* bytes, std::int32_t length, CCalendar& item) {
  constexpr std::uint32_t kRows[] = {CATEGORY_APPOINTMENT, CATEGORY_ANNIVERSARY, CATEGORY_BIRTHDAY};
  constexpr std::uint32_t kKept = kRows[0] | kRows[1] | kRows[2] | CATEGORY_MEMO;
  CategoriesRead read;
  NarrowStringView rest = ViewOf(bytes, length);
  std::uint32_t mask = 0;
  if (rest.find_first_not_of(';') == NarrowStringView::npos) read.losses |= LOSS_EMPTY;
  while (const auto token = TakeToken(rest)) {
    const NarrowStringView word = Trim(*token);
    const std::uint32_t bit = CategoryBitOf(word);
    mask |= bit;
    if ((bit & kKept) == 0 && !word.empty()) read.losses |= LOSS_OTHER_PARTS;
  }
  for (const std::uint32_t kept : kRows) {
    if ((mask & kept) == 0) continue;
    const NarrowStringView word = TextOf(kCategoryWords, kept);
    item.NewCategory(WideString(word.begin(), word.end()));
    read.hasRows = true;
  }
  read.isMemo = (mask & CATEGORY_MEMO) != 0;
  if (read.isMemo) item.calendar_type = static_cast<std::uint8_t>(CalendarType::Memo);
  return read;
}

}  // namespace pim
