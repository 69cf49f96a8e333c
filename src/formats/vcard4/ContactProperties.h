// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <span>

#include "formats/vcard4/ContactNaming.h"
#include "formats/vcard4/DayText.h"
#include "formats/vcard4/RecordLosses.h"
#include "formats/vcard4/UriText.h"
#include "formats/vcard4/VCardRows.h"
#include "pim/manager/TypeWords.h"
#include "pim/records/Contact.h"
#include "support/Base64.h"
#include "support/CallerIdPictures.h"

namespace pim {

// One walk over a contact that gives its fields as properties to a sink, which has the operations
// of CardLines: so that a field stands once for all forms.
template <class Sink>
class ContactProperties {
 public:
  ContactProperties(Sink& sink, const TellFormatLoss& tell) : sink_(sink), losses_(tell) {}

  void Give(const CContact& contact, NarrowStringView uuid) {
    GiveFrame(contact, uuid);
    GiveNames(contact);
    GiveEvents(contact);
    GiveNumbers(contact);
    GiveAddresses(contact);
    GiveTexts(contact.comments(), CardProperty::Note, "comments");
    GiveText(CardProperty::Title, {"org_title"}, contact.org_title);
    GiveText(CardProperty::Role, {"org_role"}, contact.org_role);
    GiveOrganizations(contact);
    GiveBlood(contact.blood_type);
    GiveText(CardProperty::Hobby, {"hobby"}, contact.hobby);
    GivePhoto(contact.photo);
    GiveList(contact.groups(), CardProperty::Categories, "groups");
    if (contact.favorite != 0) {
      sink_.Start(CardProperty::Favorite);
      sink_.Ascii(kFavoriteWord);
    }
  }

 private:
  void GiveFrame(const CContact& contact, NarrowStringView uuid) {
    sink_.Start(CardProperty::ProductId);
    sink_.Ascii(kProductId);
    sink_.Start(CardProperty::Uid);
    sink_.Ascii(kUuidStart, uuid);
    if (const auto stamp = contact.modified_time.GetFields()) {
      sink_.Start(CardProperty::Revision);
      sink_.Ascii(DayText(*stamp, sink_.HasExtendedDates()).AddDay().AddTime().view());
    }
  }

  void Part(const FieldName& field, WideStringView text) { losses_.Tell(field, sink_.Part(text)); }
  // Ends a property whose value is one text.
  void Text(const FieldName& field, WideStringView text, ValueShape shape = ValueShape::Text) {
    sink_.StartValue(shape, 1);
    Part(field, text);
    sink_.EndValue();
  }
  void GiveText(CardProperty property, const FieldName& field, WideStringView text) {
    if (text.empty()) return;
    sink_.Start(property);
    Text(field, text);
  }
  void GiveTexts(const RecordList<WideText>& texts, CardProperty property, NarrowStringView list) {
    for (std::size_t i = 0; i < texts.size(); ++i) GiveText(property, {list, i}, texts[i]);
  }
  void GiveList(const RecordList<WideText>& texts, CardProperty property, NarrowStringView list) {
    const auto count = static_cast<std::size_t>(
        std::ranges::count_if(texts, [](const WideText& text) { return !text.empty(); }));
    if (count == 0) return;
    sink_.Start(property);
    sink_.StartValue(ValueShape::List, count);
    for (std::size_t i = 0; i < texts.size(); ++i)
      if (!texts[i].empty()) Part({list, i}, texts[i]);
    sink_.EndValue();
  }

  void GiveNames(const CContact& contact) {
    sink_.Start(CardProperty::FormattedName);
    if (contact.formatted_name.empty()) {
      sink_.Derived();
      sink_.StartValue(ValueShape::Text, 1);
      sink_.Part(NameOf(contact, work_));
      sink_.EndValue();
    } else {
      Text({"formatted_name"}, contact.formatted_name);
    }
    sink_.Start(CardProperty::Name);
    sink_.StartValue(ValueShape::Structured, kPersonNameParts.size());
    for (const NamePart& part : kPersonNameParts)
      Part({"name", FieldName::kNoIndex, part.member}, contact.name.*part.text);
    sink_.EndValue();
    for (const NamePart& part : kPersonNameParts) {
      GiveText(part.phonetic, {"phonetic", FieldName::kNoIndex, part.member},
               contact.phonetic.*part.text);
    }
    GiveList(contact.nicknames(), CardProperty::Nickname, "nicknames");
  }

