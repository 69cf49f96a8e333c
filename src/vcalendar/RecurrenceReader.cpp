// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "vcalendar/RecurrenceReader.h"

#include <algorithm>
#include <optional>

#include "pim/support/ParseFailure.h"
#include "support/Numbers.h"
#include "support/ValueMessage.h"
#include "vcalendar/VCalendarWords.h"

namespace pim {
namespace {

// The readers below take what they read off `text`, from its start or its end, and throw
// kParseFailure, which goes no further than ParseRecurrence.

void TakeOff(NarrowStringView& text, std::size_t size) {
  text.remove_prefix(size);
  text = TrimLeft(text);
}

// What stands ahead of the first white space.
NarrowStringView FirstEntry(NarrowStringView text) {
  const auto end = std::ranges::find_if(text, IsWhiteSpace);
  return text.substr(0, static_cast<std::size_t>(end - text.begin()));
}

std::int32_t DigitsToNumber(NarrowStringView digits, LossMask& losses) {
  if (!std::ranges::all_of(digits, IsDigit)) throw kParseFailure;
  constexpr std::size_t kSurelyFits = 9;
  losses |= LossIf(digits.size() > kSurelyFits && !IsNumber(digits), LOSS_BAD_VALUE);
  return ParseNumber(digits);
}

std::int32_t TakeKind(NarrowStringView& text) {
  for (const Word& word : kRuleWords) {
    if (!text.starts_with(word.text)) continue;
    text.remove_prefix(word.text.size());
    return static_cast<std::int32_t>(word.code);
  }
  throw kParseFailure;
}

std::int32_t TakeInterval(NarrowStringView& text, LossMask& losses) {
  const NarrowStringView digits = FirstEntry(text);
  const std::int32_t interval = DigitsToNumber(digits, losses);
  if (interval < 1) throw kParseFailure;
  TakeOff(text, digits.size());
  return interval;
}

// A date at the end, known by its shape; anything else stays and isn't one.
COleDateTimeNull TakeEndDate(NarrowStringView& text) {
  constexpr std::size_t kDateSize = 8;  // YYYYMMDD
  constexpr std::size_t kSize = 15;     // and THHMMSS
  COleDateTimeNull date;
  const NarrowStringView body = text.substr(0, text.size() - (text.ends_with('Z') ? 1 : 0));
  if (body.size() < kSize) return date;
  const std::size_t start = body.size() - kSize;
  if (start > 0 && !IsWhiteSpace(body[start - 1])) return date;
  const NarrowStringView day = body.substr(start, kDateSize);
  const NarrowStringView time = body.substr(start + kDateSize + 1);
  if (body[start + kDateSize] != 'T' || !std::ranges::all_of(day, IsDigit) ||
      !std::ranges::all_of(time, IsDigit))
    return date;
  const std::int32_t ymd = ParseNumber(day);
  const std::int32_t hms = ParseNumber(time);
  date.SetDateTime(ymd / 10000, ymd / 100 % 100, ymd % 100, hms / 10000, hms / 100 % 100,
                   hms % 100);
  text = Trim(text.substr(0, start));
  return date;
}

std::int32_t TakeCount(NarrowStringView& text, LossMask& losses) {
  const std::size_t mark = text.rfind('#');
  if (mark == NarrowStringView::npos) return 0;
  const std::int32_t count = DigitsToNumber(text.substr(mark + 1), losses);
  text = Trim(text.substr(0, mark));
  return count;
}

// The forms of a list's entries: each gives the value kept, or nothing for another form.
using EntryForm = std::optional<std::int32_t> (*)(NarrowStringView entry);

std::optional<std::int32_t> Weekday(NarrowStringView entry) {
  const auto number = CodeOf(kWeekdayWords, entry);
  if (!number) return std::nullopt;
  return static_cast<std::int32_t>(*number);
}

std::optional<std::int32_t> WeekPosition(NarrowStringView entry) {
  if (entry.size() != 2 || entry[0] < '1' || entry[0] > '5') return std::nullopt;
  const std::int32_t number = entry[0] - '0';
  if (entry[1] == '+') return number;
  if (entry[1] == '-') return -number;
  return std::nullopt;
}

// A number up to `largest`, without leading zeros.
std::optional<std::int32_t> NumberUpTo(std::int32_t largest, NarrowStringView entry) {
  if (entry.empty() || entry[0] == '0' || !std::ranges::all_of(entry, IsDigit)) return std::nullopt;
  const std::int32_t number = ParseNumber(entry);
  if (number > largest) return std::nullopt;
  return number;
}

std::optional<std::int32_t> MonthDay(NarrowStringView entry) {
  if (entry == "LD") return -1;
  const bool negative = entry.ends_with('-');
  if (negative || entry.ends_with('+')) entry.remove_suffix(1);
  const auto day = NumberUpTo(31, entry);
  return day && negative ? -*day : day;
}

std::optional<std::int32_t> MonthNumber(NarrowStringView entry) { return NumberUpTo(12, entry); }

std::optional<std::int32_t> YearDay(NarrowStringView entry) {
  entry.remove_prefix(std::min(entry.find_first_not_of('0'), entry.size()));
  return NumberUpTo(366, entry);
}

void TakeList(NarrowStringView& text, EntryForm form, RecurrenceList& list) {
  while (!text.empty()) {
    const NarrowStringView entry = FirstEntry(text);
    const auto value = form(entry);
    if (!value) return;
    AddSorted(list, *value);
    TakeOff(text, entry.size());
  }
}

LossMask TakeLists(NarrowStringView& text, RecurrenceData& rule) {
  const auto takeDays = [&](EntryForm form) {
    TakeList(text, form, static_cast<DaysData&>(rule).days);
    return LossMask{0};
  };
  switch (rule.type) {
    case RECUR_DAILY: {
      RecurrenceList dropped;  // a daily rule may name weekdays, but keeps none
      TakeList(text, Weekday, dropped);
      return LossIf(!dropped.empty(), LOSS_OTHER_PARTS);
    }
    case RECUR_WEEKLY:
      return takeDays(Weekday);
    case RECUR_MONTHLY_BY_POS: {
      auto& byPos = static_cast<MonthlyByPosData&>(rule);
      TakeList(text, WeekPosition, byPos.positions);
      TakeList(text, Weekday, byPos.weekdays);
      return 0;
    }
    case RECUR_MONTHLY_BY_DAY:
      return takeDays(MonthDay);
    case RECUR_YEARLY_BY_MONTH:
      return takeDays(MonthNumber);
    default:
      return takeDays(YearDay);
  }
}

RecurrencePointer ReadRule(NarrowStringView text, LossMask& losses) {
  text = Trim(text);
  RecurrencePointer rule = MakeRecurrenceData(TakeKind(text));
  rule->interval = TakeInterval(text, losses);
  // The end date stands behind the count, and only from the end can either be told from a list.
  rule->endDate = TakeEndDate(text);
  rule->count = TakeCount(text, losses);
  losses |= TakeLists(text, *rule) | LossIf(rule->endDate.status == StatusInvalid, LOSS_BAD_VALUE);
  if (!text.empty()) throw kParseFailure;
  return rule;
}

}  // namespace

LossMask ParseRecurrence(const char* bytes, std::int32_t length, CRecurrence& holder) {
  holder.ResetRecurrenceData();
  const NarrowStringView value(bytes, static_cast<std::size_t>(length));
  LossMask losses = 0;
  try {
    holder.data = ReadRule(value, losses);
  } catch (ParseFailure) {
    ShowValueMessage(u"Invalid recurrence.\n\n", value);
    losses = LOSS_BAD_VALUE;
  }
  return losses;
}

void AddSorted(RecurrenceList& list, std::int32_t value) {
  // Read as unsigned, negative values stand behind all positive ones.
  const auto key = [](std::int32_t entry) { return static_cast<std::uint32_t>(entry); };
  const auto place = std::ranges::lower_bound(list, key(value), {}, key);
  if (place == list.end() || *place != value) list.insert(place, value);
}

}  // namespace pim
