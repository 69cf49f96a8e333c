// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/icalendar/ItemDown.h"

#include <algorithm>
#include <utility>

#include "formats/icalendar/DownLines.h"
#include "formats/icalendar/DownTimes.h"
#include "formats/icalendar/ItemLines.h"
#include "formats/icalendar/ItemRules.h"
#include "formats/icalendar/ItemZone.h"
#include "formats/icalendar/OwnWords.h"
#include "formats/icalendar/StatusWords.h"
#include "pim/manager/TypeWords.h"
#include "records/CategoryWords.h"
#include "support/DateTimeText.h"
#include "support/DateTimeZones.h"
#include "support/Numbers.h"

namespace pim {
namespace {

struct ItemKind {
  std::string_view name;
  std::string_view inVCalendar;
  icalcomponent_kind kind;
};
constexpr ItemKind kItemKinds[] = {
    {"VEVENT", "VEVENT", ICAL_VEVENT_COMPONENT},
    {"VTODO", "VTODO", ICAL_VTODO_COMPONENT},
    {"VJOURNAL", "VMEMO", ICAL_VJOURNAL_COMPONENT},
};

// Words of STATUS that records have no code for, and the nearest that they have.
struct NearStatus {
  icalproperty_status word;
  std::int32_t status;
};
constexpr NearStatus kNearStatus[] = {
    {ICAL_STATUS_INPROCESS, STATUS_NEEDS_ACTION},
    {ICAL_STATUS_CANCELLED, STATUS_DECLINED},
};

std::string DayText(const icaltimetype& day) {
  return std::string(DateTimeText(DateTimeOf(day)).AddDate().view());
}

class ItemDown {
 public:
  ItemDown(const ItemKind& kind, const std::vector<ContentLine>& lines, ZoneBook& zones,
           const TellFormatLoss& tell, std::string& out)
      : kind_(kind),
        lines_(lines, tell),
        zones_(zones),
        times_(zones, tell),
        tell_(tell),
        out_(out) {}

  void Append() {
    KeepRuleDays();
    out_.AppendWord("BEGIN", kind_.inVCalendar);
    AppendText("SUMMARY", ITEM_SUMMARY);
    AppendDescription();
    AppendText("LOCATION", ITEM_LOCATION);
    if (Has(ITEM_OWN_LOCATION) && !Has(ITEM_LOCATION)) AppendText("LOCATION", ITEM_OWN_LOCATION);
    AppendTime("DTCREATE", ITEM_CREATED);
    AppendTime("LAST-MODIFIED", ITEM_MODIFIED);
    AppendTime("X-MODIFIED", ITEM_OWN_MODIFIED);
    AppendSpan();
    AppendTime("COMPLETED", ITEM_COMPLETED);
    if (!Has(ITEM_COMPLETED)) AppendTime("COMPLETED", ITEM_OWN_COMPLETED);
    AppendAlarms();
    AppendRules(lines_, times_, start_, tell_, out_);
    AppendCategories();
    AppendClass();
    AppendHoliday();
    AppendColor();
    AppendPriority();
    AppendStatus();
    AppendZone();
    out_.AppendWord("END", kind_.inVCalendar);
  }

 private:
  bool Has(ItemProperty property) const { return lines_.single[property] != nullptr; }
  const ContentLine* LineOf(ItemProperty property) const { return lines_.single[property]; }
  void Tell(const ContentLine& line, FormatVerdict verdict, FormatReason reason) {
    tell_({std::string(line.Name()), verdict, reason, line.line});
  }
  void Drop(const ContentLine& line, FormatReason reason) {
    Tell(line, FormatVerdict::Dropped, reason);
  }
  std::optional<ItemTime> TimeOf(ItemProperty property) {
    if (!Has(property)) return std::nullopt;
    const auto time = times_.TimeOf(*LineOf(property));
    if (time && time->utc.GetSecond() != 0)
      Tell(*LineOf(property), FormatVerdict::Changed, FormatReason::SecondsDropped);
    return time;
  }

