// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/vcard4/ContactNaming.h"

#include <bit>

#include "formats/Uuid.h"

namespace pim {
namespace {

void AddWord(WideString& name, WideStringView word) {
  if (word.empty()) return;
  if (!name.empty()) name += u' ';
  name += word;
}

template <class List>
void AddTexts(UuidMaker& uuid, const List& texts) {
  uuid.Add(texts.size());
  for (const WideText& text : texts) uuid.Add(text.view());
}

void AddName(UuidMaker& uuid, const CName& name) {
  uuid.Add(std::uint64_t{name.IsEmpty()});
  if (name.IsEmpty()) return;
  for (const NamePart& part : kPersonNameParts) uuid.Add((name.*part.text).view());
}

template <class List, class AddEntry>
void AddEntries(UuidMaker& uuid, const List& entries, AddEntry addEntry) {
  uuid.Add(entries.size());
  for (const auto& entry : entries) addEntry(entry);
}

void AddLists(UuidMaker& uuid, const CContact& contact) {
  const auto add = [&uuid](std::uint32_t type, const WideText& text) {
    uuid.Add(type);
    uuid.Add(text.view());
  };
  AddEntries(uuid, contact.telephones(),
             [&](const CTelephoneNumber& entry) { add(entry.number_type, entry.number); });
  AddEntries(uuid, contact.emails(),
             [&](const CEmail& entry) { add(entry.email_type, entry.email_address); });
  AddEntries(uuid, contact.messengers(),
             [&](const CMessenger& entry) { add(entry.messenger_type, entry.messenger_address); });
  AddEntries(uuid, contact.urls(),
             [&](const CURL& entry) { add(entry.url_type, entry.url_address); });
  AddEntries(uuid, contact.addresses(), [&](const CPostalAddress& address) {
    uuid.Add(address.address_type);
    for (const AddressPart& part : kPostalParts) uuid.Add((address.*part.text).view());
  });
  AddEntries(uuid, contact.organizations(), [&](const COrganization& organization) {
    add(organization.org_type, organization.org_name);
    uuid.Add(organization.org_position.view());
    AddTexts(uuid, organization.org_additional);
  });
  AddEntries(uuid, contact.contactEvents(), [&](const CContactEvent& event) {
    uuid.Add(event.event_type);
    uuid.Add(std::bit_cast<std::uint64_t>(event.event_date.value));
  });
}

}  // namespace

WideStringView NameOf(const CContact& contact, WideString& work) {
  const CName& name = contact.name;
  work.clear();
  for (const WideText* word : {&name.prefix_name, &name.given_name, &name.additional_name,
                               &name.family_name, &name.suffix_name})
    AddWord(work, *word);
  if (!work.empty()) return work;
  const auto firstOf = [&work](const auto& list, auto textOf) {
    for (const auto& entry : list)
      if (work.empty()) work = WideStringView(textOf(entry));
  };
  const auto itself = [](const WideText& text) { return text.view(); };
  firstOf(contact.nicknames(), itself);
  firstOf(contact.organizations(),
          [](const COrganization& entry) { return entry.org_name.view(); });
  firstOf(contact.emails(), [](const CEmail& entry) { return entry.email_address.view(); });
  firstOf(contact.telephones(), [](const CTelephoneNumber& entry) { return entry.number.view(); });
  if (work.empty()) work = u"?";
  return work;
}

std::string UuidOf(const CContact& contact) {
  UuidMaker uuid;
  AddName(uuid, contact.name);
  AddName(uuid, contact.phonetic);
  uuid.Add(contact.formatted_name.view());
  uuid.Add(static_cast<std::uint32_t>(contact.blood_type));
  for (const WideText* text : {&contact.hobby, &contact.org_title, &contact.org_role})
    uuid.Add(text->view());
  AddTexts(uuid, contact.nicknames());
  AddTexts(uuid, contact.comments());
  AddLists(uuid, contact);
  return uuid.Text();
}

std::string UuidOfGroup(WideStringView name) {
  UuidMaker uuid;
  uuid.Add(kGroupKind);
  uuid.Add(name);
  return uuid.Text();
}

}  // namespace pim
