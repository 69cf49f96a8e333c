// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/prepare/TextZone.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>

namespace pim {
namespace {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::year_month_day;
using LocalTime = std::chrono::local_time<minutes>;

// Where in a value the time stands.
enum class TimePlace : std::uint8_t { Whole, FirstField, LastWord };

constexpr struct {
  std::string_view name;
  TimePlace place;
} kTimes[] = {
    {"DTSTART", TimePlace::Whole},       {"DTEND", TimePlace::Whole},
    {"DUE", TimePlace::Whole},           {"COMPLETED", TimePlace::Whole},
    {"DTCREATE", TimePlace::Whole},      {"DCREATED", TimePlace::Whole},
    {"LAST-MODIFIED", TimePlace::Whole}, {"X-MODIFIED", TimePlace::Whole},
    {"AALARM", TimePlace::FirstField},   {"DALARM", TimePlace::FirstField},
    {"RRULE", TimePlace::LastWord},      {"XRULE", TimePlace::LastWord},
};

const auto* TimeRowOf(std::string_view name) {
  const auto* const row = std::ranges::find_if(
      kTimes, [name](const auto& one) { return EqualsIgnoringCase(one.name, name); });
  return row == std::end(kTimes) ? nullptr : row;
}

std::optional<int> Digits(std::string_view text) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool isAll = error == std::errc() && end == text.data() + text.size();
  return isAll && IsDigit(text.front()) ? std::optional(number) : std::nullopt;
}

// Of YYYYMMDDTHHMMSS with hours to 24; the seconds come along.
struct Clock {
  LocalTime time;
  int seconds;
};
std::optional<Clock> ClockOf(std::string_view text) {
  constexpr std::size_t kSize = 15;
  if (text.size() != kSize || text[8] != 'T') return std::nullopt;
  const auto date = Digits(text.substr(0, 8));
  const auto time = Digits(text.substr(9));
  if (!date || !time) return std::nullopt;
  const year_month_day day{std::chrono::year(*date / 10000),
                           std::chrono::month(static_cast<unsigned>(*date / 100 % 100)),
                           std::chrono::day(static_cast<unsigned>(*date % 100))};
  const int hour = *time / 10000;
  const int minute = *time / 100 % 100;
  if (!day.ok() || *date < 1000000 || hour > 23 || minute > 59) return std::nullopt;
  return Clock{std::chrono::local_days(day) + hours(hour) + minutes(minute), *time % 100};
}

// Whether a date, alone or with T000000 or T240000, as both ends of an all-day item are.
bool IsDay(std::string_view value) {
  if (value.find('Z') != std::string_view::npos) return false;
  const std::size_t mark = value.find('T');
  if (mark == std::string_view::npos) return true;
  const std::string_view time = value.substr(mark + 1, 4);
  return time == "0000" || time == "2400";
}

// "+09", "-05:30", "-0500".
std::optional<minutes> OffsetOf(std::string_view text) {
  text = Trim(text);
  const bool isBehind = text.starts_with('-');
  if (isBehind || text.starts_with('+')) text.remove_prefix(1);
  const std::size_t colon = text.find(':');
  std::string_view hour = text.substr(0, colon);
  std::string_view minute;
  if (colon != std::string_view::npos) {
    minute = text.substr(colon + 1, 2);
  } else if (text.size() > 2) {
    hour = text.substr(0, text.size() - 2);
    minute = text.substr(text.size() - 2);
  }
  if (hour.empty() || hour.size() > 2) return std::nullopt;
  const auto h = Digits(hour);
  const auto m = minute.empty() ? std::optional(0) : Digits(minute);
  if (!h || !m || *h > 23 || *m > 59) return std::nullopt;
  const minutes offset = hours(*h) + minutes(*m);
  return isBehind ? -offset : offset;
}

int YearOf(LocalTime time) {
  return static_cast<int>(year_month_day(std::chrono::floor<days>(time)).year());
}

// Of a time in UTC, whose minutes are told; nothing beyond the years that readers know.
std::optional<std::string> TextOfTime(LocalTime utc, int seconds) {
  const auto day = std::chrono::floor<days>(utc);
  const year_month_day date(day);
  const int year = static_cast<int>(date.year());
  if (year < 100 || year > 9999) return std::nullopt;
  const auto minute = static_cast<int>((utc - day).count());
  char text[32];
  std::snprintf(text, sizeof text, "%04d%02u%02uT%02d%02d%02dZ", year,
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()), minute / 60,
                minute % 60, seconds);
  return text;
}

std::string TextOfOffset(minutes offset) {
  const auto count = static_cast<int>(offset < minutes(0) ? -offset.count() : offset.count());
  char text[16];
  std::snprintf(text, sizeof text, "%c%02d:%02d", offset < minutes(0) ? '-' : '+', count / 60 % 100,
                count % 60);
  return text;
}

// The same weekday of the same month in another year: the last one for one of the last seven days.
LocalTime InYear(LocalTime time, int year) {
  const auto day = std::chrono::floor<days>(time);
  const year_month_day date(day);
  const std::chrono::weekday weekday(day);
  const unsigned position = (static_cast<unsigned>(date.day()) - 1) / 7 + 1;
  const std::chrono::year_month month{std::chrono::year(year), date.month()};
  const bool isLast = year_month_day(day + days(7)).month() != date.month();
  const auto moved = isLast ? std::chrono::local_days(month / weekday[std::chrono::last])
                            : std::chrono::local_days(month / weekday[position]);
  return moved + (time - day);
}

}  // namespace

void TextZone::TakeOffset(std::string_view value) {
  if (const auto offset = OffsetOf(value)) offset_ = offset;
}