  void AppendTextOf(std::string_view name, const ContentLine& line, const std::string& text) {
    if (!out_.AppendText(name, text))
      Tell(line, FormatVerdict::Changed, FormatReason::BadCharacter);
    // A language, or where the text stands in another form.
    if (line.text[line.text.find_first_of(":;")] == ';')
      Tell(line, FormatVerdict::Changed, FormatReason::TypeIgnored);
  }
  void AppendText(std::string_view name, ItemProperty property) {
    if (Has(property)) AppendTextOf(name, *LineOf(property), TextOfLine(*LineOf(property)));
  }
  void AppendTime(std::string_view name, ItemProperty property) {
    if (const auto time = TimeOf(property)) out_.AppendWord(name, times_.TextOf(*time));
  }

  void KeepRuleDays();
  void AppendDescription();
  void AppendSpan();
  void KeepFromDays(std::optional<ItemTime>& last);
  void AppendDays(const std::optional<ItemTime>& end);
  void AppendAlarms();
  void AppendCategories();
  void AppendClass();
  void AppendHoliday();
  void AppendColor();
  void AppendPriority();
  void AppendStatus();
  void AppendZone();

  const ItemKind& kind_;
  ItemLines lines_;
  ZoneBook& zones_;
  DownTimes times_;
  const TellFormatLoss& tell_;
  DownLines out_;
  std::optional<ItemTime> start_;
  std::optional<ItemTime> end_;  // or when a to-do is due
};

// A rule's days and hours are those of a clock, and records keep moments: where the text tells no
// zone, the machine's has to go with them.
void ItemDown::KeepRuleDays() {
  const ContentLine* const start = LineOf(ITEM_START);
  if (!Has(ITEM_RULE) || start == nullptr || !times_.IsFloating(*start)) return;
  times_.SetFloating(zones_.MachineZone());
  if (ZoneNameOf(*start).empty()) Tell(*start, FormatVerdict::Changed, FormatReason::UnknownZone);
}

void ItemDown::AppendDescription() {
  std::string all;
  for (const ContentLine* line : lines_.descriptions) {
    if (!all.empty()) all.append(1, '\n');
    all.append(TextOfLine(*line));
  }
  if (!all.empty()) AppendTextOf("DESCRIPTION", *lines_.descriptions.front(), all);
}

void ItemDown::AppendSpan() {
  start_ = TimeOf(Has(ITEM_START) ? ITEM_START : ITEM_OWN_START);
  const bool isTodo = kind_.kind == ICAL_VTODO_COMPONENT;
  end_ = TimeOf(isTodo ? ITEM_DUE : ITEM_END);
  if (Has(ITEM_DURATION)) {
    const auto length = LengthOf(*LineOf(ITEM_DURATION));
    if (start_ && length && !end_) {
      end_ = DownTimes::Behind(*start_, *length);
    } else {
      Drop(*LineOf(ITEM_DURATION), end_ ? FormatReason::Replaced : FormatReason::BadValue);
    }
  }
  // What this program's own names say, where the others say nothing.
  auto last = isTodo ? std::nullopt : end_;
  auto due = isTodo ? end_ : std::nullopt;
  if (!last) last = TimeOf(ITEM_OWN_END);
  if (!due) due = TimeOf(ITEM_OWN_DUE);
  if (start_ && start_->isDay()) {
    AppendDays(last);
  } else {
    KeepFromDays(last);
    if (start_) out_.AppendWord("DTSTART", times_.TextOf(*start_));
    if (last) out_.AppendWord("DTEND", times_.TextOf(*last));
  }
  if (due) out_.AppendWord("DUE", times_.TextOf(*due));
}

// A local time of the day's first minute would make an all-day item of this one.
void ItemDown::KeepFromDays(std::optional<ItemTime>& last) {
  const auto isDayForm = [](const std::optional<ItemTime>& time) {
    return time && time->isFloating() && time->local.hour == 0 && time->local.minute == 0;
  };
  if (!isDayForm(start_) && !isDayForm(last)) return;
  const bool isEnd = kind_.kind != ICAL_VTODO_COMPONENT;
  for (auto* const time : {&start_, &last, isEnd ? &end_ : &last})
    if (*time) (*time)->local = *IcalUtc((*time)->utc);
  const ItemProperty property = Has(ITEM_START) ? ITEM_START : ITEM_END;
  if (Has(property)) Tell(*LineOf(property), FormatVerdict::Changed, FormatReason::UnknownZone);
}

// Both are local days, and the last one stands with its end.
void ItemDown::AppendDays(const std::optional<ItemTime>& end) {
  icaltimetype last = start_->local;
  if (end && end->isDay()) {
    last = end->local;
    const bool isBehind = end_ && kind_.kind == ICAL_VEVENT_COMPONENT;
    if (isBehind) icaltime_adjust(&last, -1, 0, 0, 0);
    if (isBehind && icaltime_compare(last, start_->local) < 0) last = start_->local;
  } else if (end) {
    if (const auto local = UtcToLocal(end->utc).GetFields()) last = IcalDay(*local);
    const ItemProperty property = Has(ITEM_END) ? ITEM_END : ITEM_OWN_END;
    if (Has(property)) Tell(*LineOf(property), FormatVerdict::Changed, FormatReason::TimeDropped);
  }
  out_.AppendWord("DTSTART", DayText(start_->local) + "T000000");
  out_.AppendWord("DTEND", DayText(last) + "T240000");
}

void ItemDown::AppendAlarms() {
  AlarmSources sources;
  sources.alarms = lines_.alarms;
  sources.own = LineOf(ITEM_OWN_ALARM);
  sources.format = LineOf(ITEM_OWN_ALARM_FORMAT);
  sources.start = start_;
  sources.end = end_;
  AppendAlarm(sources, times_, tell_, out_);
}

// The words of records in the order in which a reading keeps them; a word behind a later one
// begins a line of its own.
void ItemDown::AppendCategories() {
  constexpr std::uint32_t kKept = CATEGORY_APPOINTMENT | CATEGORY_ANNIVERSARY | CATEGORY_BIRTHDAY;
  std::string words;
  std::uint32_t last = 0;
  for (const ContentLine* line : lines_.categories) {
    bool isWhole = true;
    for (std::string& word : TextsOf(*line)) {
      std::ranges::transform(word, word.begin(), ToUpper);
      const std::uint32_t bit = CategoryBitOf(NarrowStringView(Trim(word)));
      // It would make a memo of another item.
      if (bit == 0 || (bit == CATEGORY_MEMO && kind_.kind != ICAL_VJOURNAL_COMPONENT)) {
        isWhole = false;
        continue;
      }
      if ((bit & kKept) != 0 && bit <= last) {
        out_.AppendWord("CATEGORIES", std::exchange(words, {}));
        last = 0;
      }
      if ((bit & kKept) != 0) last = bit;
      words.append(words.empty() ? "" : ";").append(Trim(word));
    }
    if (!isWhole) Tell(*line, FormatVerdict::Changed, FormatReason::OtherParts);
  }
  if (!words.empty()) out_.AppendWord("CATEGORIES", words);
}

void ItemDown::AppendClass() {
  if (!Has(ITEM_CLASS)) return;
  const std::string_view said = Trim(LineOf(ITEM_CLASS)->Value());
  for (std::int32_t code = CLASS_PUBLIC; code <= CLASS_CONFIDENTIAL; ++code) {
    if (EqualsIgnoringCase(ClassWord(code), said)) {
      out_.AppendWord("CLASS", ClassWord(code));
      return;
    }
  }
  // RFC 5545, 3.8.1.3: a word that isn't known means that.
  out_.AppendWord("CLASS", ClassWord(CLASS_PRIVATE));
  Tell(*LineOf(ITEM_CLASS), FormatVerdict::Changed, FormatReason::BadValue);
}

void ItemDown::AppendHoliday() {
  if (!Has(ITEM_HOLIDAY)) return;
  const std::string_view said = Trim(LineOf(ITEM_HOLIDAY)->Value());
  if (EqualsIgnoringCase(said, "YES") || EqualsIgnoringCase(said, "NO")) {
    out_.AppendWord("X-HOLIDAY", said);
  } else {
    Drop(*LineOf(ITEM_HOLIDAY), FormatReason::BadValue);
  }
}

void ItemDown::AppendColor() {
  AppendText("X-COLOR", Has(ITEM_COLOR) ? ITEM_COLOR : ITEM_OWN_COLOR);
  if (Has(ITEM_COLOR) && Has(ITEM_OWN_COLOR)) Drop(*LineOf(ITEM_OWN_COLOR), FormatReason::Replaced);
}

void ItemDown::AppendPriority() {
  const ItemProperty property = Has(ITEM_PRIORITY) ? ITEM_PRIORITY : ITEM_OWN_PRIORITY;
  if (!Has(property)) return;
  const std::string_view said = LineOf(property)->Value();
  if (IsNumber(said)) {
    out_.AppendWord("PRIORITY", std::to_string(ParseNumber(said)));
  } else {
    Drop(*LineOf(property), FormatReason::BadValue);
  }
}

void ItemDown::AppendStatus() {
  const ItemProperty property = Has(ITEM_STATUS) ? ITEM_STATUS : ITEM_OWN_STATUS;
  if (!Has(property)) return;
  const ContentLine& line = *LineOf(property);
  const std::string said(Trim(line.Value()));
  const icalproperty_status word = icalproperty_string_to_status(said.c_str());
  for (const StatusRow& row : kStatusRows) {
    if (row.word == word) return out_.AppendWord("STATUS", StatusWord(row.status));
  }
  for (const NearStatus& near : kNearStatus) {
    if (near.word != word) continue;
    Tell(line, FormatVerdict::Changed, FormatReason::BadValue);
    return out_.AppendWord("STATUS", StatusWord(near.status));
  }
  for (std::int32_t status = STATUS_ACCEPTED; status <= STATUS_DELEGATED; ++status) {
    if (EqualsIgnoringCase(StatusWord(status), said))
      return out_.AppendWord("STATUS", StatusWord(status));
  }
  Drop(line, FormatReason::BadValue);
}

// Records keep the moments alone; the days of a rule are those of the zone.
void ItemDown::AppendZone() {
  if (Has(ITEM_OWN_OFFSET) || Has(ITEM_OWN_DAYLIGHT)) {
    const bool isMachines =
        Has(ITEM_OWN_OFFSET) && Trim(LineOf(ITEM_OWN_OFFSET)->Value()) == kOwnOffsetOfMachine;
    if (!isMachines) AppendText("TZ", ITEM_OWN_OFFSET);
    AppendText("DAYLIGHT", ITEM_OWN_DAYLIGHT);
    return;
  }
  if (!start_ || start_->local.zone == nullptr || icaltime_is_utc(start_->local) != 0) return;
  const CCalendarZone zone =
      ZoneAround(const_cast<icaltimezone*>(start_->local.zone), *IcalUtc(start_->utc));
  const std::string offset = OffsetValueOf(zone);
  const std::string daylight = DaylightValueOf(zone);
  if (!HasZoneValues(zone)) return;
  if (!offset.empty()) out_.AppendWord("TZ", offset);
  if (!daylight.empty()) out_.AppendWord("DAYLIGHT", daylight);
}

}  // namespace

void ItemToVCalendar(std::string_view component, ZoneBook& zones, const TellFormatLoss& tell,
                     std::string& out) {
  out.clear();
  const std::vector<ContentLine> lines = ContentLinesOf(component);
  if (lines.empty() || !EqualsIgnoringCase(lines[0].Name(), "BEGIN")) return;
  const std::string_view name = Trim(lines[0].Value());
  for (const ItemKind& kind : kItemKinds) {
    if (EqualsIgnoringCase(name, kind.name))
      return ItemDown(kind, lines, zones, tell, out).Append();
  }
  // A zone is in the times of those that name it.
  if (!EqualsIgnoringCase(name, "VTIMEZONE"))
    tell({std::string(name), FormatVerdict::Dropped, FormatReason::NoProperty, lines[0].line});
}

}  // namespace pim
