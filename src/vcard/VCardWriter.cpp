#include "vcard/VCardWriter.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <initializer_list>
#include <limits>
#include <span>

#include "support/TextCodec.h"
#include "vcard/PhotoMedia.h"
#include "vcard/VCardWords.h"

namespace pim {
namespace {

constexpr NarrowStringView kHead = "BEGIN:VCARD\r\nVERSION:2.1\r\n";
constexpr NarrowStringView kTail = "END:VCARD";

NarrowString MaskParameters(std::span<const Word> words, std::uint32_t mask) {
  NarrowString parameters;
  for (const Word& word : words)
    if ((mask & word.code) != 0) parameters.append(1, ';').append(word.text);
  return parameters;
}

NarrowString CodeParameter(std::span<const Word> words, std::uint32_t code) {
  const NarrowStringView word = TextOf(words, code);
  return word.empty() ? NarrowString() : NarrowString(1, ';').append(word);
}

// The text under construction, with the work strings that all its properties share.
class CardText {
 public:
  CardText() : text_(kHead) {}

  void Append(VCardPropertyId id, NarrowStringView parameters, NarrowStringView value) {
    AppendProperty(text_, TextOf(kVCardProperties, static_cast<std::uint32_t>(id)), parameters,
                   value);
  }

  // A text value goes out without backslashes: a semicolon in it divides nothing.
  void AppendText(VCardPropertyId id, NarrowString parameters, WideStringView text) {
    EncodeText(text, encoded_);
    if (NeedsTextParameters(encoded_)) parameters.append(TextParameters());
    Append(id, parameters, encoded_);
  }

  void AppendTextUnlessEmpty(VCardPropertyId id, WideStringView text) {
    if (!text.empty()) AppendText(id, {}, text);
  }

  // Components are joined after each has been encoded and its own semicolons escaped. Empty ones
  // stand too.
  void AddComponent(WideStringView text) {
    EncodeText(text, encoded_);
    needsParameters_ = needsParameters_ || NeedsTextParameters(encoded_);
    EscapeValue(encoded_);
    if (componentCount_++ != 0) value_.append(1, ';');
    value_.append(encoded_);
  }
  void AppendComponents(VCardPropertyId id, NarrowString parameters) {
    if (needsParameters_) parameters.append(TextParameters());
    Append(id, parameters, value_);
    value_.clear();
    needsParameters_ = false;
    componentCount_ = 0;
  }

  NarrowString& text() { return text_; }

