// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pim/records/TypeCodes.h"
#include "stream/ObjectWords.h"
#include "support/ParameterWords.h"
#include "support/WordTable.h"

namespace pim {

// The words of vCalendar text, each with the code that it gives and is written from.

enum VCalPropertyId : std::int32_t {
  VCAL_UNKNOWN = -1,
  VCAL_NO_PROPERTY = 0,
  VCAL_VERSION = 1,
  VCAL_TZ = 2,
  VCAL_DAYLIGHT = 3,
  VCAL_BEGIN = 4,
  VCAL_CATEGORIES = 5,
  VCAL_CLASS = 6,
  VCAL_AALARM = 7,
  VCAL_DTCREATE = 8,
  VCAL_LAST_MODIFIED = 9,
  VCAL_X_MODIFIED = 10,
  VCAL_DTSTART = 11,
  VCAL_DTEND = 12,
  VCAL_DUE = 13,
  VCAL_COMPLETED = 14,
  VCAL_SUMMARY = 15,
  VCAL_DESCRIPTION = 16,
  VCAL_LOCATION = 17,
  VCAL_RRULE = 18,
  VCAL_XRULE = 19,
  VCAL_PRIORITY = 20,
  VCAL_STATUS = 21,
  VCAL_X_COLOR = 22,
  VCAL_X_HOLIDAY = 23,
};

inline constexpr Word kVCalendarProperties[] = {
    {kVersionWord, VCAL_VERSION},
    {"TZ", VCAL_TZ},
    {"DAYLIGHT", VCAL_DAYLIGHT},
    {kBeginWord, VCAL_BEGIN},
    {"CATEGORIES", VCAL_CATEGORIES},
    {"CLASS", VCAL_CLASS},
    {"AALARM", VCAL_AALARM},
    {"DTCREATE", VCAL_DTCREATE},
    {"LAST-MODIFIED", VCAL_LAST_MODIFIED},
    {"X-MODIFIED", VCAL_X_MODIFIED},
    {"DTSTART", VCAL_DTSTART},
    {"DTEND", VCAL_DTEND},
    {"DUE", VCAL_DUE},
    {"COMPLETED", VCAL_COMPLETED},
    {"SUMMARY", VCAL_SUMMARY},
    {"DESCRIPTION", VCAL_DESCRIPTION},
    {"LOCATION", VCAL_LOCATION},
    {"RRULE", VCAL_RRULE},
    {"XRULE", VCAL_XRULE},
    {"PRIORITY", VCAL_PRIORITY},
    {"STATUS", VCAL_STATUS},
    {"X-COLOR", VCAL_X_COLOR},
    {"X-HOLIDAY", VCAL_X_HOLIDAY},
};

// The stamp of creation goes out under the format's own word, but devices name it DTCREATE, and
// that is what is read.
inline constexpr NarrowStringView kCreatedAsWritten = "DCREATED";

// The words of items give their kinds.
static_assert(static_cast<int>(TextObject::Event) == static_cast<int>(CalendarType::Event) &&
              static_cast<int>(TextObject::Todo) == static_cast<int>(CalendarType::Todo) &&
              static_cast<int>(TextObject::Memo) == static_cast<int>(CalendarType::Memo));

inline constexpr Word kClassWords[] = {
    {"PUBLIC", CLASS_PUBLIC},
    {"PRIVATE", CLASS_PRIVATE},
    {"CONFIDENTIAL", CLASS_CONFIDENTIAL},
};

// The first one is also what any unknown word reads as.
inline constexpr Word kStatusWords[] = {
    {"NEEDS ACTION", STATUS_NEEDS_ACTION},
    {"ACCEPTED", STATUS_ACCEPTED},
    {"SENT", STATUS_SENT},
    {"TENTATIVE", STATUS_TENTATIVE},
    {"CONFIRMED", STATUS_CONFIRMED},
    {"DECLINED", STATUS_DECLINED},
    {"COMPLETED", STATUS_COMPLETED},
    {"DELEGATED", STATUS_DELEGATED},
};

inline constexpr NarrowStringView kHolidayYes = "YES";
inline constexpr NarrowStringView kHolidayNo = "NO";

// What a DAYLIGHT line begins with: this in capitals, or anything else for no daylight time.
inline constexpr NarrowStringView kDaylightYes = "TRUE";
inline constexpr NarrowStringView kDaylightNo = "FALSE";

// What an alarm's parameters say, by the start of the parameter's name.
inline constexpr NarrowStringView kAlarmTypeName = kTypeName;
inline constexpr Word kAlarmTypeWords[] = {
    {"PCM", REMINDER_PCM}, {"WAVE", REMINDER_WAVE}, {"AIFF", REMINDER_AIFF}};
inline constexpr NarrowStringView kAlarmValueName = "VALUE";
inline constexpr Word kAlarmValueWords[] = {{"CONTENT-ID", REMINDER_CONTENT_ID}};

// The letters at the start of a rule.
inline constexpr Word kRuleWords[] = {
    {"D", RECUR_DAILY},           {"W", RECUR_WEEKLY},           {"MP", RECUR_MONTHLY_BY_POS},
    {"MD", RECUR_MONTHLY_BY_DAY}, {"YM", RECUR_YEARLY_BY_MONTH}, {"YD", RECUR_YEARLY_BY_DAY},
};

// Weekdays by their number, Sunday being 0.
inline constexpr Word kWeekdayWords[] = {
    {"SU", 0}, {"MO", 1}, {"TU", 2}, {"WE", 3}, {"TH", 4}, {"FR", 5}, {"SA", 6},
};

static_assert(TextsDiffer(kVCalendarProperties) && TextsDiffer(kClassWords) &&
              TextsDiffer(kStatusWords) && TextsDiffer(kAlarmTypeWords) &&
              TextsDiffer(kRuleWords) && TextsDiffer(kWeekdayWords));

}  // namespace pim
