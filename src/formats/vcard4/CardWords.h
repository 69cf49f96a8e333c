// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <span>

#include "formats/vcard4/CardText.h"
#include "formats/vcard4/VCardRows.h"

namespace pim {

// What cards of vCard 3.0 and 4.0 call things by, besides what is written (VCardRows.h).

inline constexpr Word kTelephoneAliases[] = {
    {"mobile", TEL_CELL},
    {"homefax", TEL_HOME | TEL_FAX},
    {"home fax", TEL_HOME | TEL_FAX},
    {"workfax", TEL_WORK | TEL_FAX},
    {"work fax", TEL_WORK | TEL_FAX},
    {"otherfax", TEL_OTHER | TEL_FAX},
};
// Words that say more than what they are taken for.
inline constexpr Word kNearTelephoneWords[] = {
    {"iphone", TEL_CELL}, {"apple watch", TEL_CELL}, {"pcs", TEL_CELL}};
inline constexpr Word kEmailAliases[] = {
    {"private", EMAIL_PRIVATE}, {"personal", EMAIL_PRIVATE}, {"cell", EMAIL_MOBILE}};
inline constexpr Word kUrlAliases[] = {{"homepage", URL_PRIVATE}, {"private", URL_PRIVATE}};

// 2.1's own words for messengers.
inline constexpr TypeRow kChatRows[] = {
    {MESSENGER_GOOGLE_TALK, "", "GoogleTalk"},
    {MESSENGER_AIM, "", "AIM"},
    {MESSENGER_WINDOW, "", "Window"},
    {MESSENGER_YAHOO, "", "Yahoo"},
    {MESSENGER_JABBER, "", "Jabber"},
    {MESSENGER_SKYPE, "", "Skype"},
    {MESSENGER_QQ, "", "QQ"},
    {MESSENGER_ICQ, "", "ICQ"},
    {MESSENGER_OTHER, "", "Other"},
    {MESSENGER_CUSTOM, "", "Custom"},
};

// One kind of types: its rows, further words, and words that say nothing.
struct TypeWords {
  std::span<const TypeRow> rows;
  std::span<const Word> aliases;
  NarrowStringView idle;
  bool isMask;
  std::span<const Word> near = {};  // words whose codes are less than they say
};
inline constexpr TypeWords kTelephoneTypes = {kTelephoneRows, kTelephoneAliases, "", true,
                                              kNearTelephoneWords};
inline constexpr TypeWords kAddressTypes = {kAddressRows, {}, "", true};
inline constexpr TypeWords kEmailTypes = {kEmailRows, kEmailAliases, "internet", false};
inline constexpr TypeWords kUrlTypes = {kUrlRows, kUrlAliases, "", false};
inline constexpr TypeWords kOrganizationTypes = {kOrganizationRows, {}, "", false};
inline constexpr TypeWords kChatTypes = {kChatRows, {}, "", false};  // of 2.1's own property
inline constexpr TypeWords kNoTypes = {{}, {}, "", true};

// What a property's parameters, and its label where it has one, say of its type.
struct TypesRead {
  std::uint32_t code = 0;
  bool isPreferred = false;
  bool isWhole = true;       // else some word has no effect
  bool isLabelUsed = false;  // the label was one of the known words
};
TypesRead ReadTypes(const TypeWords& words, const CardLine& line, NarrowStringView label);

// Names that other programs have for what a row tells.
struct PropertyAlias {
  NarrowStringView name;
  CardProperty property;
};
inline constexpr PropertyAlias kPropertyAliases[] = {
    {"X-ABDATE", CardProperty::OtherDay},
    {"X-EVOLUTION-ANNIVERSARY", CardProperty::Anniversary},
    {"X-KADDRESSBOOK-X-ANNIVERSARY", CardProperty::Anniversary},
};
std::optional<CardProperty> PropertyOf(NarrowStringView name);

// Labels stand in a property of their own, with the group of what they name.
inline constexpr NarrowStringView kLabelProperty = "X-ABLabel";
// What a label says, without the marks of a known one ("_$!<Home>!$_").
NarrowStringView LabelText(NarrowStringView value);
inline constexpr NarrowStringView kAnniversaryLabel = "Anniversary";

// A messenger's address with its type. `isWhole` is false when the messenger is another one than
// those known.
struct MessengerRead {
  NarrowString address;
  std::uint32_t type = MESSENGER_UNKNOWN;
  bool isWhole = true;
};
MessengerRead ReadMessenger(const CardLine& line, NarrowStringView text);
// Of a property that names the messenger itself ("X-JABBER").
std::optional<std::uint32_t> MessengerOf(NarrowStringView property);

// A day in 2.1's form, YYYYMMDD; empty for what is none. A day without its year has one that is
// taken for that widely, a leap year long ago.
struct DayRead {
  NarrowString text;
  bool hasTime = false;
  bool lacksYear = false;
};
DayRead ReadDay(const CardLine& line, NarrowStringView value);

}  // namespace pim
