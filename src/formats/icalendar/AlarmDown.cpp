// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/icalendar/AlarmDown.h"

#include <algorithm>
#include <array>
#include <string>

#include "formats/icalendar/AlarmWords.h"
#include "formats/icalendar/ItemAlarm.h"
#include "support/Ascii.h"
#include "support/DateTimeZones.h"
#include "support/Numbers.h"

namespace pim {
namespace {

// The parts of an alarm that AALARM has.
enum AlarmPart : std::uint8_t {
  ALARM_ACTION,
  ALARM_TRIGGER,
  ALARM_SNOOZE,
  ALARM_REPEAT,
  ALARM_TEXT,
  ALARM_PARTS
};
constexpr std::array<std::string_view, ALARM_PARTS> kAlarmParts = {"ACTION", "TRIGGER", "DURATION",
                                                                   "REPEAT", "DESCRIPTION"};

struct AlarmProperties {
  std::array<const ContentLine*, ALARM_PARTS> parts{};
  std::vector<const ContentLine*> others;
};

AlarmProperties PropertiesOf(const AlarmLines& lines) {
  AlarmProperties properties;
  for (const ContentLine* line : lines) {
    const std::string_view name = line->Name();
    if (name == "BEGIN" || name == "END") continue;
    const auto* const known = std::ranges::find_if(
        kAlarmParts, [name](std::string_view word) { return EqualsIgnoringCase(word, name); });
    const auto part = static_cast<std::size_t>(known - kAlarmParts.begin());
    if (part < ALARM_PARTS && properties.parts[part] == nullptr) {
      properties.parts[part] = line;
    } else {
      properties.others.push_back(line);
    }
  }
  return properties;
}

bool IsShown(const AlarmProperties& alarm) {
  const ContentLine* const action = alarm.parts[ALARM_ACTION];
  return action != nullptr && (EqualsIgnoringCase(Trim(action->Value()), "AUDIO") ||
                               EqualsIgnoringCase(Trim(action->Value()), "DISPLAY"));
}

struct AlarmMoment {
  COleDateTime utc;
  std::string text;  // as vCalendar 1.0 has it
};

// When the alarm runs, by a time or by what lies between it and the item's start or end.
std::optional<AlarmMoment> MomentOf(const ContentLine& trigger, const AlarmSources& sources,
                                    const DownTimes& times) {
  const auto length = LengthOf(trigger);
  if (!length) {
    const auto time = times.TimeOf(trigger);
    if (!time) return std::nullopt;
    return AlarmMoment{time->utc, times.TextOf(*time)};
  }
  const auto& anchor = CountsFromEnd(trigger) && sources.end ? sources.end : sources.start;
  if (!anchor) return std::nullopt;
  const auto moment = DownTimes::Behind({*IcalUtc(anchor->utc), anchor->utc}, *length);
  if (!moment) return std::nullopt;
  // Local like what it stands by.
  const auto local = anchor->isFloating() ? UtcToLocal(moment->utc).GetFields() : std::nullopt;
  const ItemTime time = {local ? IcalTime(*local, false) : moment->local, moment->utc};
  return AlarmMoment{time.utc, times.TextOf(time)};
}

// The parameters that this program wrote, if they are such.
std::string ParametersOf(const ContentLine* format) {
  std::string parameters;
  if (format == nullptr) return parameters;
  const std::string_view words = format->Value();
  for (const Word& word : kAlarmFormats) {
    if (words.find(word.text) != std::string_view::npos)
      parameters.append(1, ';').append(word.text);
  }
  return parameters;
}

// The four parts of an own value.
std::array<std::string, 4> PartsOfOwn(const ContentLine& own) {
  std::array<std::string, 4> parts;
  const std::string value = TextOfLine(own);
  std::string_view rest = value;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const std::string_view part = i + 1 == parts.size() ? rest : rest.substr(0, rest.find(';'));
    parts[i] = part;
    rest.remove_prefix(std::min(part.size() + 1, rest.size()));
  }
  return parts;
}

class AlarmDown {
 public:
  AlarmDown(const AlarmSources& sources, const DownTimes& times, const TellFormatLoss& tell,
            DownLines& out)
      : sources_(sources), times_(times), tell_(tell), out_(out) {}

