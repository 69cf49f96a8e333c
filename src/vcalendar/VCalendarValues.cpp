// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "vcalendar/VCalendarValues.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "support/Numbers.h"
#include "support/TextCodec.h"
#include "vcalendar/RecurrenceReader.h"
#include "vcalendar/VCalendarForms.h"
#include "vcalendar/VCalendarReader.h"
#include "vcalendar/VCalendarWords.h"

namespace pim {

constinit thread_local bool AllDayPending = false;

namespace {

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

// Whether two values of a field are told as the same.
bool AreSame(const COleDateTime& a, const COleDateTime& b) {
  return a == b || (a.status == StatusInvalid && b.status == StatusInvalid);
}
bool AreSame(const COleDateTimeSpan& a, const COleDateTimeSpan& b) {
  return a.status == b.status && (a.status != StatusValid || a.value == b.value);
}
bool AreSame(const CCalendarZone& a, const CCalendarZone& b) {
  return AreSame(a.daylightOffset, b.daylightOffset) && AreSame(a.daylightStart, b.daylightStart) &&
         AreSame(a.daylightEnd, b.daylightEnd) && a.standardName == b.standardName &&
         a.daylightName == b.daylightName;
}
bool AreSame(const CReminder& a, const CReminder& b) {
  return a.reminderType == b.reminderType && a.valueType == b.valueType &&
         a.alarmType == b.alarmType && AreSame(a.alarm_date, b.alarm_date) &&
         AreSame(a.snooze, b.snooze) && a.repeatCount == b.repeatCount &&
         a.displayText == b.displayText;
}
// Looks at the rules with valid end dates in the place of invalid ones.
bool AreSame(RecurrenceData* a, RecurrenceData* b) {
  if (a == nullptr || b == nullptr) return a == b;
  if (!AreSame(a->endDate, b->endDate)) return false;
  const COleDateTimeNull date = std::exchange(b->endDate, a->endDate);
  const COleDateTimeNull other = std::exchange(a->endDate, {});
  b->endDate = {};
  const bool same = *a == *b;
  a->endDate = other;
  b->endDate = date;
  return same;
}

// One property's value on its way into the item, told to the account as it goes.
template <Telling kTelling>
class ItemValueTaker {
 public:
  ItemValueTaker(VCalReadContext& context, NarrowStringView value, CCalendar& item)
      : context_(context), value_(value), item_(item), account_(context.account) {}

  ValueOutcome Take() {
    switch (static_cast<VCalPropertyId>(context_.propertyId)) {  // no default: none is left out
      case VCAL_UNKNOWN:
      case VCAL_NO_PROPERTY:
      case VCAL_VERSION:
      case VCAL_BEGIN:
        break;
      case VCAL_TZ:
        return {TakeOffset()};
      case VCAL_DAYLIGHT:
        return TakeDaylight();
      case VCAL_CATEGORIES:
        return {TakeCategories()};
      case VCAL_CLASS:
        return {TakeWord(kClassWords, CLASS_NONE, item_.class_, FIELD_CLASS)};
      case VCAL_AALARM:
        return TakeAlarm();
      case VCAL_DTCREATE:
        return TakeDate(item_.created_time, FIELD_CREATED_TIME);
      case VCAL_LAST_MODIFIED:
        return TakeDate(item_.modified_time, FIELD_MODIFIED_TIME);
      case VCAL_X_MODIFIED:
        return TakeDate(item_.xmodified_time, FIELD_XMODIFIED_TIME);
      case VCAL_DTSTART:
        return TakeSpanEnd(item_.start_time, FIELD_START_TIME);
      case VCAL_DTEND:
        return TakeSpanEnd(item_.end_time, FIELD_END_TIME);
      case VCAL_DUE:
        return TakeDate(item_.due, FIELD_DUE);
      case VCAL_COMPLETED:
        return TakeDate(item_.completed, FIELD_COMPLETED);
      case VCAL_SUMMARY:
        return {TakeText(item_.summary, FIELD_SUMMARY)};
      case VCAL_DESCRIPTION:
        return {TakeText(item_.description, FIELD_DESCRIPTION)};
      case VCAL_LOCATION:
        return {TakeText(item_.location, FIELD_LOCATION)};
      case VCAL_RRULE:
        return TakeRule(item_.recurrence, FIELD_RECURRENCE);
      case VCAL_XRULE:
        return TakeRule(item_.exceptionRule, FIELD_EXCEPTION_RULE);
      case VCAL_PRIORITY:
        return {TakePriority()};
      case VCAL_STATUS:
        return {TakeWord(kStatusWords, STATUS_NEEDS_ACTION, item_.status, FIELD_STATUS)};
      case VCAL_X_COLOR:
        return {TakeText(item_.color, FIELD_COLOR)};
      case VCAL_X_HOLIDAY:
        return {TakeHoliday()};
    }
    return {};
  }

