// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/icalendar/ZoneBook.h"

#include <algorithm>
#include <iterator>

#include "formats/icalendar/ContentLines.h"
#include "support/Ascii.h"

namespace pim {
namespace {

struct WindowsZone {
  std::string_view name;
  const char* location;
};
constexpr WindowsZone kWindowsZones[] = {
    {"AUS Eastern Standard Time", "Australia/Sydney"},
    {"Arabian Standard Time", "Asia/Dubai"},
    {"Argentina Standard Time", "America/Buenos_Aires"},
    {"Atlantic Standard Time", "America/Halifax"},
    {"Central Europe Standard Time", "Europe/Budapest"},
    {"Central European Standard Time", "Europe/Warsaw"},
    {"Central Standard Time", "America/Chicago"},
    {"China Standard Time", "Asia/Shanghai"},
    {"E. Europe Standard Time", "Europe/Bucharest"},
    {"E. South America Standard Time", "America/Sao_Paulo"},
    {"Eastern Standard Time", "America/New_York"},
    {"Egypt Standard Time", "Africa/Cairo"},
    {"FLE Standard Time", "Europe/Kiev"},
    {"GMT Standard Time", "Europe/London"},
    {"GTB Standard Time", "Europe/Bucharest"},
    {"Greenwich Standard Time", "Atlantic/Reykjavik"},
    {"Hawaiian Standard Time", "Pacific/Honolulu"},
    {"India Standard Time", "Asia/Calcutta"},
    {"Israel Standard Time", "Asia/Jerusalem"},
    {"Korea Standard Time", "Asia/Seoul"},
    {"Mountain Standard Time", "America/Denver"},
    {"New Zealand Standard Time", "Pacific/Auckland"},
    {"Pacific Standard Time", "America/Los_Angeles"},
    {"Romance Standard Time", "Europe/Paris"},
    {"Russian Standard Time", "Europe/Moscow"},
    {"SE Asia Standard Time", "Asia/Bangkok"},
    {"Singapore Standard Time", "Asia/Singapore"},
    {"South Africa Standard Time", "Africa/Johannesburg"},
    {"Taipei Standard Time", "Asia/Taipei"},
    {"Tokyo Standard Time", "Asia/Tokyo"},
    {"Turkey Standard Time", "Europe/Istanbul"},
    {"US Mountain Standard Time", "America/Phoenix"},
    {"W. Europe Standard Time", "Europe/Berlin"},
};

template <std::size_t Size>
std::size_t CountOf(const short (&list)[Size]) {
  return static_cast<std::size_t>(
      std::find(std::begin(list), std::end(list), ICAL_RECURRENCE_ARRAY_MAX) - std::begin(list));
}

// Whether a rule has one change a year, by a day of a month or one of its weekdays; any other one
// would give more changes than anybody has time for.
bool IsZoneRule(const std::string& text) {
  constexpr std::size_t kDaysOfAWeek = 7;
  const icalrecurrencetype rule = icalrecurrencetype_from_string(text.c_str());
  return rule.freq == ICAL_YEARLY_RECURRENCE && CountOf(rule.by_month) <= 1 &&
         CountOf(rule.by_day) <= CountOf(rule.by_month) &&
         CountOf(rule.by_month_day) <= kDaysOfAWeek && CountOf(rule.by_year_day) == 0 &&
         CountOf(rule.by_week_no) == 0 && CountOf(rule.by_hour) == 0 &&
         CountOf(rule.by_minute) == 0 && CountOf(rule.by_second) == 0;
}

bool IsZoneLine(const ContentLine& line) {
  constexpr std::string_view kNames[] = {"BEGIN", "END",    "DTSTART",      "TZID",
                                         "RDATE", "TZNAME", "TZOFFSETFROM", "TZOFFSETTO"};
  return std::ranges::any_of(
      kNames, [&line](std::string_view name) { return EqualsIgnoringCase(name, line.Name()); });
}

// A part says when it begins and by how much the clock is off then.
bool IsObservance(icalcomponent* part) {
  for (const icalproperty_kind kind :
       {ICAL_DTSTART_PROPERTY, ICAL_TZOFFSETFROM_PROPERTY, ICAL_TZOFFSETTO_PROPERTY}) {
    if (icalcomponent_get_first_property(part, kind) == nullptr) return false;
  }
  return DateTimeOf(icalcomponent_get_dtstart(part)).status == StatusValid;
}

bool HasObservances(icalcomponent* zone) {
  int count = 0;
  for (icalcomponent* part = icalcomponent_get_first_component(zone, ICAL_ANY_COMPONENT);
       part != nullptr; part = icalcomponent_get_next_component(zone, ICAL_ANY_COMPONENT)) {
    if (!IsObservance(part)) return false;
    ++count;
  }
  return count > 0;
}

// The system's zone of that name, which libical takes for a file below the folder of zones: a name
// that could lead out of it, or to no file of that kind, is none.
icaltimezone* SystemZone(const std::string& name) {
  constexpr std::size_t kLongest = 64;
  const bool isGood =
      !name.empty() && name.size() <= kLongest && IsLetter(name[0]) &&
      std::ranges::all_of(name, [](char c) {
        return IsLetter(c) || IsDigit(c) || c == '/' || c == '_' || c == '-' || c == '+';
      });
  return isGood ? icaltimezone_get_builtin_timezone(name.c_str()) : nullptr;
}

// "Europe/Berlin" of "/example.org/Europe/Berlin".
icaltimezone* FindBehindMark(const std::string& name) {
  std::size_t parts = 0;
  for (std::size_t at = name.size(); at-- > 0;) {
    if (name[at] != '/') continue;
    icaltimezone* const zone = SystemZone(name.substr(at + 1));
    if (zone != nullptr) return zone;
    constexpr std::size_t kMostParts = 3;
    if (++parts == kMostParts) break;
  }
  return nullptr;
}

}  // namespace

void ZoneBook::Take(std::string_view component) {
  // Zones have a few dozens of lines; libical's work on one grows faster than their number.
  constexpr std::size_t kMostZones = 1'000;
  constexpr std::size_t kMostLines = 2'000;
  constexpr std::size_t kLongestLine = 10'000;
  constexpr std::size_t kMostRules = 40;
  std::size_t rules = 0;
  std::string text;
  const std::vector<ContentLine> lines = ContentLinesOf(component);
  const bool isZone = !lines.empty() && EqualsIgnoringCase(lines[0].Name(), "BEGIN") &&
                      EqualsIgnoringCase(Trim(lines[0].Value()), "VTIMEZONE");
  if (!isZone || lines.size() > kMostLines) return;
  for (const ContentLine& line : lines) {
    if (line.depth > 2 || line.text.size() > kLongestLine) return;
    const bool isRule = EqualsIgnoringCase(line.Name(), "RRULE");
    if (isRule && (++rules > kMostRules || !IsZoneRule(std::string(line.Value())))) return;
    if (isRule || IsZoneLine(line)) text.append(line.text).append("\r\n");
  }
  IcalOwner<icalcomponent> parsed(icalcomponent_new_from_string(text.c_str()));
  if (parsed == nullptr || icalcomponent_isa(parsed.get()) != ICAL_VTIMEZONE_COMPONENT ||
      !HasObservances(parsed.get()))
    return;
  IcalOwner<icaltimezone> zone(Made(icaltimezone_new()));
  if (icaltimezone_set_component(zone.get(), parsed.get()) == 0) return;
  parsed.release();  // NOLINT(bugprone-unused-return-value): the zone owns it
  const char* const name = icaltimezone_get_tzid(zone.get());
  // What stands in use stays where it is.
  if (name == nullptr || zones_.size() >= kMostZones) return;
  IcalOwner<icaltimezone>& place = zones_[name];
  if (place == nullptr || place.get() != floating_) place = std::move(zone);
}

icaltimezone* ZoneBook::Find(const std::string& name) const {
  const auto own = zones_.find(name);
  if (own != zones_.end()) return own->second.get();
  if (name == "UTC") return icaltimezone_get_utc_timezone();
  icaltimezone* zone = SystemZone(name);
  if (zone == nullptr) zone = FindBehindMark(name);
  if (zone != nullptr) return zone;
  const auto* const windows = std::ranges::find(kWindowsZones, name, &WindowsZone::name);
  if (windows == std::end(kWindowsZones)) return nullptr;
  return icaltimezone_get_builtin_timezone(windows->location);
}

icaltimezone* ZoneBook::MachineZone() {
  if (!machine_) machine_ = ItemZone::OfMachine();
  return machine_ ? const_cast<icaltimezone*>(machine_->zone()) : icaltimezone_get_utc_timezone();
}

}  // namespace pim
