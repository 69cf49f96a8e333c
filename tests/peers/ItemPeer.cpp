// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include "formats/icalendar/Ical.h"

namespace pim {
namespace {

// Tells what libical reads of a text of iCalendar 2.0, as one JSON array of items:
//   {"kind": "VEVENT", "properties": [["DTSTART", "2020-01-01T10:00:00"], ...], "alarms": [...]}
// Times are UTC by the text's own zones, days are "2020-01-01", lengths of time are seconds.

using Json = rapidjson::Writer<rapidjson::StringBuffer>;

std::string TextOfTime(const icaltimetype& time) {
  std::array<char, 64> text{};
  if (time.is_date != 0) {
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", time.year, time.month, time.day);
  } else {
    const icaltimetype utc = icaltime_convert_to_zone(time, icaltimezone_get_utc_timezone());
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02d", utc.year, utc.month,
                  utc.day, utc.hour, utc.minute, utc.second);
  }
  return text.data();
}

std::string ValueOfTrigger(icalproperty* property) {
  const icaltriggertype trigger = icalproperty_get_trigger(property);
  if (icaltime_is_null_time(trigger.time) == 0) return TextOfTime(trigger.time);
  icalparameter* const related = icalproperty_get_first_parameter(property, ICAL_RELATED_PARAMETER);
  const bool isEnd = related != nullptr && icalparameter_get_related(related) == ICAL_RELATED_END;
  return (isEnd ? "END " : "START ") + std::to_string(icaldurationtype_as_int(trigger.duration));
}

std::string ValueOf(icalproperty* property, icalcomponent* frame) {
  if (icalproperty_isa(property) == ICAL_TRIGGER_PROPERTY) return ValueOfTrigger(property);
  const icalvalue* const value = icalproperty_get_value(property);
  switch (icalvalue_isa(value)) {
    case ICAL_DATE_VALUE:
    case ICAL_DATETIME_VALUE: {
      icaltimetype time = icalvalue_get_datetime(value);
      icalparameter* const zone = icalproperty_get_first_parameter(property, ICAL_TZID_PARAMETER);
      if (zone != nullptr)
        time.zone = icalcomponent_get_timezone(frame, icalparameter_get_tzid(zone));
      return TextOfTime(time);
    }
    case ICAL_DURATION_VALUE:
      return std::to_string(icaldurationtype_as_int(icalvalue_get_duration(value)));
    case ICAL_TEXT_VALUE:
      return icalvalue_get_text(value);
    case ICAL_X_VALUE:
      return icalvalue_get_x(value);
    default: {
      const IcalOwner<char> text(icalvalue_as_ical_string_r(value));
      return text.get();
    }
  }
}

void WriteComponent(icalcomponent* component, icalcomponent* frame, Json& json) {
  json.StartObject();
  json.Key("kind");
  json.String(icalcomponent_kind_to_string(icalcomponent_isa(component)));
  json.Key("properties");
  json.StartArray();
  for (icalproperty* property = icalcomponent_get_first_property(component, ICAL_ANY_PROPERTY);
       property != nullptr;
       property = icalcomponent_get_next_property(component, ICAL_ANY_PROPERTY)) {
    json.StartArray();
    json.String(icalproperty_get_property_name(property));
    json.String(ValueOf(property, frame).c_str());
    json.EndArray();
  }
  json.EndArray();
  json.Key("alarms");
  json.StartArray();
  for (icalcomponent* alarm = icalcomponent_get_first_component(component, ICAL_VALARM_COMPONENT);
       alarm != nullptr; alarm = icalcomponent_get_next_component(component, ICAL_VALARM_COMPONENT))
    WriteComponent(alarm, frame, json);
  json.EndArray();
  json.EndObject();
}

int Read(const char* path) {
  PrepareIcal();
  std::ifstream file(path, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  const IcalOwner<icalcomponent> frame(icalcomponent_new_from_string(text.c_str()));
  if (frame == nullptr || icalcomponent_isa(frame.get()) != ICAL_VCALENDAR_COMPONENT ||
      icalcomponent_count_errors(frame.get()) != 0 || icalrestriction_check(frame.get()) == 0 ||
      icalcomponent_count_errors(frame.get()) != 0) {
    std::cerr << path << ": libical finds faults\n";
    return 1;
  }
  rapidjson::StringBuffer out;
  Json json(out);
  json.StartArray();
  for (icalcomponent* item = icalcomponent_get_first_component(frame.get(), ICAL_ANY_COMPONENT);
       item != nullptr; item = icalcomponent_get_next_component(frame.get(), ICAL_ANY_COMPONENT)) {
    if (icalcomponent_isa(item) != ICAL_VTIMEZONE_COMPONENT)
      WriteComponent(item, frame.get(), json);
  }
  json.EndArray();
  std::cout << out.GetString() << '\n';
  return 0;
}

}  // namespace
}  // namespace pim

int main(int argc, char** argv) { return argc == 2 ? pim::Read(argv[1]) : 2; }
