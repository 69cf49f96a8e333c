// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/output/RecordDump.h"

#include "app/output/Output.h"

namespace pim::app {
namespace {

// Each record's fields, in the order of the dump.

void Write(JsonWriter& json, const CName& name) {
  json.StartObject();
  json.Field("family_name", name.family_name);
  json.Field("given_name", name.given_name);
  json.Field("additional_name", name.additional_name);
  json.Field("prefix_name", name.prefix_name);
  json.Field("suffix_name", name.suffix_name);
  json.EndObject();
}

// An entry that is a code and a text.
template <class Code>
void Write(JsonWriter& json, std::string_view codeKey, Code code, std::string_view textKey,
           const WideText& text) {
  json.StartObject();
  json.Field(codeKey, code);
  json.Field(textKey, text);
  json.EndObject();
}

void Write(JsonWriter& json, const CPostalAddress& address) {
  json.StartObject();
  json.Field("address_type", address.address_type);
  json.Field("post_office", address.post_office);
  json.Field("extended_address", address.extended_address);
  json.Field("street", address.street);
  json.Field("locality", address.locality);
  json.Field("region", address.region);
  json.Field("postal_code", address.postal_code);
  json.Field("country", address.country);
  json.EndObject();
}

void Write(JsonWriter& json, const COrganization& organization) {
  json.StartObject();
  json.Field("org_type", organization.org_type);
  json.Field("org_name", organization.org_name);
  json.Field("org_position", organization.org_position);
  json.Values("org_additional", organization.org_additional);
  json.EndObject();
}

void Write(JsonWriter& json, const CContactEvent& event) {
  json.StartObject();
  json.Field("event_type", event.event_type);
  json.Field("event_date", event.event_date);
  json.EndObject();
}

void WriteLists(JsonWriter& json, const CContact& contact) {
  json.Array("telephones", contact.telephones(), [&json](const CTelephoneNumber& entry) {
    Write(json, "number_type", entry.number_type, "number", entry.number);
  });
  json.Array("emails", contact.emails(), [&json](const CEmail& entry) {
    Write(json, "email_type", entry.email_type, "email_address", entry.email_address);
  });
  json.Array("messengers", contact.messengers(), [&json](const CMessenger& entry) {
    Write(json, "messenger_type", entry.messenger_type, "messenger_address",
          entry.messenger_address);
  });
  json.Array("urls", contact.urls(), [&json](const CURL& entry) {
    Write(json, "url_type", entry.url_type, "url_address", entry.url_address);
  });
  const auto write = [&json](const auto& entry) { Write(json, entry); };
  json.Array("addresses", contact.addresses(), write);
  json.Array("organizations", contact.organizations(), write);
  json.Array("events", contact.contactEvents(), write);
  json.Values("nicknames", contact.nicknames());
  json.Values("comments", contact.comments());
  json.Values("groups", contact.groups());
}

void Write(JsonWriter& json, const CContact& contact) {
  json.StartObject();
  json.Field("tag", contact.tag);
  json.Field("favorite", contact.favorite);
  json.Key("name");
  Write(json, contact.name);
  json.Key("phonetic");
  Write(json, contact.phonetic);
  json.Field("formatted_name", contact.formatted_name);
  json.Field("blood_type", contact.blood_type);
  json.Field("hobby", contact.hobby);
  json.Field("org_title", contact.org_title);
  json.Field("org_role", contact.org_role);
  json.Field("photo", contact.photo);
  WriteLists(json, contact);
  json.EndObject();
}

void Write(JsonWriter& json, const CRecurrence& holder) {
  const RecurrenceData* rule = holder.GetRecurrenceData();
  if (rule == nullptr) return json.Null();
  json.StartObject();
  json.Field("type", rule->type);
  json.Field("interval", rule->interval);
  json.Field("count", rule->count);
  json.Field("endDate", rule->endDate);
  if (const auto* days = dynamic_cast<const DaysData*>(rule)) json.Values("days", days->days);
  if (const auto* byPos = dynamic_cast<const MonthlyByPosData*>(rule)) {
    json.Values("positions", byPos->positions);
    json.Values("weekdays", byPos->weekdays);
  }
  json.EndObject();
}

void Write(JsonWriter& json, const CCalendarZone& zone) {
  json.StartObject();
  json.Field("tzOffset", zone.tzOffset);
  json.Field("daylightOffset", zone.daylightOffset);
  json.Field("daylightStart", zone.daylightStart);
  json.Field("daylightEnd", zone.daylightEnd);
  json.Field("standardName", zone.standardName);
  json.Field("daylightName", zone.daylightName);
  json.EndObject();
}

void Write(JsonWriter& json, const CReminder& reminder) {
  json.StartObject();
  json.Field("reminderType", reminder.reminderType);
  json.Field("valueType", reminder.valueType);
  json.Field("alarmType", static_cast<std::int32_t>(reminder.alarmType));
  json.Field("alarm_date", reminder.alarm_date);
  json.Field("snooze", reminder.snooze);
  json.Field("repeatCount", reminder.repeatCount);
  json.Field("displayText", reminder.displayText);
  json.EndObject();
}

void Write(JsonWriter& json, const CCalendar& item) {
  json.StartObject();
  json.Field("tag", item.tag);
  json.Field("calendar_type", item.calendar_type);
  json.Field("allday", item.allday);
  json.Field("set_holiday", item.set_holiday);
  json.Field("class", item.class_);
  json.Key("zone");
  Write(json, item.zone);
  json.Key("reminder");
  Write(json, item.reminder);
  json.Field("start_time", item.start_time);
  json.Field("end_time", item.end_time);
  json.Field("due", item.due);
  json.Field("completed", item.completed);
  json.Field("created_time", item.created_time);
  json.Field("modified_time", item.modified_time);
  json.Field("xmodified_time", item.xmodified_time);
  json.Field("summary", item.summary);
  json.Field("description", item.description);
  json.Field("location", item.location);
  json.Field("color", item.color);
  json.Key("recurrence");
  Write(json, item.recurrence);
  json.Key("exceptionRule");
  Write(json, item.exceptionRule);
  json.Field("priority", item.priority);
  json.Field("status", item.status);
  json.Array("categories", item.categories,
             [&json](const CCategory& category) { json.Value(category.category_name); });
  json.EndObject();
}

template <class Record>
std::string_view TextOf(JsonWriter& json, const Record& record) {
  json.Clear();
  Write(json, record);
  return json.text();
}

}  // namespace

std::string_view RecordJson::Text(const CContact& contact) { return TextOf(json_, contact); }
std::string_view RecordJson::Text(const CCalendar& item) { return TextOf(json_, item); }

JsonList::JsonList(std::string_view name) {
  Print(std::string("{\"").append(name).append("\": ["));
}

JsonList::JsonList(std::string_view name, bool rejected,
                   const std::vector<std::u16string>& messages) {
  JsonWriter json;
  json.StartArray();
  for (const std::u16string& text : messages) json.Value(WideStringView(text));
  json.EndArray();
  Print(std::string("{\"rejected\": ")
            .append(rejected ? "true" : "false")
            .append(", \"messages\": ")
            .append(json.text())
            .append(", \"")
            .append(name)
            .append("\": ["));
}

void JsonList::Add(const CContact& contact) { AddText(record_.Text(contact)); }
void JsonList::Add(const CCalendar& item) { AddText(record_.Text(item)); }

void JsonList::AddText(std::string_view record) {
  Print(empty_ ? "\n" : ",\n");
  Print(record);
  empty_ = false;
}

void JsonList::End() { Print(empty_ ? "]}\n" : "\n]}\n"); }

}  // namespace pim::app
