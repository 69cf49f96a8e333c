// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "vcard/VCardWriter.h"

#include <array>
#include <limits>
#include <vector>

#include "stream/ObjectWords.h"
#include "support/DateTimeText.h"
#include "support/PropertyLines.h"
#include "support/QuotedPrintable.h"
#include "vcard/PhotoMedia.h"
#include "vcard/VCardWords.h"

namespace pim {

// One card is a frame of two lines, the properties in one fixed order, and a last line without an
// end. PropertyLines knows how a value of each kind becomes a line; this file knows which field
// goes out under which name, with the words of VCardWords.h that the reader takes back.
//
// Devices of the time want telephone numbers bare: in their own code page, with no parameters for
// it and nothing escaped. Their type words stand without TYPE=, which few of them read.

namespace {

constexpr NarrowStringView kVersion = "2.1";

consteval NarrowStringView NameOf(VCardPropertyId id) {
  return TextOf(kVCardProperties, static_cast<std::uint32_t>(id));
}

constexpr WordParameters kTelephoneParameters(kTelephoneWords);
constexpr WordParameters kAddressParameters(kAddressWords);
constexpr WordParameters kEmailParameters(kEmailWords);
constexpr WordParameters kUrlParameters(kUrlWords);
constexpr WordParameters kOrganizationParameters(kOrganizationWords);
constexpr WordParameters kMessengerParameters(kMessengerWords);

void AppendTextUnlessEmpty(PropertyLines& card, NarrowStringView name, WideStringView text) {
  if (!text.empty()) card.AppendText(name, {}, text);
}

void AppendName(PropertyLines& card, NarrowStringView property, const CName& name) {
  if (name.IsEmpty()) return;
  card.AppendComponents(
      property, {},
      std::array<WideStringView, 5>{name.family_name, name.given_name, name.additional_name,
                                    name.prefix_name, name.suffix_name});
}

void AppendAddress(PropertyLines& card, const CPostalAddress& address) {
  if (address.IsEmpty()) return;
  decltype(kAddressParameters)::Work work;
  card.AppendComponents(
      NameOf(VCARD_ADR), kAddressParameters.OfMask(address.address_type, work),
      std::array<WideStringView, 7>{address.post_office, address.extended_address, address.street,
                                    address.locality, address.region, address.postal_code,
                                    address.country});
}

void AppendOrganization(PropertyLines& card, const COrganization& organization) {
  if (organization.IsEmpty()) return;
  std::vector<WideStringView> components = {organization.org_name, organization.org_position};
  components.insert(components.end(), organization.org_additional.begin(),
                    organization.org_additional.end());
  card.AppendComponents(NameOf(VCARD_ORG), kOrganizationParameters.Of(organization.org_type),
                        components);
}

NarrowStringView EventProperty(std::uint32_t type) {
  switch (type) {
    case EVENT_BIRTHDAY:
      return NameOf(VCARD_BDAY);
    case EVENT_ANNIVERSARY:
      return NameOf(VCARD_X_ANNI);
    default:
      return NameOf(VCARD_X_EVENTDAY);
  }
}

void AppendEvent(PropertyLines& card, const CContactEvent& event) {
  if (event.event_date.status == StatusNull) return;
  card.Append(EventProperty(event.event_type), {}, DateTimeText(event.event_date).AddDate());
}

// A number goes out as devices expect it: in the default code page, with no parameters for it.
void AppendTelephone(PropertyLines& card, const CTelephoneNumber& telephone) {
  if (telephone.IsEmpty()) return;
  decltype(kTelephoneParameters)::Work work;
  card.AppendRaw(NameOf(VCARD_TEL), kTelephoneParameters.OfMask(telephone.number_type, work),
                 telephone.number);
}

void AppendBlood(PropertyLines& card, std::int32_t code) {
  const NarrowStringView word = TextOf(kBloodWords, static_cast<std::uint32_t>(code));
  if (!word.empty() || code == BLOOD_UNNAMED) card.Append(NameOf(VCARD_X_BLOOD), {}, word);
}

void AppendLists(PropertyLines& card, const CContact& contact) {
  for (const WideText& nickname : contact.nicknames())
    AppendTextUnlessEmpty(card, NameOf(VCARD_NICKNAME), nickname);
  for (const CContactEvent& event : contact.contactEvents()) AppendEvent(card, event);
  for (const CTelephoneNumber& telephone : contact.telephones()) AppendTelephone(card, telephone);
  for (const CEmail& email : contact.emails()) {
    if (!email.IsEmpty()) {
      card.AppendText(NameOf(VCARD_EMAIL), kEmailParameters.Of(email.email_type),
                      email.email_address);
    }
  }
  for (const CMessenger& messenger : contact.messengers()) {
    if (!messenger.IsEmpty()) {
      card.AppendText(NameOf(VCARD_X_CHATID), kMessengerParameters.Of(messenger.messenger_type),
                      messenger.messenger_address);
    }
  }
  for (const CURL& url : contact.urls()) {
    if (!url.IsEmpty())
      card.AppendText(NameOf(VCARD_URL), kUrlParameters.Of(url.url_type), url.url_address);
  }
  for (const CPostalAddress& address : contact.addresses()) AppendAddress(card, address);
  for (const WideText& comment : contact.comments())
    AppendTextUnlessEmpty(card, NameOf(VCARD_NOTE), comment);
}

}  // namespace

void WriteVCard(const CContact& contact, VObjectBuffer& data) {
  constexpr std::size_t kUsualSize = 2048;
  NarrowString text;
  text.reserve(kUsualSize);
  PropertyLines card(text);
  card.Append(NameOf(VCARD_BEGIN), {}, kContactObject.text);
  card.Append(NameOf(VCARD_VERSION), {}, kVersion);
  AppendName(card, NameOf(VCARD_N), contact.name);
  AppendTextUnlessEmpty(card, NameOf(VCARD_FN), contact.formatted_name);
  AppendName(card, NameOf(VCARD_SOUND), contact.phonetic);
  AppendLists(card, contact);
  AppendTextUnlessEmpty(card, NameOf(VCARD_TITLE), contact.org_title);
  AppendTextUnlessEmpty(card, NameOf(VCARD_ROLE), contact.org_role);
  for (const COrganization& organization : contact.organizations())
    AppendOrganization(card, organization);
  AppendBlood(card, contact.blood_type);
  AppendTextUnlessEmpty(card, NameOf(VCARD_X_HOBBY), contact.hobby);
  AppendPhoto(text, contact.photo);
  for (const WideText& group : contact.groups())
    AppendTextUnlessEmpty(card, NameOf(VCARD_X_GROUP), group);
  if (contact.favorite != 0) card.Append(NameOf(VCARD_X_FAVORITE), {}, kYesWord);
  text.append(kEndWord).append(1, ':').append(kContactObject.text);
  if (text.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()))
    throw SizeOverflow();
  data.tag = static_cast<std::uint16_t>(contact.tag);
  data.bytes.Assign(text.data(), text.size());
}

}  // namespace pim
