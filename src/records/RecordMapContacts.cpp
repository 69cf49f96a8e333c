// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/records/Contact.h"
#include "records/RecordMap.h"

namespace pim {

namespace {

constexpr FieldMap kContactFields[] = {
    {"formatted_name", Field<CContact, &CContact::formatted_name>},
    {"given_name", Field<CContact, &CContact::name, &CName::given_name>},
    {"additional_name", Field<CContact, &CContact::name, &CName::additional_name>},
    {"family_name", Field<CContact, &CContact::name, &CName::family_name>},
    {"prefix_name", Field<CContact, &CContact::name, &CName::prefix_name>},
    {"suffix_name", Field<CContact, &CContact::name, &CName::suffix_name>},
    {"photo", FieldAs<PictureName, CContact, &CContact::photo>},
    {"created_time", FieldAs<WholeSeconds, CContact, &CContact::created_time>, FieldRole::Stamp},
    {"modified_time", FieldAs<WholeSeconds, CContact, &CContact::modified_time>, FieldRole::Stamp},
    {"org_title", Field<CContact, &CContact::org_title>},
    {"org_role", Field<CContact, &CContact::org_role>},
    {"blood_type", Field<CContact, &CContact::blood_type>},
    {"hobby", Field<CContact, &CContact::hobby>},
    {"favorite", Field<CContact, &CContact::favorite>},
    {"phonetic_given", Field<CContact, &CContact::phonetic, &CName::given_name>},
    {"phonetic_middle", Field<CContact, &CContact::phonetic, &CName::additional_name>},
    {"phonetic_family", Field<CContact, &CContact::phonetic, &CName::family_name>},
    {"xmodified_time", FieldAs<WholeSeconds, CContact, &CContact::xmodified_time>,
     FieldRole::Stamp},
    {"phonetic_prefix", Field<CContact, &CContact::phonetic, &CName::prefix_name>},
    {"phonetic_suffix", Field<CContact, &CContact::phonetic, &CName::suffix_name>},
    {"created_time_exact", FieldAs<ExactDay, CContact, &CContact::created_time>, FieldRole::Stamp},
    {"modified_time_exact", FieldAs<ExactDay, CContact, &CContact::modified_time>,
     FieldRole::Stamp},
    {"xmodified_time_exact", FieldAs<ExactDay, CContact, &CContact::xmodified_time>,
     FieldRole::Stamp},
};

constexpr FieldMap kNumberFields[] = {
    {"number_type", Field<CTelephoneNumber, &CTelephoneNumber::number_type>},
    {"number", Field<CTelephoneNumber, &CTelephoneNumber::number>},
};

constexpr FieldMap kEmailFields[] = {
    {"email_type", Field<CEmail, &CEmail::email_type>},
    {"email_address", Field<CEmail, &CEmail::email_address>},
};

constexpr FieldMap kUrlFields[] = {
    {"url_type", Field<CURL, &CURL::url_type>},
    {"url_address", Field<CURL, &CURL::url_address>},
};

constexpr FieldMap kAddressFields[] = {
    {"address_type", Field<CPostalAddress, &CPostalAddress::address_type>},
    {"country", Field<CPostalAddress, &CPostalAddress::country>},
    {"postal_code", Field<CPostalAddress, &CPostalAddress::postal_code>},
    {"region", Field<CPostalAddress, &CPostalAddress::region>},
    {"locality", Field<CPostalAddress, &CPostalAddress::locality>},
    {"street", Field<CPostalAddress, &CPostalAddress::street>},
    {"extended_address", Field<CPostalAddress, &CPostalAddress::extended_address>},
    {"post_office", Field<CPostalAddress, &CPostalAddress::post_office>},
};

constexpr FieldMap kNicknameFields[] = {{"nickname", Field<WideText>}};

constexpr FieldMap kMessengerFields[] = {
    {"messenger_type", Field<CMessenger, &CMessenger::messenger_type>},
    {"messenger_address", Field<CMessenger, &CMessenger::messenger_address>},
};

constexpr FieldMap kCommentFields[] = {{"comment", Field<WideText>}};

constexpr FieldMap kOrganizationFields[] = {
    {"org_type", Field<COrganization, &COrganization::org_type>},
    {"org_name", Field<COrganization, &COrganization::org_name>},
    {"org_position", Field<COrganization, &COrganization::org_position>},
    {"org_additional", Field<COrganization, &COrganization::org_additional>},
};

constexpr FieldMap kEventFields[] = {
    {"event_type", Field<CContactEvent, &CContactEvent::event_type>},
    {"event_date", FieldAs<WholeSeconds, CContactEvent, &CContactEvent::event_date>},
    {"event_date_exact", FieldAs<ExactDay, CContactEvent, &CContactEvent::event_date>},
};

}  // namespace

// The one reader of a contact's lists that may fill them in place.
struct ContactLists {
  static std::span<const ListMap> All() {
    static const ListMap lists[] = {
        VectorMap<CContact, &CContact::telephones_>("ContactNumbers", kNumberFields),
        VectorMap<CContact, &CContact::emails_>("ContactEmails", kEmailFields),
        VectorMap<CContact, &CContact::urls_>("ContactUrls", kUrlFields),
        VectorMap<CContact, &CContact::addresses_>("ContactAddresses", kAddressFields),
        VectorMap<CContact, &CContact::nicknames_>("ContactNicknames", kNicknameFields),
        VectorMap<CContact, &CContact::messengers_>("ContactMessengers", kMessengerFields),
        VectorMap<CContact, &CContact::comments_>("ContactComments", kCommentFields),
        VectorMap<CContact, &CContact::organizations_>("ContactOrganizations", kOrganizationFields),
        VectorMap<CContact, &CContact::events_>("ContactEvents", kEventFields),
        VectorMap<CContact, &CContact::xitems>("ContactXItems", XItemFields()),
    };
    return lists;
  }
};

const RecordMap& ContactMap() {
  static const RecordMap map{"Contacts", kContactFields, ContactLists::All()};
  return map;
}

}  // namespace pim
