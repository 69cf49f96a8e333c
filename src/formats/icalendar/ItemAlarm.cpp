// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/icalendar/ItemAlarm.h"

#include <cmath>

#include "formats/icalendar/AlarmWords.h"
#include "formats/icalendar/ItemText.h"
#include "formats/icalendar/OwnWords.h"

namespace pim {
namespace {

std::int64_t SecondsBetween(const icaltimetype& from, const icaltimetype& to) {
  const auto second = [](const icaltimetype& time) {
    return (time.hour * 60 + time.minute) * 60 + time.second;
  };
  return DaysBetween(from, to) * kSecondsOfDay + second(to) - second(from);
}

// What a reminder says, in whole seconds and the form's characters.
struct AlarmParts {
  std::optional<icaltimetype> date;
  std::int64_t snooze = 0;
  std::int32_t repeats = 0;
  std::string text;

  bool isRepeated() const { return repeats > 0 && snooze > 0; }
};

AlarmParts PartsOf(const CReminder& reminder, const TellFormatLoss& tell) {
  const auto change = [&tell](const char* field, FormatReason reason) {
    tell({field, FormatVerdict::Changed, reason});
  };
  AlarmParts parts;
  parts.date = IcalUtc(reminder.alarm_date);
  if (reminder.alarm_date.status == StatusInvalid)
    tell({"reminder.alarm_date", FormatVerdict::Dropped, FormatReason::BadValue});
  const double seconds = reminder.snooze.value * static_cast<double>(kSecondsOfDay);
  constexpr double kLongest = 3615897.0 * static_cast<double>(kSecondsOfDay);
  if (reminder.snooze.status == StatusValid && seconds >= 0 && seconds <= kLongest) {
    parts.snooze = std::llround(seconds);
  } else {
    change("reminder.snooze", FormatReason::BadValue);
  }
  if (reminder.repeatCount >= 0) {
    parts.repeats = reminder.repeatCount;
  } else {
    change("reminder.repeatCount", FormatReason::BadValue);
  }
  ItemText text(reminder.displayText);
  if (text.loss) change("reminder.displayText", *text.loss);
  parts.text = std::move(text.text);
  return parts;
}

icalproperty* Trigger(const icaltimetype& date, const AlarmAnchors& anchors) {
  constexpr std::int64_t kFarthest = 366 * kSecondsOfDay;
  icaltriggertype trigger{};
  const auto& anchor = anchors.start ? anchors.start : anchors.due;
  const std::int64_t seconds = anchor ? SecondsBetween(*anchor, date) : 0;
  if (!anchor || std::abs(seconds) > kFarthest) {
    trigger.time = date;
    icalproperty* const property = Made(icalproperty_new_trigger(trigger));
    icalproperty_set_parameter(property, Made(icalparameter_new_value(ICAL_VALUE_DATETIME)));
    return property;
  }
  // What counts from the item comes with each of its repeats.
  trigger.time = icaltime_null_time();
  trigger.duration = icaldurationtype_from_int(static_cast<int>(seconds));
  icalproperty* const property = Made(icalproperty_new_trigger(trigger));
  if (!anchors.start)
    icalproperty_set_parameter(property, Made(icalparameter_new_related(ICAL_RELATED_END)));
  return property;
}

void AddAlarmPart(const AlarmParts& parts, const AlarmAnchors& anchors, icalcomponent* item) {
  icalcomponent* const alarm = Made(icalcomponent_new(ICAL_VALARM_COMPONENT));
  icalcomponent_add_component(item, alarm);
  const auto add = [alarm](icalproperty* property) {
    icalcomponent_add_property(alarm, Made(property));
  };
  // Only what is shown has a text.
  add(icalproperty_new_action(parts.text.empty() ? ICAL_ACTION_AUDIO : ICAL_ACTION_DISPLAY));
  add(Trigger(*parts.date, anchors));
  if (!parts.text.empty()) add(icalproperty_new_description(parts.text.c_str()));
  if (!parts.isRepeated()) return;
  add(icalproperty_new_duration(icaldurationtype_from_int(static_cast<int>(parts.snooze))));
  add(icalproperty_new_repeat(parts.repeats));
}

// As vCalendar 1.0 has it, empty fields at its end too.
std::string AlarmValue(const AlarmParts& parts) {
  std::string value;
  if (parts.date) value.append(UtcText(DateTimeOf(*parts.date)));
  value.append(1, ';');
  if (parts.snooze > 0) value.append(SpanText(parts.snooze));
  value.append(1, ';');
  if (parts.repeats > 0) value.append(std::to_string(parts.repeats));
  return value.append(1, ';').append(parts.text);
}

// The words of the codes, as parameters; what has no word is told.
std::string FormatWords(const CReminder& reminder, const TellFormatLoss& tell) {
  std::string words;
  std::uint32_t types = reminder.reminderType;
  for (const Word& word : kAlarmFormats) {
    const bool isType = word.code != REMINDER_CONTENT_ID;
    if (isType ? (types & word.code) == 0 : reminder.valueType != word.code) continue;
    if (isType) types &= ~word.code;
    words.append(words.empty() ? "" : ";").append(word.text);
  }
  const auto ignored = [&tell](const char* field) {
    tell({field, FormatVerdict::Changed, FormatReason::TypeIgnored});
  };
  if (types != 0) ignored("reminder.reminderType");
  if (reminder.valueType > REMINDER_CONTENT_ID) ignored("reminder.valueType");
  if (reminder.alarmType != DESKMATE_IDS::ALARM_AUDIO) ignored("reminder.alarmType");
  return words;
}

bool IsEmpty(const CReminder& reminder) {
  return reminder.reminderType == 0 && reminder.valueType == REMINDER_INLINE &&
         reminder.alarmType == DESKMATE_IDS::ALARM_NONE &&
         reminder.alarm_date.status == StatusNull && reminder.snooze.status == StatusValid &&
         reminder.snooze.value == 0 && reminder.repeatCount == 0 && reminder.displayText.empty();
}

}  // namespace

std::string SpanText(std::int64_t seconds) {
  struct Unit {
    std::int64_t seconds;
    char letter;
  };
  constexpr Unit kUnits[] = {{3'600, 'H'}, {60, 'M'}, {1, 'S'}};
  std::string text = "P";
  if (seconds >= kSecondsOfDay) text.append(std::to_string(seconds / kSecondsOfDay)).append(1, 'D');
  seconds %= kSecondsOfDay;
  if (seconds == 0) return text.size() > 1 ? text : "PT0S";
  text.append(1, 'T');
  for (const Unit& unit : kUnits) {
    if (seconds >= unit.seconds)
      text.append(std::to_string(seconds / unit.seconds)).append(1, unit.letter);
    seconds %= unit.seconds;
  }
  return text;
}

void AddOwn(icalcomponent* item, const char* name, const std::string& text) {
  icalproperty* const property = Made(icalproperty_new_x(text.c_str()));
  icalcomponent_add_property(item, property);
  icalproperty_set_x_name(property, name);
}

void AddAlarm(const CReminder& reminder, const AlarmAnchors& anchors, icalcomponent* item,
              const TellFormatLoss& tell) {
  if (IsEmpty(reminder)) return;
  const AlarmParts parts = PartsOf(reminder, tell);
  const bool mayHave = icalcomponent_isa(item) != ICAL_VJOURNAL_COMPONENT;
  constexpr std::int64_t kLongestRepeat = std::numeric_limits<int>::max();
  const bool isWhole =
      parts.isRepeated() ? parts.snooze <= kLongestRepeat : parts.repeats == 0 && parts.snooze == 0;
  const std::string format = FormatWords(reminder, tell);
  if (!mayHave || !parts.date || !isWhole) AddOwn(item, kOwnAlarm, AlarmValue(parts));
  if (!format.empty()) AddOwn(item, kOwnAlarmFormat, format);
  if (mayHave && parts.date) AddAlarmPart(parts, anchors, item);
}

}  // namespace pim
