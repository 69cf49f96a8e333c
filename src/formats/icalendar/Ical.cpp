// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/icalendar/Ical.h"

#include <chrono>

#include "support/DateTimeText.h"

namespace pim {

const TellFormatLoss& Heard(const TellFormatLoss& tell) {
  static const TellFormatLoss kNobody = [](const FormatLoss&) {};
  return tell ? tell : kNobody;
}

void PrepareIcal() {
  // Both are libical's for the whole process; setting them again changes nothing.
  [[maybe_unused]] static const bool isPrepared = [] {
    icalerror_set_errors_are_fatal(0);
    ical_set_unknown_token_handling_setting(ICAL_ASSUME_IANA_TOKEN);
    return true;
  }();
}

icaltimetype IcalTime(const CalendarFields& fields, bool isUtc) {
  icaltimetype time = icaltime_null_time();
  time.year = fields.year;
  time.month = fields.month;
  time.day = fields.day;
  time.hour = fields.hour;
  time.minute = fields.minute;
  time.second = fields.second;
  if (isUtc) time.zone = icaltimezone_get_utc_timezone();
  return time;
}

icaltimetype IcalDay(const CalendarFields& fields) {
  icaltimetype day = IcalTime({fields.year, fields.month, fields.day, 0, 0, 0}, false);
  day.is_date = 1;
  return day;
}

std::optional<icaltimetype> IcalUtc(const COleDateTime& value) {
  const auto fields = value.GetFields();
  if (!fields) return std::nullopt;
  return IcalTime(*fields, true);
}

COleDateTime DateTimeOf(const icaltimetype& time) {
  COleDateTime value;
  if (time.is_date != 0) {
    value.SetDateTime(time.year, time.month, time.day, 0, 0, 0);
  } else {
    value.SetDateTime(time.year, time.month, time.day, time.hour, time.minute, time.second);
  }
  return value;
}

std::string UtcText(const COleDateTime& utc) { return LocalText(utc) + "Z"; }

std::string LocalText(const COleDateTime& local) {
  return std::string(DateTimeText(local).AddDate().AddMinutes().AddSeconds().view());
}

std::int64_t DayNumberOf(const icaltimetype& time) {
  const auto days = std::chrono::sys_days(std::chrono::year(time.year) /
                                          std::chrono::month(static_cast<unsigned>(time.month)) /
                                          std::chrono::day(static_cast<unsigned>(time.day)));
  return days.time_since_epoch().count();
}

icaltimetype OnDay(icaltimetype time, std::int64_t day) {
  const std::chrono::year_month_day date{std::chrono::sys_days(std::chrono::days(day))};
  time.year = static_cast<int>(date.year());
  time.month = static_cast<int>(unsigned(date.month()));
  time.day = static_cast<int>(unsigned(date.day()));
  return time;
}

std::int32_t DaysBetween(const icaltimetype& from, const icaltimetype& to) {
  return static_cast<std::int32_t>(DayNumberOf(to) - DayNumberOf(from));
}

std::string IcalTextOf(icalcomponent* component) {
  const IcalOwner<char> text(Made(icalcomponent_as_ical_string_r(component)));
  return text.get();
}

}  // namespace pim