 private:
  static constexpr bool kTells = kTelling == Telling::Account;

  const char* bytes() const { return value_.data(); }
  std::int32_t length() const { return static_cast<std::int32_t>(value_.size()); }
  void Tell(std::uint8_t place, bool same, bool says) {
    if constexpr (kTells) account_->Write(place, {.same = same, .says = says});
  }

  LossMask TakeOffset() {
    COleDateTimeSpan& offset = item_.zone.tzOffset;
    const COleDateTimeSpan before = offset;
    const bool isUnderstood = ParseUtcOffset(value_, offset);
    Tell(FIELD_ZONE, AreSame(before, offset), isUnderstood || !AreSame(offset, {}));
    return LossIf(!isUnderstood, LOSS_BAD_VALUE);
  }

  ValueOutcome TakeDaylight() {
    CCalendarZone before;
    if constexpr (kTells) before = item_.zone;
    const ValueOutcome outcome =
        ParseDaylight(bytes(), length(), context_.charset, context_.encoding, item_.zone);
    // One that isn't understood clears the fields, which is nothing that it says.
    const bool says = (outcome.losses & LOSS_BAD_VALUE) == 0 || !AreSame({}, item_.zone);
    if constexpr (kTells) Tell(PLACE_DAYLIGHT, AreSame(before, item_.zone), says);
    return outcome;
  }

  LossMask TakeCategories() {
    const std::uint8_t before = item_.calendar_type;
    const CategoriesRead read = ParseCategories(bytes(), length(), item_);
    if (kTells && read.hasRows) account_->Add(FIELD_CATEGORIES);
    if (read.isMemo) Tell(FIELD_CALENDAR_TYPE, before == item_.calendar_type, true);
    return read.losses;
  }

  LossMask TakeWord(std::span<const Word> words, std::int32_t other, std::int32_t& field,
                    ItemField place) {
    const std::int32_t before = field;
    const auto code = CodeOfStart(words, value_);
    field = code ? static_cast<std::int32_t>(*code) : other;
    Tell(place, before == field, code.has_value());
    return LossIf(!code, LOSS_BAD_VALUE);
  }

  ValueOutcome TakeAlarm() {
    CReminder& reminder = item_.reminder;
    CReminder before;
    if constexpr (kTells) before = reminder;
    reminder.SetAlramType(DESKMATE_IDS::ALARM_AUDIO);
    reminder.SetType(context_.alarmFormat & 0xF0);
    reminder.SetValueType(context_.alarmFormat & 0x0F);
    const ValueOutcome outcome =
        ParseAlarm(bytes(), length(), context_.charset, context_.encoding, reminder, kTelling);
    if constexpr (kTells) Tell(FIELD_REMINDER, AreSame(before, reminder), true);
    return outcome;
  }

  ValueOutcome TakeDate(COleDateTimeNull& field, ItemField place) {
    if constexpr (!kTells) return OutcomeOfDate(ParseDateTime(value_, field));
    const COleDateTimeNull before = field;
    const bool isUnderstood = ParseDateTime(value_, field);
    ValueOutcome outcome = OutcomeOfDate(isUnderstood);
    outcome.losses = LossesOfDateTime(value_, isUnderstood);
    Tell(place, AreSame(before, field), isUnderstood || field.status == StatusInvalid);
    return outcome;
  }

