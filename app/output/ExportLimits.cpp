// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/output/ExportLimits.h"

#include <algorithm>

namespace pim::app {
namespace {

constexpr TextForm kCard = TextForm::VCard;
constexpr TextForm kItem = TextForm::VCalendar;

constexpr ExportLimit kLimits[] = {
    {"", "a text ends at a NUL character", kCard, LimitSign::Nul},
    {"name.given_name",
     "a formatted name without a family or given name comes back as the given name too", kCard,
     LimitSign::WasEmpty},
    {"telephones.number", "line breaks in a number become blanks", kCard, LimitSign::Break},
    {"telephones.number", "written to the letter, a number ends at its first line break", kCard,
     LimitSign::CutAtBreak},
    {"telephones.number", "blanks at the head of a number are dropped", kCard, LimitSign::Blanks},
    {"telephones.number",
     "a number is written in the default code page, which lacks one of its characters", kCard,
     LimitSign::Question},
    {"",
     "written to the letter, blanks at the head of a text or behind a soft line break are dropped",
     kCard, LimitSign::Blanks},
    {"events", "an event without a date isn't written", kCard, LimitSign::Gone},
    {"events.event_date", "a date that doesn't exist isn't written", kCard, LimitSign::Any},
    {"events.event_type",
     "an event other than birthday and anniversary comes back as another event day", kCard,
     LimitSign::Any},
    {"", "an entry with nothing in it, or blanks alone, isn't there any more", kCard,
     LimitSign::Gone},
    {"photo",
     "a picture comes back under a new name, and without an extension that isn't a known one",
     kCard, LimitSign::Any},

    {"", "a text ends at a NUL character", kItem, LimitSign::Nul},
    {"created_time", "the stamp of creation is written as DCREATED and read as DTCREATE", kItem,
     LimitSign::Null},
    {"categories", "one category is written, and of a memo MEMO", kItem, LimitSign::Gone},
    {"zone", "zone and daylight rules aren't written", kItem, LimitSign::Any},
    {"reminder.alarmType", "an alarm without a time isn't written", kItem, LimitSign::Any},
    {"reminder.alarm_date", "a date that doesn't exist isn't written", kItem,
     LimitSign::WasInvalid},
    {"reminder.alarm_date", "the seconds of times aren't written", kItem, LimitSign::Seconds},
    {"reminder", "of an alarm nothing but its time is written", kItem, LimitSign::Any},
    {"recurrence.endDate", "a rule's end that is no date isn't written", kItem, LimitSign::Any},
    {"exceptionRule.endDate", "a rule's end that is no date isn't written", kItem, LimitSign::Any},
    {"exceptionRule", "an exception rule without a repeat rule isn't written", kItem,
     LimitSign::Any},
    {"", "a date that doesn't exist isn't written", kItem, LimitSign::WasInvalid},
    {"", "the seconds of times aren't written", kItem, LimitSign::Seconds},
    {"end_time", "the end of a timed to-do isn't written", kItem, LimitSign::Null},
    {"due", "a due date is written of to-dos alone", kItem, LimitSign::Null},
    {"priority", "a priority is written of to-dos alone", kItem, LimitSign::Any},
    {"status", "a status is written of to-dos alone", kItem, LimitSign::Any},
    {"color", "a colour is written of memos alone", kItem, LimitSign::Any},
    {"allday", "an all-day item needs both of its dates", kItem, LimitSign::Any},
    {"", "an all-day item needs both of its dates", kItem, LimitSign::Invalid},
    {"start_time", "of an all-day item only the days are written", kItem, LimitSign::Any},
    {"end_time", "of an all-day item only the days are written", kItem, LimitSign::Any},
    {"", "a CR LF in a text becomes a line feed", kItem, LimitSign::CrLf},
    {"",
     "written to the letter, blanks at the head of a text or behind a soft line break are dropped",
     kItem, LimitSign::Blanks},
};

// "telephones[0].number" as "telephones.number".
std::string WithoutNumbers(std::string_view field) {
  std::string name;
  bool inNumber = false;
  for (const char c : field) {
    if (c == '[') inNumber = true;
    if (!inNumber) name += c;
    if (c == ']') inNumber = false;
  }
  return name;
}

bool IsPartOf(std::string_view field, std::string_view whole) {
  return whole.empty() || field == whole ||
         (field.starts_with(whole) && field.size() > whole.size() && field[whole.size()] == '.');
}

bool Holds(std::string_view json, std::string_view part) {
  return json.find(part) != std::string_view::npos;
}

bool HasBreak(std::string_view json) { return Holds(json, "\\n") || Holds(json, "\\r"); }

std::string WithoutBlanks(std::string_view json, bool withoutBreaks = false) {
  std::string text;
  for (std::size_t at = 0; at < json.size(); ++at) {
    const std::string_view two = json.substr(at, 2);
    if (two == "\\t" || (withoutBreaks && (two == "\\n" || two == "\\r"))) {
      ++at;
    } else if (json[at] != ' ') {
      text += json[at];
    }
  }
  return text;
}

std::string WithLineFeeds(std::string_view json) {
  std::string text(json);
  for (std::size_t at = 0; (at = text.find("\\r\\n", at)) != std::string::npos;) text.erase(at, 2);
  return text;
}

// Of date-times: "2010-01-05T12:00:59".
bool DifferInSeconds(std::string_view before, std::string_view after) {
  constexpr std::size_t kSize = 21;
  constexpr std::size_t kSeconds = 18;
  return before.size() == kSize && after.size() == kSize && before[11] == 'T' &&
         before.substr(0, kSeconds) == after.substr(0, kSeconds);
}

bool Fits(LimitSign sign, const Difference& difference) {
  const std::string_view before = difference.before;
  const std::string_view after = difference.after;
  switch (sign) {
    case LimitSign::Any:
      return true;
    case LimitSign::Gone:
      return after.empty();
    case LimitSign::Null:
      return after == "null";
    case LimitSign::WasEmpty:
      return before == "\"\"";
    case LimitSign::Invalid:
      return after == "\"invalid\"";
    case LimitSign::WasInvalid:
      return before == "\"invalid\"";
    case LimitSign::Break:
      return HasBreak(before) && WithoutBlanks(before, true) == WithoutBlanks(after, true);
    case LimitSign::CutAtBreak:
      return HasBreak(before) && after.ends_with('"') &&
             WithoutBlanks(before.substr(0, std::min(before.find("\\n"), before.find("\\r")))) ==
                 WithoutBlanks(after.substr(0, after.size() - 1));
    case LimitSign::CrLf:
      return Holds(before, "\\r\\n") && WithLineFeeds(before) == after;
    case LimitSign::Blanks:
      return before.starts_with('"') && WithoutBlanks(before) == WithoutBlanks(after);
    case LimitSign::Nul:
      return Holds(before, "\\u0000") && after.ends_with('"') &&
             before.substr(0, before.find("\\u0000")) == after.substr(0, after.size() - 1);
    case LimitSign::Question:
      return std::ranges::count(after, '?') > std::ranges::count(before, '?');
    case LimitSign::Seconds:
      return DifferInSeconds(before, after);
  }
  return false;
}

}  // namespace

std::span<const ExportLimit> ExportLimits() { return kLimits; }

std::string_view ReasonOf(TextForm form, const Difference& difference) {
  const std::string field = WithoutNumbers(difference.field);
  const auto* const row = std::ranges::find_if(kLimits, [&](const ExportLimit& limit) {
    return limit.form == form && IsPartOf(field, limit.field) && Fits(limit.sign, difference);
  });
  return row == std::end(kLimits) ? std::string_view() : row->text;
}

}  // namespace pim::app
