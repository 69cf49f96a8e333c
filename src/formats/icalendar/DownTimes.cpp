// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/icalendar/DownTimes.h"

#include <algorithm>
#include <string>

#include "support/Ascii.h"
#include "support/DateTimeZones.h"

namespace pim {
namespace {

// The moment by the text alone: a day, in UTC, or floating.
icaltimetype SpeltTime(std::string_view value) {
  constexpr std::size_t kLongest = 16;
  value = Trim(value);
  if (value.size() > kLongest) return icaltime_null_time();
  icaltimetype time = icaltime_from_string(std::string(value).c_str());
  // A leap second has no place in a record's time.
  if (time.second == 60) time.second = 59;
  return time;
}

}  // namespace

COleDateTime UtcOfTime(const icaltimetype& time) {
  if (time.is_date != 0 || time.zone == nullptr) return ConvertDateTime(DateTimeOf(time));
  return DateTimeOf(icaltime_convert_to_zone(time, icaltimezone_get_utc_timezone()));
}

std::optional<ItemTime> DownTimes::Read(const ContentLine& line, std::string_view value,
                                        icaltimezone* zone) const {
  icaltimetype time = SpeltTime(value);
  const bool isTime = icaltime_is_null_time(time) == 0 && DateTimeOf(time).status == StatusValid;
  if (isTime && time.is_date == 0 && icaltime_is_utc(time) == 0)
    time.zone = zone == nullptr ? floating_ : zone;
  COleDateTime utc;
  if (isTime) utc = UtcOfTime(time);
  if (isTime && utc.status == StatusValid) return ItemTime{time, utc};
  tell_({std::string(line.Name()), FormatVerdict::Dropped, FormatReason::BadValue, line.line});
  return std::nullopt;
}

// Null, which is told, for a name that nothing says more of; null for floating times and days.
icaltimezone* DownTimes::ZoneOf(const ContentLine& line) const {
  const std::string name = ZoneNameOf(line);
  if (name.empty()) return nullptr;
  icaltimezone* const zone = zones_.Find(name);
  const bool isTime = line.Value().find('T') != std::string_view::npos;
  if (zone == nullptr && isTime) {
    tell_({std::string(line.Name()), FormatVerdict::Changed, FormatReason::UnknownZone, line.line});
  }
  return zone;
}

bool DownTimes::IsFloating(const ContentLine& line) const {
  const icaltimetype time = SpeltTime(line.Value());
  return floating_ == nullptr && icaltime_is_null_time(time) == 0 && time.is_date == 0 &&
         icaltime_is_utc(time) == 0 && zones_.Find(ZoneNameOf(line)) == nullptr;
}

std::string DownTimes::TextOf(const ItemTime& time) const {
  return time.isFloating() && zones_.keepsLocal() ? LocalText(DateTimeOf(time.local))
                                                  : UtcText(time.utc);
}

std::optional<ItemTime> DownTimes::TimeOf(const ContentLine& line) const {
  return Read(line, line.Value(), ZoneOf(line));
}

std::vector<ItemTime> DownTimes::TimesOf(const ContentLine& line) const {
  std::vector<ItemTime> times;
  icaltimezone* const zone = ZoneOf(line);
  std::string_view rest = line.Value();
  while (!rest.empty()) {
    const std::string_view value = rest.substr(0, rest.find(','));
    rest.remove_prefix(std::min(value.size() + 1, rest.size()));
    if (const auto time = Read(line, value, zone)) times.push_back(*time);
  }
  return times;
}

std::optional<ItemTime> DownTimes::Behind(const ItemTime& time, const icaldurationtype& length) {
  const std::int64_t seconds = SecondsOf(length);
  constexpr std::int64_t kMostDays = 3'000'000;
  const std::int64_t days = seconds / kSecondsOfDay;
  if (days < -kMostDays || days > kMostDays) return std::nullopt;
  ItemTime behind = time;
  icaltime_adjust(&behind.local, static_cast<int>(days), 0, 0, 0);
  if (DateTimeOf(behind.local).status != StatusValid) return std::nullopt;
  behind.utc = UtcOfTime(behind.local);
  const auto rest = static_cast<std::int32_t>(seconds % kSecondsOfDay);
  if (behind.isDay() || rest == 0) {
    // Nothing more.
  } else if (behind.isFloating()) {
    icaltime_adjust(&behind.local, 0, 0, 0, rest);
    behind.utc = UtcOfTime(behind.local);
  } else {
    COleDateTimeSpan span;
    span.SetDateTimeSpan(0, 0, 0, rest);
    behind.utc = behind.utc + span;
  }
  if (!behind.utc.GetFields()) return std::nullopt;
  return behind;
}

std::optional<icaldurationtype> LengthOf(const ContentLine& line) {
  constexpr std::size_t kLongest = 40;
  const std::string_view value = Trim(line.Value());
  if (value.size() > kLongest) return std::nullopt;
  const icaldurationtype length = icaldurationtype_from_string(std::string(value).c_str());
  if (icaldurationtype_is_bad_duration(length) != 0) return std::nullopt;
  return length;
}

std::int64_t SecondsOf(const icaldurationtype& length) {
  const std::int64_t days = std::int64_t{length.weeks} * 7 + length.days;
  const std::int64_t seconds = std::int64_t{length.hours} * 3600 +
                               std::int64_t{length.minutes} * 60 + std::int64_t{length.seconds};
  return (days * kSecondsOfDay + seconds) * (length.is_neg != 0 ? -1 : 1);
}

}  // namespace pim