 private:
  NarrowString text_;
  NarrowString encoded_;
  NarrowString value_;
  bool needsParameters_ = false;
  std::size_t componentCount_ = 0;
};

void AppendName(CardText& card, VCardPropertyId id, const CName& name) {
  if (name.IsEmpty()) return;
  for (const WideText* part : {&name.family_name, &name.given_name, &name.additional_name,
                               &name.prefix_name, &name.suffix_name})
    card.AddComponent(*part);
  card.AppendComponents(id, {});
}

void AppendAddress(CardText& card, const CPostalAddress& address) {
  if (address.IsEmpty()) return;
  for (const WideText* part :
       {&address.post_office, &address.extended_address, &address.street, &address.locality,
        &address.region, &address.postal_code, &address.country})
    card.AddComponent(*part);
  card.AppendComponents(VCARD_ADR, MaskParameters(kAddressWords, address.address_type));
}

void AppendOrganization(CardText& card, const COrganization& organization) {
  if (organization.IsEmpty()) return;
  card.AddComponent(organization.org_name);
  card.AddComponent(organization.org_position);
  for (const WideText& unit : organization.org_additional) card.AddComponent(unit);
  card.AppendComponents(VCARD_ORG, CodeParameter(kOrganizationWords, organization.org_type));
}

VCardPropertyId EventProperty(std::uint32_t type) {
  switch (type) {
    case EVENT_BIRTHDAY:
      return VCARD_BDAY;
    case EVENT_ANNIVERSARY:
      return VCARD_X_ANNI;
    default:
      return VCARD_X_EVENTDAY;
  }
}

void AppendEvent(CardText& card, const CContactEvent& event) {
  const COleDateTimeNull& date = event.event_date;
  if (date.status == StatusNull) return;
  std::array<char, 40> day{};
  std::snprintf(day.data(), day.size(), "%04d%02d%02d", date.GetYear(), date.GetMonth(),
                date.GetDay());
  card.Append(EventProperty(event.event_type), {}, day.data());
}

// A number goes out as devices expect it: in the default code page, with no parameters for it.
void AppendTelephone(CardText& card, const CTelephoneNumber& telephone) {
  if (telephone.IsEmpty()) return;
  NarrowString number;
  NarrowText(telephone.number, number);
  // A line break would end the property, and what stands behind it would be read as another.
  std::ranges::replace_if(
      number, [](char c) { return c == '\r' || c == '\n'; }, ' ');
  card.Append(VCARD_TEL, MaskParameters(kTelephoneWords, telephone.number_type), number);
}

void AppendBlood(CardText& card, std::int32_t code) {
  const NarrowStringView word = TextOf(kBloodWords, static_cast<std::uint32_t>(code));
  if (!word.empty() || code == BLOOD_UNNAMED) card.Append(VCARD_X_BLOOD, {}, word);
}

void AppendLists(CardText& card, const CContact& contact) {
  for (const WideText& nickname : contact.nicknames())
    card.AppendTextUnlessEmpty(VCARD_NICKNAME, nickname);
  for (const CContactEvent& event : contact.contactEvents()) AppendEvent(card, event);
  for (const CTelephoneNumber& telephone : contact.telephones()) AppendTelephone(card, telephone);
  for (const CEmail& email : contact.emails()) {
    if (!email.IsEmpty()) {
      card.AppendText(VCARD_EMAIL, CodeParameter(kEmailWords, email.email_type),
                      email.email_address);
    }
  }
  for (const CMessenger& messenger : contact.messengers()) {
    if (!messenger.IsEmpty()) {
      card.AppendText(VCARD_X_CHATID, CodeParameter(kMessengerWords, messenger.messenger_type),
                      messenger.messenger_address);
    }
  }
  for (const CURL& url : contact.urls()) {
    if (!url.IsEmpty())
      card.AppendText(VCARD_URL, CodeParameter(kUrlWords, url.url_type), url.url_address);
  }
  for (const CPostalAddress& address : contact.addresses()) AppendAddress(card, address);
  for (const WideText& comment : contact.comments())
    card.AppendTextUnlessEmpty(VCARD_NOTE, comment);
}

}  // namespace

void WriteVCard(const CContact& contact, VObjectBuffer& data) {
  data.tag = static_cast<std::uint16_t>(contact.tag);
  CardText card;
  AppendName(card, VCARD_N, contact.name);
  card.AppendTextUnlessEmpty(VCARD_FN, contact.formatted_name);
  AppendName(card, VCARD_SOUND, contact.phonetic);
  AppendLists(card, contact);
  card.AppendTextUnlessEmpty(VCARD_TITLE, contact.org_title);
  card.AppendTextUnlessEmpty(VCARD_ROLE, contact.org_role);
  for (const COrganization& organization : contact.organizations())
    AppendOrganization(card, organization);
  AppendBlood(card, contact.blood_type);
  card.AppendTextUnlessEmpty(VCARD_X_HOBBY, contact.hobby);
  AppendPhoto(card.text(), contact.photo);
  for (const WideText& group : contact.groups()) card.AppendTextUnlessEmpty(VCARD_X_GROUP, group);
  if (contact.favorite != 0) card.Append(VCARD_X_FAVORITE, {}, kYesWord);
  card.text().append(kTail);
  if (card.text().size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()))
    throw SizeOverflow();
  data.bytes.Assign(card.text().data(), card.text().size());
}

}  // namespace pim