  // The first of a day's kind has the kind's own property.
  void GiveEvents(const CContact& contact) {
    bool hasBirthday = false;
    bool hasAnniversary = false;
    const RecordList<CContactEvent>& events = contact.contactEvents();
    for (std::size_t i = 0; i < events.size(); ++i) {
      CardProperty property = CardProperty::OtherDay;
      if (events[i].event_type == EVENT_BIRTHDAY) {
        property = hasBirthday ? CardProperty::FurtherBirthday : CardProperty::Birthday;
      } else if (events[i].event_type == EVENT_ANNIVERSARY) {
        property = hasAnniversary ? CardProperty::FurtherAnniversary : CardProperty::Anniversary;
      } else if (events[i].event_type != EVENT_OTHER) {
        losses_.Tell({"events", i, "event_type"}, FormatVerdict::Changed,
                     FormatReason::TypeIgnored);
      }
      if (!GiveDay(property, events[i].event_date, {"events", i, "event_date"})) continue;
      hasBirthday = hasBirthday || property == CardProperty::Birthday;
      hasAnniversary = hasAnniversary || property == CardProperty::Anniversary;
    }
  }
  bool GiveDay(CardProperty property, const COleDateTimeNull& date, const FieldName& field) {
    const auto day = date.GetFields();
    losses_.TellDay(field, day);
    if (!day) return false;
    sink_.Start(property);
    sink_.Ascii(DayText(*day, sink_.HasExtendedDates()).AddDay().view());
    return true;
  }

  // The bits of a mask that have words.
  void GiveTypes(std::span<const TypeRow> rows, std::uint32_t mask, std::uint32_t preferred,
                 const FieldName& field) {
    if ((mask & preferred) != 0) sink_.Preferred();
    mask &= ~preferred;
    for (const TypeRow& row : rows) {
      if (mask == 0) return;
      if ((mask & row.code) != 0) sink_.Type(row);
      mask &= ~row.code;
    }
    if (mask != 0) losses_.Tell(field, FormatVerdict::Changed, FormatReason::TypeIgnored);
  }
  void GiveType(std::span<const TypeRow> rows, std::uint32_t code, const FieldName& field) {
    if (const TypeRow* row = FindRow(rows, code)) {
      sink_.Type(*row);
    } else {
      losses_.Tell(field, FormatVerdict::Changed, FormatReason::TypeIgnored);
    }
  }

  // Whether the entry says nothing but its type, for which there is no property then.
  template <class Entry>
  bool IsLeftOut(const Entry& entry, std::uint32_t type, const FieldName& field) {
    if (!entry.IsEmpty()) return false;
    if (type != 0) losses_.Tell(field, FormatVerdict::Dropped, FormatReason::NoProperty);
    return true;
  }