  // Start or end of an item, which is all-day when both neighbours have the form.
  ValueOutcome TakeSpanEnd(COleDateTimeNull& field, ItemField place) {
    const VCalendarAccount::Span before{item_.allday, AllDayPending};
    VCalendarAccount::Span now = before;
    const bool hasForm = IsAllDayForm(value_);
    now.Take(hasForm);
    item_.allday = now.allday;
    AllDayPending = now.isPending;
    if constexpr (kTells) {
      if (!hasForm || before.isPending) {
        account_->Write(FIELD_ALLDAY, {.same = before.allday == now.allday,
                                       .says = hasForm,
                                       .follows = true,
                                       .isJoint = true});
      }
      account_->TakeSpan(before, now, hasForm);
    }
    ValueOutcome outcome = TakeDate(field, place);
    if (kTells && hasForm && (outcome.losses & LOSS_TIME_DROPPED) != 0) {
      // Right for an all-day item, and what it is shows at its end.
      outcome.losses &= ~LossMask{LOSS_TIME_DROPPED};
      account_->TakeDayEnd();
    }
    return outcome;
  }

  LossMask TakeText(WideText& field, ItemField place) {
    if constexpr (!kTells) return Decode(field);
    const WideText before = std::exchange(field, {});
    const LossMask losses = Decode(field);
    Tell(place, before == field, !field.empty());
    return losses;
  }

  LossMask Decode(WideText& field) {
    const LossMask losses =
        DecodeText(bytes(), length(), context_.charset, context_.encoding, context_.text, field);
    if (FindReturn(field) == WideStringView::npos) return losses;
    context_.text = field.view();
    JoinLineEnds(context_.text);
    field = context_.text;
    return losses;
  }

  ValueOutcome TakeRule(CRecurrence& holder, ItemField place) {
    RecurrencePointer before;
    if constexpr (kTells) before = std::move(holder.data);
    ValueOutcome outcome{ParseRecurrence(bytes(), length(), holder)};
    RecurrenceData* const rule = holder.data.get();
    if (rule == nullptr) {
      outcome.event = TextEvent::RuleNotUnderstood;
    } else if (rule->endDate.status == StatusInvalid) {
      outcome.event = TextEvent::DateNotUnderstood;
    }
    if constexpr (kTells) Tell(place, AreSame(before.get(), rule), rule != nullptr);
    return outcome;
  }

  LossMask TakePriority() {
    const std::int32_t before = item_.priority;
    item_.priority = ParseNumber(value_);
    const bool isUnderstood = IsNumber(value_);
    Tell(FIELD_PRIORITY, before == item_.priority, isUnderstood || item_.priority != 0);
    return LossIf(!isUnderstood, LOSS_BAD_VALUE);
  }

  LossMask TakeHoliday() {
    const std::uint8_t before = item_.set_holiday;
    item_.set_holiday = IsStartOf(kHolidayYes, value_) ? 1 : 0;
    const bool isKnown = item_.set_holiday != 0 || IsStartOf(kHolidayNo, value_);
    Tell(FIELD_SET_HOLIDAY, before == item_.set_holiday, isKnown);
    return LossIf(!isKnown, LOSS_BAD_VALUE);
  }

  VCalReadContext& context_;
  NarrowStringView value_;
  CCalendar& item_;
  VCalendarAccount* account_;
};

}  // namespace

ValueOutcome TakeVCalendarValue(VCalReadContext& context, const char* bytes, std::int32_t length,
                                CCalendar& item) {
  const NarrowStringView value(bytes, static_cast<std::size_t>(length));
  if (context.account != nullptr) [[unlikely]]
    return ItemValueTaker<Telling::Account>(context, value, item).Take();
  return ItemValueTaker<Telling::None>(context, value, item).Take();
}

}  // namespace pim
