// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/ZoneRule.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace pim {
namespace {

constexpr int kSecondsPerHour = 3600;
constexpr int kSecondsOfDay = 24 * kSecondsPerHour;
constexpr int kLast = 5;  // the occurrence of a weekday that is the last in its month
constexpr std::array<int, 12> kMonthLengths = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
constexpr std::string_view kDefaultChanges = ",M3.2.0,M11.1.0";

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

// When the clock changes.
struct Change {
  bool by_weekday = false;            // else by day of the year, and the fields below say nothing
  int month = 0;                      // 1 to 12
  int occurrence = 0;                 // 1 to 5, 5 the last
  int weekday = 0;                    // 0 Sunday to 6 Saturday
  int seconds = 2 * kSecondsPerHour;  // from midnight, up to a week to either side
};

class RuleReader {
 public:
  explicit RuleReader(std::string_view text) : text_(text) {}

  bool AtEnd() const { return text_.empty(); }

  bool Sees(char c) const { return text_.starts_with(c); }

  bool Take(char c) {
    if (!Sees(c)) return false;
    text_.remove_prefix(1);
    return true;
  }

  // A zone's abbreviation, of which nothing is kept: letters, or anything of <+-0-9A-Za-z>.
  bool SkipName() {
    constexpr std::size_t kShortestName = 3;
    const bool quoted = Take('<');
    const auto end = std::ranges::find_if_not(text_, [quoted](char c) {
      return IsLetter(c) || (quoted && (IsDigit(c) || c == '+' || c == '-'));
    });
    const auto length = static_cast<std::size_t>(end - text_.begin());
    text_.remove_prefix(length);
    return length >= kShortestName && (!quoted || Take('>'));
  }

  // A number of up to three digits.
  bool TakeNumber(int low, int high, int& number) {
    constexpr std::size_t kMostDigits = 3;
    std::size_t digits = 0;
    number = 0;
    for (; digits < text_.size() && IsDigit(text_[digits]); ++digits) {
      if (digits == kMostDigits) return false;
      number = number * 10 + (text_[digits] - '0');
    }
    text_.remove_prefix(digits);
    return digits > 0 && number >= low && number <= high;
  }

  // [+-]h[:m[:s]]
  bool TakeTime(int highestHour, int& seconds) {
    const bool negative = Take('-');
    if (!negative) Take('+');
    int hour = 0;
    int minute = 0;
    int second = 0;
    if (!TakeNumber(0, highestHour, hour)) return false;
    if (Take(':') && !TakeNumber(0, 59, minute)) return false;
    if (Take(':') && !TakeNumber(0, 59, second)) return false;
    seconds = hour * kSecondsPerHour + minute * 60 + second;
    if (negative) seconds = -seconds;
    return true;
  }

  // ,Mmonth.occurrence.weekday[/time], or ,J1 to ,J365, or ,0 to ,365 with a time as well
  bool TakeChange(Change& change) {
    constexpr int kHighestHour = 167;
    if (!Take(',')) return false;
    int day = 0;
    if (Take('M')) {
      change.by_weekday = true;
      if (!TakeNumber(1, 12, change.month) || !Take('.') ||
          !TakeNumber(1, kLast, change.occurrence) || !Take('.') ||
          !TakeNumber(0, 6, change.weekday))
        return false;
    } else if (Take('J')) {
      if (!TakeNumber(1, 365, day)) return false;
    } else if (!TakeNumber(0, 365, day)) {
      return false;
    }
    return !Take('/') || TakeTime(kHighestHour, change.seconds);
  }

 private:
  std::string_view text_;
};

constexpr int Floor(int dividend, int divisor) {
  return dividend >= 0 ? dividend / divisor : -((divisor - 1 - dividend) / divisor);
}

// How many of the seven days from `first` on lie in the week that is the `occurrence` of each
// weekday in a month of `length` days.
constexpr int DaysShared(int first, int occurrence, int length) {
  const int start = occurrence == kLast ? length - 6 : 7 * occurrence - 6;
  return std::max(0, 7 - std::abs(first - start));
}

// Moves the day of a change. "The last Saturday, 24:00" is the last Sunday of the month, but for
// the years in which the Saturday ends it, and no zone date says that. So this takes the occurrence
// that is right in the most years: the seven dates on which the change can fall, moved, are laid
// over the weeks that an occurrence can stand for.
void MoveDays(Change& change, int days) {
  const auto length = [&change] {
    return kMonthLengths[static_cast<std::size_t>(change.month - 1)];
  };
  int first = (change.occurrence == kLast ? length() - 6 : 7 * change.occurrence - 6) + days;
  if (first + 3 < 1) {  // the middle one decides on the month
    change.month = change.month == 1 ? 12 : change.month - 1;
    first += length();
  } else if (first + 3 > length()) {
    first -= length();
    change.month = change.month == 12 ? 1 : change.month + 1;
  }
  change.occurrence = kLast;
  for (int occurrence = kLast - 1; occurrence > 0; --occurrence) {
    if (DaysShared(first, occurrence, length()) > DaysShared(first, change.occurrence, length()))
      change.occurrence = occurrence;
  }
  change.weekday = (change.weekday + days + 7) % 7;
}

SYSTEMTIME ZoneDate(Change change) {
  const int days = Floor(change.seconds, kSecondsOfDay);
  if (days != 0) MoveDays(change, days);
  const int seconds = change.seconds - days * kSecondsOfDay;
  SYSTEMTIME date;
  date.wMonth = static_cast<std::uint16_t>(change.month);
  date.wDayOfWeek = static_cast<std::uint16_t>(change.weekday);
  date.wDay = static_cast<std::uint16_t>(change.occurrence);
  date.wHour = static_cast<std::uint16_t>(seconds / kSecondsPerHour);
  date.wMinute = static_cast<std::uint16_t>(seconds % kSecondsPerHour / 60);
  return date;
}

// A zone as its rule has it: offsets in seconds with UTC = local time + offset.
struct Zone {
  int standard = 0;
  bool has_daylight = false;
  int daylight = 0;
  Change daylight_start;
  Change standard_start;
};

bool ReadZone(std::string_view rule, Zone& zone) {
  constexpr int kHighestHour = 24;
  RuleReader reader(rule);
  if (!reader.SkipName() || !reader.TakeTime(kHighestHour, zone.standard)) return false;
  zone.has_daylight = !reader.AtEnd();
  if (!zone.has_daylight) return true;
  if (!reader.SkipName()) return false;
  zone.daylight = zone.standard - kSecondsPerHour;
  if (!reader.AtEnd() && !reader.Sees(',') && !reader.TakeTime(kHighestHour, zone.daylight))
    return false;
  if (reader.AtEnd()) reader = RuleReader(kDefaultChanges);
  return reader.TakeChange(zone.daylight_start) && reader.TakeChange(zone.standard_start) &&
         reader.AtEnd();
}

}  // namespace

bool ParseZoneRule(std::string_view rule, TIME_ZONE_INFORMATION& zone) {
  Zone read;
  if (!ReadZone(rule, read)) return false;
  zone = {};
  zone.Bias = read.standard / 60;
  if (read.has_daylight && read.daylight_start.by_weekday && read.standard_start.by_weekday) {
    zone.StandardDate = ZoneDate(read.standard_start);
    zone.DaylightDate = ZoneDate(read.daylight_start);
    zone.DaylightBias = read.daylight / 60 - zone.Bias;
  }
  return true;
}

}  // namespace pim