  void Append() {
    bool isDone = false;
    for (const AlarmLines& lines : sources_.alarms) {
      const AlarmProperties alarm = PropertiesOf(lines);
      if (isDone || !IsShown(alarm)) {
        tell_({"VALARM", FormatVerdict::Dropped,
               isDone ? FormatReason::Replaced : FormatReason::TypeIgnored, lines.front()->line});
        continue;
      }
      isDone = AppendOne(alarm, lines.front()->line);
    }
    if (!isDone && sources_.own != nullptr) AppendOwn({});
  }

 private:
  // False, which is told, for one without a time.
  bool AppendOne(const AlarmProperties& alarm, std::size_t line) {
    const ContentLine* const trigger = alarm.parts[ALARM_TRIGGER];
    const auto moment = trigger == nullptr ? std::nullopt : MomentOf(*trigger, sources_, times_);
    if (!moment) {
      tell_({"VALARM", FormatVerdict::Dropped, FormatReason::BadValue, line});
      return false;
    }
    for (const ContentLine* other : alarm.others) {
      tell_({std::string(other->Name()), FormatVerdict::Dropped, FormatReason::NoProperty,
             other->line});
    }
    if (moment->utc.GetSecond() != 0)
      tell_({"TRIGGER", FormatVerdict::Changed, FormatReason::SecondsDropped, trigger->line});
    if (sources_.own != nullptr && AppendOwn(UtcText(moment->utc))) return true;
    const std::string head = moment->text + ";" + SnoozeOf(alarm.parts[ALARM_SNOOZE]) + ";" +
                             RepeatsOf(alarm.parts[ALARM_REPEAT]) + ";";
    const ContentLine* const text = alarm.parts[ALARM_TEXT];
    const std::string shown = text == nullptr ? std::string() : TextOfLine(*text);
    const bool isWhole = out_.AppendWithText("AALARM", ParametersOf(sources_.format), head, shown);
    if (!isWhole && text != nullptr)
      tell_({"DESCRIPTION", FormatVerdict::Changed, FormatReason::BadCharacter, text->line});
    return true;
  }

  // The own value where its time is that of the alarm, or where there is no other one.
  bool AppendOwn(const std::string& moment) {
    const auto parts = PartsOfOwn(*sources_.own);
    if (!moment.empty() && parts[0] != moment) return false;
    const std::string head = parts[0] + ";" + parts[1] + ";" + parts[2] + ";";
    const bool isGood =
        std::ranges::all_of(head, [](char c) { return IsDigit(c) || IsLetter(c) || c == ';'; });
    if (moment.empty() && !parts[0].empty() && !parts[0].ends_with("00Z")) {
      tell_({std::string(sources_.own->Name()), FormatVerdict::Changed,
             FormatReason::SecondsDropped, sources_.own->line});
    }
    if (!isGood || !out_.AppendWithText("AALARM", ParametersOf(sources_.format), head, parts[3])) {
      tell_({std::string(sources_.own->Name()), FormatVerdict::Changed, FormatReason::BadValue,
             sources_.own->line});
    }
    return isGood;
  }

  std::string SnoozeOf(const ContentLine* line) {
    if (line == nullptr) return {};
    const auto length = LengthOf(*line);
    const std::int64_t seconds = length ? SecondsOf(*length) : -1;
    if (seconds >= 0) return SpanText(seconds);
    tell_({"DURATION", FormatVerdict::Dropped, FormatReason::BadValue, line->line});
    return {};
  }

  std::string RepeatsOf(const ContentLine* line) {
    if (line == nullptr) return {};
    const std::string_view value = line->Value();
    if (IsNumber(value) && ParseNumber(value) >= 0) return std::to_string(ParseNumber(value));
    tell_({"REPEAT", FormatVerdict::Dropped, FormatReason::BadValue, line->line});
    return {};
  }

  const AlarmSources& sources_;
  const DownTimes& times_;
  const TellFormatLoss& tell_;
  DownLines& out_;
};

}  // namespace

void AppendAlarm(const AlarmSources& sources, const DownTimes& times, const TellFormatLoss& tell,
                 DownLines& out) {
  AlarmDown(sources, times, tell, out).Append();
}

}  // namespace pim