  void GiveNumbers(const CContact& contact) {
    for (std::size_t i = 0; i < contact.telephones().size(); ++i) {
      const CTelephoneNumber& telephone = contact.telephones()[i];
      if (IsLeftOut(telephone, telephone.number_type, {"telephones", i})) continue;
      sink_.Start(CardProperty::Telephone);
      GiveTypes(kTelephoneRows, telephone.number_type, TEL_PREFERRED,
                {"telephones", i, "number_type"});
      Text({"telephones", i, "number"}, telephone.number);
    }
    for (std::size_t i = 0; i < contact.emails().size(); ++i) {
      const CEmail& email = contact.emails()[i];
      if (IsLeftOut(email, email.email_type, {"emails", i})) continue;
      sink_.Start(CardProperty::Email);
      GiveType(kEmailRows, email.email_type, {"emails", i, "email_type"});
      Text({"emails", i, "email_address"}, email.email_address);
    }
    for (std::size_t i = 0; i < contact.messengers().size(); ++i)
      GiveMessenger(contact.messengers()[i], i);
    for (std::size_t i = 0; i < contact.urls().size(); ++i) {
      const CURL& url = contact.urls()[i];
      if (IsLeftOut(url, url.url_type, {"urls", i})) continue;
      sink_.Start(CardProperty::Url);
      GiveType(kUrlRows, url.url_type, {"urls", i, "url_type"});
      Text({"urls", i, "url_address"}, url.url_address, ValueShape::Uri);
    }
  }
  void GiveMessenger(const CMessenger& messenger, std::size_t i) {
    if (IsLeftOut(messenger, messenger.messenger_type, {"messengers", i})) return;
    const MessengerRow* row = FindMessenger(messenger.messenger_type);
    if (row == nullptr) {
      losses_.Tell({"messengers", i, "messenger_type"}, FormatVerdict::Changed,
                   FormatReason::TypeIgnored);
      row = FindMessenger(MESSENGER_UNKNOWN);
    }
    sink_.Start(CardProperty::Messenger);
    if (!row->service.empty()) sink_.Service(row->service);
    losses_.Tell({"messengers", i, "messenger_address"},
                 MakeUriPart(messenger.messenger_address, uri_));
    sink_.Ascii(row->scheme, uri_);
  }

  void GiveAddresses(const CContact& contact) {
    for (std::size_t i = 0; i < contact.addresses().size(); ++i) {
      const CPostalAddress& address = contact.addresses()[i];
      if (IsLeftOut(address, address.address_type, {"addresses", i})) continue;
      sink_.Start(CardProperty::Address);
      GiveTypes(kAddressRows, address.address_type, ADR_PREFERRED,
                {"addresses", i, "address_type"});
      sink_.StartValue(ValueShape::Structured, kPostalParts.size());
      for (const AddressPart& part : kPostalParts)
        Part({"addresses", i, part.member}, address.*part.text);
      sink_.EndValue();
    }
  }
  void GiveOrganizations(const CContact& contact) {
    for (std::size_t i = 0; i < contact.organizations().size(); ++i) {
      const COrganization& organization = contact.organizations()[i];
      if (IsLeftOut(organization, organization.org_type, {"organizations", i})) continue;
      const auto units = static_cast<std::size_t>(std::ranges::count_if(
          organization.org_additional, [](const WideText& unit) { return !unit.empty(); }));
      const bool isNameAlone = units == 0 && organization.org_position.empty();
      sink_.Start(CardProperty::Organization);
      GiveType(kOrganizationRows, organization.org_type, {"organizations", i, "org_type"});
      sink_.StartValue(ValueShape::Structured, isNameAlone ? 1 : 2 + units);
      Part({"organizations", i, "org_name"}, organization.org_name);
      if (!isNameAlone) Part({"organizations", i, "org_position"}, organization.org_position);
      for (const WideText& unit : organization.org_additional)
        if (!unit.empty()) Part({"organizations", i, "org_additional"}, unit);
      sink_.EndValue();
    }
  }

  void GiveBlood(std::int32_t code) {
    const NarrowStringView word = BloodWord(code);
    if (!word.empty()) {
      sink_.Start(CardProperty::Blood);
      sink_.Ascii(word);
    } else if (code != BLOOD_NONE) {
      losses_.Tell({"blood_type"}, FormatVerdict::Dropped, FormatReason::BadValue);
    }
  }
  void GivePhoto(WideStringView photo) {
    if (photo.empty()) return;
    const NarrowString picture = ReadCallerIdPicture(photo);
    if (picture.empty())
      return losses_.Tell({"photo"}, FormatVerdict::Dropped, FormatReason::NoPicture);
    sink_.Start(CardProperty::Photo);
    sink_.Picture(MediaOf(photo, picture), Base64Encode(picture.data(), picture.size()));
  }

  Sink& sink_;
  RecordLosses losses_;
  WideString work_;
  NarrowString uri_;
};

}  // namespace pim
