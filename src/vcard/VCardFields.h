// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <iterator>

#include "vcard/VCardWords.h"

namespace pim {

// Where a contact keeps the values of its text: the fields in the order of record dumps, and what
// each property of vCard text is read as.

enum ContactField : std::uint8_t {
  FIELD_FAVORITE,
  FIELD_NAME,
  FIELD_PHONETIC,
  FIELD_FORMATTED_NAME,
  FIELD_BLOOD_TYPE,
  FIELD_HOBBY,
  FIELD_ORG_TITLE,
  FIELD_ORG_ROLE,
  FIELD_PHOTO,
  FIELD_TELEPHONES,
  FIELD_EMAILS,
  FIELD_MESSENGERS,
  FIELD_URLS,
  FIELD_ADDRESSES,
  FIELD_ORGANIZATIONS,
  FIELD_EVENTS,
  FIELD_NICKNAMES,
  FIELD_COMMENTS,
  FIELD_GROUPS,
};
inline constexpr NarrowStringView kContactFields[] = {
    "favorite",      "name",   "phonetic",   "formatted_name", "blood_type", "hobby", "org_title",
    "org_role",      "photo",  "telephones", "emails",         "messengers", "urls",  "addresses",
    "organizations", "events", "nicknames",  "comments",       "groups",
};
static_assert(std::size(kContactFields) == FIELD_GROUPS + 1);

// The places of single values: those fields that are no lists, by their numbers, but for the two
// names, of which each of the five parts is one.
inline constexpr std::uint8_t kNameParts = 5;
enum ContactPlace : std::uint8_t {
  PLACE_NAME = FIELD_PHOTO + 1,
  PLACE_FAMILY_NAME = PLACE_NAME,
  PLACE_GIVEN_NAME,
  PLACE_PHONETIC = PLACE_NAME + kNameParts,
};
inline constexpr std::uint8_t kContactPlaceCount = PLACE_PHONETIC + kNameParts;
inline constexpr auto kContactPlaces = [] {
  std::array<std::uint8_t, kContactPlaceCount> fields{};
  for (std::uint8_t place = 0; place < PLACE_NAME; ++place) fields[place] = place;
  for (std::size_t part = 0; part < kNameParts; ++part) {
    fields[PLACE_NAME + part] = FIELD_NAME;
    fields[PLACE_PHONETIC + part] = FIELD_PHONETIC;
  }
  return fields;
}();

enum class VCardValue : std::uint8_t {
  Text,
  RawText,  // in the default code page, whatever the parameters say
  Name,     // five parts
  Address,  // seven
  Parts,    // any number
  Date,     // a day
  Word,     // one of a table
  YesOrNo,
  Picture,
};

struct VCardFieldRow {
  VCardPropertyId property;
  ContactField field;
  VCardValue value;
};
inline constexpr VCardFieldRow kVCardFields[] = {
    {VCARD_FN, FIELD_FORMATTED_NAME, VCardValue::Text},
    {VCARD_N, FIELD_NAME, VCardValue::Name},
    {VCARD_NICKNAME, FIELD_NICKNAMES, VCardValue::Text},
    {VCARD_SOUND, FIELD_PHONETIC, VCardValue::Name},
    {VCARD_BDAY, FIELD_EVENTS, VCardValue::Date},
    {VCARD_X_BLOOD, FIELD_BLOOD_TYPE, VCardValue::Word},
    {VCARD_TEL, FIELD_TELEPHONES, VCardValue::RawText},
    {VCARD_EMAIL, FIELD_EMAILS, VCardValue::Text},
    {VCARD_URL, FIELD_URLS, VCardValue::Text},
    {VCARD_ADR, FIELD_ADDRESSES, VCardValue::Address},
    {VCARD_NOTE, FIELD_COMMENTS, VCardValue::Text},
    {VCARD_TITLE, FIELD_ORG_TITLE, VCardValue::Text},
    {VCARD_ROLE, FIELD_ORG_ROLE, VCardValue::Text},
    {VCARD_ORG, FIELD_ORGANIZATIONS, VCardValue::Parts},
    {VCARD_X_HOBBY, FIELD_HOBBY, VCardValue::Text},
    {VCARD_PHOTO, FIELD_PHOTO, VCardValue::Picture},
    {VCARD_X_GROUP, FIELD_GROUPS, VCardValue::Text},
    {VCARD_X_CHATID, FIELD_MESSENGERS, VCardValue::Text},
    {VCARD_X_ANNI, FIELD_EVENTS, VCardValue::Date},
    {VCARD_X_EVENTDAY, FIELD_EVENTS, VCardValue::Date},
    {VCARD_X_FAVORITE, FIELD_FAVORITE, VCardValue::YesOrNo},
};

// The row of a property that isn't the frame's.
constexpr const VCardFieldRow& RowOf(VCardPropertyId property) {
  return kVCardFields[property - VCARD_FN];
}

// No property that is read lacks its row.
static_assert(std::ranges::all_of(kVCardProperties, [](const Word& word) {
  const auto property = static_cast<VCardPropertyId>(word.code);
  return property == VCARD_BEGIN || property == VCARD_VERSION ||
         RowOf(property).property == property;
}));

}  // namespace pim
