// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <string>

#include "formats/vcard4/VCardRows.h"
#include "pim/records/Contact.h"
#include "pim/support/Strings.h"

namespace pim {

// The parts of a name in the order of N, each with the property of its pronunciation.
struct NamePart {
  NarrowStringView member;
  WideText CName::*text;
  CardProperty phonetic;
};
inline constexpr std::array<NamePart, 5> kPersonNameParts = {{
    {"family_name", &CName::family_name, CardProperty::PhoneticFamily},
    {"given_name", &CName::given_name, CardProperty::PhoneticGiven},
    {"additional_name", &CName::additional_name, CardProperty::PhoneticMiddle},
    {"prefix_name", &CName::prefix_name, CardProperty::PhoneticPrefix},
    {"suffix_name", &CName::suffix_name, CardProperty::PhoneticSuffix},
}};

// The parts of an address in the order of ADR.
struct AddressPart {
  NarrowStringView member;
  WideText CPostalAddress::*text;
};
inline constexpr std::array<AddressPart, 7> kPostalParts = {{
    {"post_office", &CPostalAddress::post_office},
    {"extended_address", &CPostalAddress::extended_address},
    {"street", &CPostalAddress::street},
    {"locality", &CPostalAddress::locality},
    {"region", &CPostalAddress::region},
    {"postal_code", &CPostalAddress::postal_code},
    {"country", &CPostalAddress::country},
}};

// What stands for a contact without a formatted name: its name as one says it, else the first of
// nickname, organization, address and number. Never empty. Holds as long as both do.
WideStringView NameOf(const CContact& contact, WideString& work);

// The UUID of what a contact says of a person. Its groups, the star of a favourite, its picture's
// file name and its stamps may change without making it another one.
std::string UuidOf(const CContact& contact);

// Of the group of that name.
std::string UuidOfGroup(WideStringView name);

}  // namespace pim
