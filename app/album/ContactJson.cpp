// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <optional>

#include "app/album/AlbumRecords.h"
#include "app/album/NameOrder.h"
#include "app/album/RecordParts.h"
#include "app/output/Fields.h"
#include "formats/vcard4/DayText.h"
#include "formats/vcard4/VCardRows.h"
#include "pim/manager/TypeWords.h"

namespace pim::app {
namespace {

// "1980-03-04", or "--03-04" of the year that stands for none; empty for what is no day.
std::string DayOfEvent(const COleDateTime& date) {
  const auto fields = date.GetFields();
  if (!fields) return {};
  std::string day(DayText(*fields, true).AddDay().view());
  if (day.starts_with(kYearOfNone)) day.replace(0, kYearOfNone.size(), "-");
  return day;
}

// One part a line, the post's way from near to far.
WideString AddressLines(const CPostalAddress& address) {
  WideString lines;
  for (const WideText* part :
       {&address.post_office, &address.extended_address, &address.street, &address.postal_code,
        &address.locality, &address.region, &address.country})
    if (!part->empty()) lines.append(lines.empty() ? u"" : u"\n").append(part->view());
  return lines;
}

// A code of 0 says nothing, though there is a word for it.
std::string_view WordUnless0(std::uint32_t code, std::string_view word) {
  return code == 0 ? std::string_view() : word;
}

void AddReach(FieldRows& rows, const CContact& contact) {
  for (const CTelephoneNumber& entry : contact.telephones())
    rows.Add("number", entry.number, TelephoneWords(entry.number_type));
  for (const CEmail& entry : contact.emails()) {
    rows.Add("mail", entry.email_address,
             WordUnless0(entry.email_type, EmailWord(entry.email_type)));
  }
  for (const CMessenger& entry : contact.messengers()) {
    rows.Add("messenger", entry.messenger_address,
             WordUnless0(entry.messenger_type, MessengerWord(entry.messenger_type)));
  }
  for (const CURL& entry : contact.urls())
    rows.Add("url", entry.url_address, WordUnless0(entry.url_type, UrlWord(entry.url_type)));
  for (const CPostalAddress& entry : contact.addresses())
    rows.Add("address", AddressLines(entry), AddressWords(entry.address_type));
}

void AddWork(FieldRows& rows, const CContact& contact) {
  for (const COrganization& entry : contact.organizations()) {
    rows.Add("organisation", entry.org_name,
             WordUnless0(entry.org_type, OrganizationWord(entry.org_type)));
    rows.Add("unit", entry.org_position);
    for (const WideText& unit : entry.org_additional) rows.Add("unit", unit);
  }
  rows.Add("title", contact.org_title);
  rows.Add("role", contact.org_role);
}

void AddRest(FieldRows& rows, const CContact& contact) {
  for (const CContactEvent& event : contact.contactEvents())
    rows.AddAscii(FieldOfDay(event.event_type), DayOfEvent(event.event_date));
  rows.AddAscii("blood-type", BloodWord(contact.blood_type));
  rows.Add("hobby", contact.hobby);
  for (const WideText& comment : contact.comments()) rows.Add("note", comment);
}

// Empty without one.
std::string FirstBirthday(const CContact& contact) {
  for (const CContactEvent& event : contact.contactEvents()) {
    if (event.event_type != EVENT_BIRTHDAY) continue;
    if (std::string day = DayOfEvent(event.event_date); !day.empty()) return day;
  }
  return {};
}

}  // namespace

void WriteRecord(JsonWriter& json, const CContact& contact, bool hasPicture,
                 const PlaceInFile* place) {
  const WideString name = AlbumName(contact);
  json.StartObject();
  json.Field("name", WideStringView(name));
  if (const WideString shortName = ShortAlbumName(contact); !shortName.empty() && shortName != name)
    json.Field("short", WideStringView(shortName));
  json.Field("sort", WideStringView(SortName(contact)));
  if (const WideString phonetic = PhoneticAlbumName(contact); !phonetic.empty())
    json.Field("phonetic", WideStringView(phonetic));
  if (contact.favorite != 0) json.Field("favourite", true);
  if (!contact.groups().empty()) json.Values("groups", contact.groups());
  {
    FieldRows rows(json);
    if (contact.formatted_name != WideStringView(name))
      rows.Add("full-name", contact.formatted_name);
    for (const WideText& nickname : contact.nicknames()) rows.Add("nickname", nickname);
    AddReach(rows, contact);
    AddWork(rows, contact);
    AddRest(rows, contact);
  }
  if (const std::string day = FirstBirthday(contact); !day.empty()) json.Utf8Field("birthday", day);
  if (hasPicture) json.Field("picture", true);
  WritePlace(json, place);
  json.EndObject();
}

}  // namespace pim::app
