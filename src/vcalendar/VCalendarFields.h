// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <iterator>

#include "vcalendar/VCalendarWords.h"

namespace pim {

// Where an item keeps the values of its text: the fields in the order of record dumps, and what
// each property of vCalendar text is read as.

enum ItemField : std::uint8_t {
  FIELD_CALENDAR_TYPE,
  FIELD_ALLDAY,
  FIELD_SET_HOLIDAY,
  FIELD_CLASS,
  FIELD_ZONE,
  FIELD_REMINDER,
  FIELD_START_TIME,
  FIELD_END_TIME,
  FIELD_DUE,
  FIELD_COMPLETED,
  FIELD_CREATED_TIME,
  FIELD_MODIFIED_TIME,
  FIELD_XMODIFIED_TIME,
  FIELD_SUMMARY,
  FIELD_DESCRIPTION,
  FIELD_LOCATION,
  FIELD_COLOR,
  FIELD_RECURRENCE,
  FIELD_EXCEPTION_RULE,
  FIELD_PRIORITY,
  FIELD_STATUS,
  FIELD_CATEGORIES,
};
inline constexpr NarrowStringView kItemFields[] = {
    "calendar_type",  "allday",   "set_holiday", "class",      "zone",         "reminder",
    "start_time",     "end_time", "due",         "completed",  "created_time", "modified_time",
    "xmodified_time", "summary",  "description", "location",   "color",        "recurrence",
    "exceptionRule",  "priority", "status",      "categories",
};
static_assert(std::size(kItemFields) == FIELD_CATEGORIES + 1);

// The places of single values: the fields by their numbers, and the second part of the zone.
enum ItemPlace : std::uint8_t { PLACE_DAYLIGHT = FIELD_CATEGORIES + 1, ITEM_PLACES };
inline constexpr auto kItemPlaces = [] {
  std::array<std::uint8_t, ITEM_PLACES> fields{};
  for (std::uint8_t place = 0; place < PLACE_DAYLIGHT; ++place) fields[place] = place;
  fields[PLACE_DAYLIGHT] = FIELD_ZONE;
  return fields;
}();

enum class VCalendarValue : std::uint8_t {
  Text,
  Date,
  Word,  // one of a table
  Number,
  YesOrNo,
  Offset,
  Daylight,
  Alarm,
  Categories,
  Rule,
};

struct VCalendarFieldRow {
  VCalPropertyId property;
  ItemField field;
  VCalendarValue value;
};
inline constexpr VCalendarFieldRow kVCalendarFields[] = {
    {VCAL_TZ, FIELD_ZONE, VCalendarValue::Offset},
    {VCAL_DAYLIGHT, FIELD_ZONE, VCalendarValue::Daylight},
    {VCAL_CATEGORIES, FIELD_CATEGORIES, VCalendarValue::Categories},
    {VCAL_CLASS, FIELD_CLASS, VCalendarValue::Word},
    {VCAL_AALARM, FIELD_REMINDER, VCalendarValue::Alarm},
    {VCAL_DTCREATE, FIELD_CREATED_TIME, VCalendarValue::Date},
    {VCAL_LAST_MODIFIED, FIELD_MODIFIED_TIME, VCalendarValue::Date},
    {VCAL_X_MODIFIED, FIELD_XMODIFIED_TIME, VCalendarValue::Date},
    {VCAL_DTSTART, FIELD_START_TIME, VCalendarValue::Date},
    {VCAL_DTEND, FIELD_END_TIME, VCalendarValue::Date},
    {VCAL_DUE, FIELD_DUE, VCalendarValue::Date},
    {VCAL_COMPLETED, FIELD_COMPLETED, VCalendarValue::Date},
    {VCAL_SUMMARY, FIELD_SUMMARY, VCalendarValue::Text},
    {VCAL_DESCRIPTION, FIELD_DESCRIPTION, VCalendarValue::Text},
    {VCAL_LOCATION, FIELD_LOCATION, VCalendarValue::Text},
    {VCAL_RRULE, FIELD_RECURRENCE, VCalendarValue::Rule},
    {VCAL_XRULE, FIELD_EXCEPTION_RULE, VCalendarValue::Rule},
    {VCAL_PRIORITY, FIELD_PRIORITY, VCalendarValue::Number},
    {VCAL_STATUS, FIELD_STATUS, VCalendarValue::Word},
    {VCAL_X_COLOR, FIELD_COLOR, VCalendarValue::Text},
    {VCAL_X_HOLIDAY, FIELD_SET_HOLIDAY, VCalendarValue::YesOrNo},
};

// The row of a property that isn't the frame's.
constexpr const VCalendarFieldRow& RowOf(VCalPropertyId property) {
  return *std::ranges::find(kVCalendarFields, property, &VCalendarFieldRow::property);
}

// No property that is read lacks its row.
static_assert(std::ranges::all_of(kVCalendarProperties, [](const Word& word) {
  const auto property = static_cast<VCalPropertyId>(word.code);
  return property == VCAL_BEGIN || property == VCAL_VERSION ||
         std::ranges::count(kVCalendarFields, property, &VCalendarFieldRow::property) == 1;
}));

}  // namespace pim
