#include "app/output/ExportLimits.h"

#include <algorithm>

namespace pim::app {
namespace {

constexpr TextForm kCard = TextForm::VCard;
constexpr TextForm kItem = TextForm::VCalendar;

constexpr ExportLimit kLimits[] = {
    {kCard, "", LimitSign::Nul, "a text ends at a NUL character"},
    {kCard, "name.given_name", LimitSign::WasEmpty,
     "a formatted name without a family or given name comes back as the given name too"},
    {kCard, "telephones.number", LimitSign::Break, "line breaks in a number become blanks"},
    {kCard, "telephones.number", LimitSign::Blanks, "blanks at the head of a number are dropped"},
    {kCard, "telephones.number", LimitSign::Question,
     "a number is written in the default code page, which lacks one of its characters"},
    {kCard, "", LimitSign::Blanks,
     "written to the letter, blanks at the head of a text or behind a soft line break are dropped"},
    {kCard, "events", LimitSign::Gone, "an event without a date isn't written"},
    {kCard, "events.event_date", LimitSign::Any, "a date that doesn't exist isn't written"},
    {kCard, "events.event_type", LimitSign::Any,
     "an event other than birthday and anniversary comes back as another event day"},
    {kCard, "", LimitSign::Gone, "an entry with nothing in it isn't written"},
    {kCard, "photo", LimitSign::Any,
     "a picture comes back under a new name, and without an extension that isn't a known one"},

    {kItem, "", LimitSign::Nul, "a text ends at a NUL character"},
    {kItem, "created_time", LimitSign::Null,
     "the stamp of creation is written as DCREATED and read as DTCREATE"},
    {kItem, "categories", LimitSign::Gone, "one category is written, and of a memo MEMO"},
    {kItem, "zone", LimitSign::Any, "zone and daylight rules aren't written"},
    {kItem, "reminder.alarmType", LimitSign::Any, "an alarm without a time isn't written"},
    {kItem, "reminder.alarm_date", LimitSign::WasInvalid,
     "a date that doesn't exist isn't written"},
    {kItem, "reminder.alarm_date", LimitSign::Seconds, "the seconds of times aren't written"},
    {kItem, "reminder", LimitSign::Any, "of an alarm nothing but its time is written"},
    {kItem, "recurrence.endDate", LimitSign::Any, "a rule's end that is no date isn't written"},
    {kItem, "exceptionRule.endDate", LimitSign::Any, "a rule's end that is no date isn't written"},
    {kItem, "exceptionRule", LimitSign::Any,
     "an exception rule without a repeat rule isn't written"},
    {kItem, "", LimitSign::WasInvalid, "a date that doesn't exist isn't written"},
    {kItem, "", LimitSign::Seconds, "the seconds of times aren't written"},
    {kItem, "end_time", LimitSign::Null, "the end of a timed to-do isn't written"},
    {kItem, "due", LimitSign::Null, "a due date is written of to-dos alone"},
    {kItem, "priority", LimitSign::Any, "a priority is written of to-dos alone"},
    {kItem, "status", LimitSign::Any, "a status is written of to-dos alone"},
    {kItem, "color", LimitSign::Any, "a colour is written of memos alone"},
    {kItem, "allday", LimitSign::Any, "an all-day item needs both of its dates"},
    {kItem, "", LimitSign::Invalid, "an all-day item needs both of its dates"},
    {kItem, "start_time", LimitSign::Any, "of an all-day item only the days are written"},
    {kItem, "end_time", LimitSign::Any, "of an all-day item only the days are written"},
    {kItem, "", LimitSign::Break, "a CR LF in a text becomes a line feed"},
    {kItem, "", LimitSign::Blanks,
     "written to the letter, blanks at the head of a text or behind a soft line break are dropped"},
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

std::string WithoutBlanks(std::string_view json) {
  std::string text;
  for (std::size_t at = 0; at < json.size(); ++at) {
    if (json.substr(at, 2) == "\\t") {
      ++at;
    } else if (json[at] != ' ') {
      text += json[at];
    }
  }
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
      return Holds(before, "\\n") || Holds(before, "\\r");
    case LimitSign::Blanks:
      return before.starts_with('"') && WithoutBlanks(before) == WithoutBlanks(after);
    case LimitSign::Nul:
      return Holds(before, "\\u0000");
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