// TRUE;-04;20100404T020000;20101031T020000;EST;EDT
void TextZone::TakeDaylight(std::string_view value) {
  std::array<std::string_view, 4> fields;
  for (std::string_view& field : fields) {
    const std::size_t end = std::min(value.find(';'), value.size());
    field = Trim(value.substr(0, end));
    value.remove_prefix(std::min(end + 1, value.size()));
  }
  if (!EqualsIgnoringCase(fields[0], "TRUE")) return;
  const auto offset = OffsetOf(fields[1]);
  const auto timeOf = [this](std::string_view text, minutes ahead) -> std::optional<LocalTime> {
    const bool isUtc = text.ends_with('Z');
    if (isUtc) text.remove_suffix(1);
    const auto clock = ClockOf(text);
    if (!clock || (isUtc && !offset_)) return std::nullopt;
    return isUtc ? clock->time + ahead : clock->time;
  };
  if (!offset) return;
  const auto start = timeOf(fields[2], offset_.value_or(minutes(0)));
  const auto end = timeOf(fields[3], *offset);
  // Each time is held against all of them.
  constexpr std::size_t kMostYears = 200;
  if (start && end && *start < *end && daylight_.size() < kMostYears)
    daylight_.push_back({*start, *end, *offset});
}

// The daylight time that tells of the year, or of the one next to it, which is so far away.
const TextZone::Daylight* TextZone::NearestTo(int year, int& distance) const {
  const Daylight* nearest = nullptr;
  for (const Daylight& one : daylight_) {
    const int first = YearOf(one.start);
    const int last = YearOf(one.end);
    const int away = year < first ? first - year : year > last ? year - last : 0;
    if (nearest == nullptr || away < distance) {
      nearest = &one;
      distance = away;
    }
  }
  return nearest;
}

minutes TextZone::OffsetAt(Time local) const {
  for (const Daylight& one : daylight_)
    if (local >= one.start && local < one.end) return one.offset;
  const int year = YearOf(local);
  int distance = 0;
  const Daylight* const nearest = NearestTo(year, distance);
  if (nearest == nullptr || (distance == 0 && YearOf(nearest->start) == YearOf(nearest->end)))
    return *offset_;
  const Time start = InYear(nearest->start, year);
  const Time end = InYear(nearest->end, year);
  const bool isDaylight =
      start < end ? local >= start && local < end : local >= start || local < end;
  return isDaylight ? nearest->offset : *offset_;
}

std::optional<std::string> TextZone::ToUtc(std::string_view local) const {
  const auto clock = ClockOf(local);
  if (!clock || !offset_) return std::nullopt;
  return TextOfTime(clock->time - OffsetAt(clock->time), clock->seconds);
}

std::string TextZone::LinesFor(std::string_view local, std::string_view lineEnd) const {
  std::string lines = "TZ:" + TextOfOffset(*offset_) + std::string(lineEnd);
  const auto clock = ClockOf(local);
  int distance = 0;
  const Daylight* const nearest = clock ? NearestTo(YearOf(clock->time), distance) : nullptr;
  if (nearest == nullptr) return lines;
  const auto start = TextOfTime(nearest->start - *offset_, 0);
  const auto end = TextOfTime(nearest->end - nearest->offset, 0);
  if (start && end) {
    lines.append("DAYLIGHT:TRUE;").append(TextOfOffset(nearest->offset)).append(";");
    lines.append(*start).append(";").append(*end).append(lineEnd);
  }
  return lines;
}

bool TellsTime(std::string_view name) { return TimeRowOf(name) != nullptr; }

namespace {

// The part of a property's value that is a time.
std::string_view TimeIn(std::string_view value, TimePlace place) {
  if (place == TimePlace::FirstField) return Trim(value.substr(0, value.find(';')));
  if (place == TimePlace::Whole) return value;
  const std::size_t blank = value.find_last_of(" \t");
  return blank == std::string_view::npos ? std::string_view() : value.substr(blank + 1);
}

std::string_view ValueIn(const std::vector<PropertyLine>& lines, std::string_view name) {
  for (const PropertyLine& line : lines)
    if (EqualsIgnoringCase(line.head().name, name)) return Trim(line.value());
  return {};
}

}  // namespace

void BringToUtc(const TextZone& zone, std::vector<PropertyLine>& lines, PrepareNotes& notes) {
  const std::string start(ValueIn(lines, "DTSTART"));
  const std::string_view end = ValueIn(lines, "DTEND");
  const bool isAllDay = !start.empty() && !end.empty() && IsDay(start) && IsDay(end);
  bool isChanged = false;
  for (PropertyLine& line : lines) {
    const LineHead head = line.head();
    const auto* const row = TimeRowOf(head.name);
    if (row == nullptr || !head.hasColon()) continue;
    const std::string_view value = Trim(line.value());
    if (isAllDay && row->place == TimePlace::Whole && IsDay(value)) continue;
    const std::string_view time = TimeIn(value, row->place);
    const auto utc = zone.ToUtc(time);
    if (!utc) continue;
    notes.Add(PrepareStep::Times, line.first, line.last,
              std::string(head.name) + ": local time brought to UTC");
    isChanged = true;
    const auto at = static_cast<std::size_t>(time.data() - line.text.data());
    line.text.replace(at, time.size(), *utc);
  }
  if (!isChanged || isAllDay || start.empty() || ValueIn(lines, "RRULE").empty() ||
      !ValueIn(lines, "TZ").empty())
    return;
  PropertyLine& begin = lines.front();
  begin.text += zone.LinesFor(start, begin.lineEnd());
  notes.Add(PrepareStep::Times, begin.first, begin.last, "the zone put into the item");
}

}  // namespace pim
