#include "app/RecordDump.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "app/Output.h"
#include "platform/CodePages.h"

namespace pim::app {
namespace {

using Json = nlohmann::ordered_json;

Json Text(WideStringView text) { return Utf8FromWide(text); }

Json DateTime(const COleDateTime& date) {
  if (date.status == StatusNull) return nullptr;
  if (date.status != StatusValid || date.GetYear() < 0) return "invalid";
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02d", date.GetYear(),
                date.GetMonth(), date.GetDay(), date.GetHour(), date.GetMinute(), date.GetSecond());
  return text.data();
}

Json Seconds(const COleDateTimeSpan& span) {
  if (span.status != StatusValid) return "invalid";
  return std::llround(span.value * 86400);
}

template <class List, class ToJson>
Json Array(const List& list, ToJson toJson) {
  Json array = Json::array();
  for (const auto& entry : list) array.push_back(toJson(entry));
  return array;
}

template <class List>
Json Texts(const List& list) {
  return Array(list, [](const WideText& text) { return Text(text); });
}

Json ToJson(const CName& name) {
  return {{"family_name", Text(name.family_name)},
          {"given_name", Text(name.given_name)},
          {"additional_name", Text(name.additional_name)},
          {"prefix_name", Text(name.prefix_name)},
          {"suffix_name", Text(name.suffix_name)}};
}

Json ToJson(const CPostalAddress& address) {
  return {{"address_type", address.address_type},
          {"post_office", Text(address.post_office)},
          {"extended_address", Text(address.extended_address)},
          {"street", Text(address.street)},
          {"locality", Text(address.locality)},
          {"region", Text(address.region)},
          {"postal_code", Text(address.postal_code)},
          {"country", Text(address.country)}};
}

Json ToJson(const COrganization& organization) {
  return {{"org_type", organization.org_type},
          {"org_name", Text(organization.org_name)},
          {"org_position", Text(organization.org_position)},
          {"org_additional", Texts(organization.org_additional)}};
}

Json ToJson(const CContact& contact) {
  Json json = {{"tag", contact.tag},
               {"favorite", contact.favorite},
               {"name", ToJson(contact.name)},
               {"phonetic", ToJson(contact.phonetic)},
               {"formatted_name", Text(contact.formatted_name)},
               {"blood_type", contact.blood_type},
               {"hobby", Text(contact.hobby)},
               {"org_title", Text(contact.org_title)},
               {"org_role", Text(contact.org_role)},
               {"photo", Text(contact.photo)}};
  json["telephones"] = Array(contact.telephones(), [](const CTelephoneNumber& entry) {
    return Json{{"number_type", entry.number_type}, {"number", Text(entry.number)}};
  });
  json["emails"] = Array(contact.emails(), [](const CEmail& entry) {
    return Json{{"email_type", entry.email_type}, {"email_address", Text(entry.email_address)}};
  });
  json["messengers"] = Array(contact.messengers(), [](const CMessenger& entry) {
    return Json{{"messenger_type", entry.messenger_type},
                {"messenger_address", Text(entry.messenger_address)}};
  });
  json["urls"] = Array(contact.urls(), [](const CURL& entry) {
    return Json{{"url_type", entry.url_type}, {"url_address", Text(entry.url_address)}};
  });
  json["addresses"] =
      Array(contact.addresses(), [](const CPostalAddress& entry) { return ToJson(entry); });
  json["organizations"] =
      Array(contact.organizations(), [](const COrganization& entry) { return ToJson(entry); });
  json["events"] = Array(contact.contactEvents(), [](const CContactEvent& entry) {
    return Json{{"event_type", entry.event_type}, {"event_date", DateTime(entry.event_date)}};
  });
  json["nicknames"] = Texts(contact.nicknames());
  json["comments"] = Texts(contact.comments());
  json["groups"] = Texts(contact.groups());
  return json;
}

Json ToJson(const RecurrenceData* rule) {
  if (rule == nullptr) return nullptr;
  Json json = {{"type", rule->type},
               {"interval", rule->interval},
               {"count", rule->count},
               {"endDate", DateTime(rule->endDate)}};
  if (const auto* days = dynamic_cast<const DaysData*>(rule)) json["days"] = days->days;
  if (const auto* byPos = dynamic_cast<const MonthlyByPosData*>(rule)) {
    json["positions"] = byPos->positions;
    json["weekdays"] = byPos->weekdays;
  }
  return json;
}

Json ToJson(const CCalendarZone& zone) {
  return {{"tzOffset", Seconds(zone.tzOffset)},
          {"daylightOffset", Seconds(zone.daylightOffset)},
          {"daylightStart", DateTime(zone.daylightStart)},
          {"daylightEnd", DateTime(zone.daylightEnd)},
          {"standardName", Text(zone.standardName)},
          {"daylightName", Text(zone.daylightName)}};
}

Json ToJson(const CReminder& reminder) {
  return {{"reminderType", reminder.reminderType},
          {"valueType", reminder.valueType},
          {"alarmType", static_cast<std::int32_t>(reminder.alarmType)},
          {"alarm_date", DateTime(reminder.alarm_date)},
          {"snooze", Seconds(reminder.snooze)},
          {"repeatCount", reminder.repeatCount},
          {"displayText", Text(reminder.displayText)}};
}

Json ToJson(const CCalendar& item) {
  return {{"tag", item.tag},
          {"calendar_type", item.calendar_type},
          {"allday", item.allday},
          {"set_holiday", item.set_holiday},
          {"class", item.class_},
          {"zone", ToJson(item.zone)},
          {"reminder", ToJson(item.reminder)},
          {"start_time", DateTime(item.start_time)},
          {"end_time", DateTime(item.end_time)},
          {"due", DateTime(item.due)},
          {"completed", DateTime(item.completed)},
          {"created_time", DateTime(item.created_time)},
          {"modified_time", DateTime(item.modified_time)},
          {"xmodified_time", DateTime(item.xmodified_time)},
          {"summary", Text(item.summary)},
          {"description", Text(item.description)},
          {"location", Text(item.location)},
          {"color", Text(item.color)},
          {"recurrence", ToJson(item.recurrence.GetRecurrenceData())},
          {"exceptionRule", ToJson(item.exceptionRule.GetRecurrenceData())},
          {"priority", item.priority},
          {"status", item.status},
          {"categories", Array(item.categories, [](const CCategory& category) {
             return Text(category.category_name);
           })}};
}

}  // namespace

JsonList::JsonList(std::string_view name) {
  Print(std::string("{\"").append(name).append("\": ["));
}

JsonList::JsonList(std::string_view name, bool rejected,
                   const std::vector<std::u16string>& messages) {
  const Json texts = Array(messages, [](const std::u16string& text) { return Text(text); });
  Print(std::string("{\"rejected\": ")
            .append(rejected ? "true" : "false")
            .append(", \"messages\": ")
            .append(texts.dump())
            .append(", \"")
            .append(name)
            .append("\": ["));
}

void JsonList::Add(const CContact& contact) { AddText(ToJson(contact).dump()); }
void JsonList::Add(const CCalendar& item) { AddText(ToJson(item).dump()); }

void JsonList::AddText(const std::string& json) {
  Print(empty_ ? "\n" : ",\n");
  Print(json);
  empty_ = false;
}

void JsonList::End() { Print(empty_ ? "]}\n" : "\n]}\n"); }

}  // namespace pim::app
