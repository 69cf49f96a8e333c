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
  for (const WideText& text : texts) uuid.Add(text.view());
}

void AddName(UuidMaker& uuid, const CName& name) {
  if (name.IsEmpty()) return;
  for (const NamePart& part : kPersonNameParts) uuid.Add((name.*part.text).view());
}

// Two numbers of 32 bits at once.
void AddPair(UuidMaker& uuid, std::size_t a, std::size_t b) {
  uuid.Add(std::uint64_t{a} << 32 | std::uint64_t{b});
}

// What there is of all that may be missing, so that the rest needs no mark for it.
void AddCounts(UuidMaker& uuid, const CContact& contact) {
  uuid.Add(std::uint64_t{static_cast<std::uint32_t>(contact.blood_type)} << 2 |
           (contact.name.IsEmpty() ? 2U : 0U) | (contact.phonetic.IsEmpty() ? 1U : 0U));
  AddPair(uuid, contact.nicknames().size(), contact.comments().size());
  AddPair(uuid, contact.telephones().size(), contact.emails().size());
  AddPair(uuid, contact.messengers().size(), contact.urls().size());
  AddPair(uuid, contact.addresses().size(), contact.organizations().size());
  uuid.Add(contact.contactEvents().size());
}

void AddLists(UuidMaker& uuid, const CContact& contact) {
  const auto add = [&uuid](std::uint32_t type, const WideText& text) {
    uuid.Add(type);
    uuid.Add(text.view());
  };
  for (const CTelephoneNumber& entry : contact.telephones()) add(entry.number_type, entry.number);
  for (const CEmail& entry : contact.emails()) add(entry.email_type, entry.email_address);
  for (const CMessenger& entry : contact.messengers())
    add(entry.messenger_type, entry.messenger_address);
  for (const CURL& entry : contact.urls()) add(entry.url_type, entry.url_address);
  for (const CPostalAddress& address : contact.addresses()) {
    uuid.Add(address.address_type);
    for (const AddressPart& part : kPostalParts) uuid.Add((address.*part.text).view());
  }
  for (const COrganization& organization : contact.organizations()) {
    add(organization.org_type, organization.org_name);
    uuid.Add(organization.org_position.view());
    uuid.Add(organization.org_additional.size());
    AddTexts(uuid, organization.org_additional);
  }
  for (const CContactEvent& event : contact.contactEvents()) {
    uuid.Add(event.event_type);
    uuid.Add(std::bit_cast<std::uint64_t>(event.event_date.value));
  }
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
  AddCounts(uuid, contact);
  AddName(uuid, contact.name);
  AddName(uuid, contact.phonetic);
  uuid.Add(contact.formatted_name.view());
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
