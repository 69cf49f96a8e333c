// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>

#include "pim/records/TypeCodes.h"
#include "support/WordTable.h"

namespace pim {

// The words of vCard 3.0 and 4.0, for writing them and for making vCard 2.1 of them. jCard has
// those of 4.0 in small letters.

enum class CardProperty : std::uint8_t {
  ProductId,
  Uid,
  Revision,
  Kind,
  Member,
  FormattedName,
  Name,
  PhoneticFamily,
  PhoneticGiven,
  PhoneticMiddle,
  PhoneticPrefix,
  PhoneticSuffix,
  Nickname,
  Birthday,
  FurtherBirthday,
  Anniversary,
  FurtherAnniversary,
  OtherDay,
  Telephone,
  Email,
  Messenger,
  Url,
  Address,
  Note,
  Title,
  Role,
  Organization,
  Blood,
  Hobby,
  Photo,
  Categories,
  Favorite,
};

struct PropertyRow {
  CardProperty code;
  NarrowStringView v4;
  NarrowStringView v3;
  NarrowStringView v21;        // empty where 2.1 has no place for it
  NarrowStringView valueType;  // in jCard
};

// By the numbers of their codes. What can stand once has a further name for those behind the first.
inline constexpr PropertyRow kPropertyRows[] = {
    {CardProperty::ProductId, "PRODID", "PRODID", "PRODID", "text"},
    {CardProperty::Uid, "UID", "UID", "UID", "uri"},
    {CardProperty::Revision, "REV", "REV", "REV", "timestamp"},
    {CardProperty::Kind, "KIND", "X-ADDRESSBOOKSERVER-KIND", "", "text"},
    {CardProperty::Member, "MEMBER", "X-ADDRESSBOOKSERVER-MEMBER", "", "uri"},
    {CardProperty::FormattedName, "FN", "FN", "FN", "text"},
    {CardProperty::Name, "N", "N", "N", "text"},
    {CardProperty::PhoneticFamily, "X-PHONETIC-LAST-NAME", "X-PHONETIC-LAST-NAME", "SOUND", "text"},
    {CardProperty::PhoneticGiven, "X-PHONETIC-FIRST-NAME", "X-PHONETIC-FIRST-NAME", "SOUND",
     "text"},
    {CardProperty::PhoneticMiddle, "X-PHONETIC-MIDDLE-NAME", "X-PHONETIC-MIDDLE-NAME", "SOUND",
     "text"},
    {CardProperty::PhoneticPrefix, "X-PHONETIC-PREFIX", "X-PHONETIC-PREFIX", "SOUND", "text"},
    {CardProperty::PhoneticSuffix, "X-PHONETIC-SUFFIX", "X-PHONETIC-SUFFIX", "SOUND", "text"},
    {CardProperty::Nickname, "NICKNAME", "NICKNAME", "NICKNAME", "text"},
    {CardProperty::Birthday, "BDAY", "BDAY", "BDAY", "date-and-or-time"},
    {CardProperty::FurtherBirthday, "X-BDAY", "X-BDAY", "BDAY", "date-and-or-time"},
    {CardProperty::Anniversary, "ANNIVERSARY", "X-ANNIVERSARY", "X-ANNI", "date-and-or-time"},
    {CardProperty::FurtherAnniversary, "X-ANNIVERSARY", "X-ANNIVERSARY", "X-ANNI",
     "date-and-or-time"},
    {CardProperty::OtherDay, "X-EVENTDAY", "X-EVENTDAY", "X-EVENTDAY", "date-and-or-time"},
    {CardProperty::Telephone, "TEL", "TEL", "TEL", "text"},
    {CardProperty::Email, "EMAIL", "EMAIL", "EMAIL", "text"},
    {CardProperty::Messenger, "IMPP", "IMPP", "X-CHATID", "uri"},
    {CardProperty::Url, "URL", "URL", "URL", "uri"},
    {CardProperty::Address, "ADR", "ADR", "ADR", "text"},
    {CardProperty::Note, "NOTE", "NOTE", "NOTE", "text"},
    {CardProperty::Title, "TITLE", "TITLE", "TITLE", "text"},
    {CardProperty::Role, "ROLE", "ROLE", "ROLE", "text"},
    {CardProperty::Organization, "ORG", "ORG", "ORG", "text"},
    {CardProperty::Blood, "X-BLOOD", "X-BLOOD", "X-BLOOD", "text"},
    {CardProperty::Hobby, "HOBBY", "X-HOBBY", "X-HOBBY", "text"},
    {CardProperty::Photo, "PHOTO", "PHOTO", "PHOTO", "uri"},
    {CardProperty::Categories, "CATEGORIES", "CATEGORIES", "X-GROUP", "text"},
    {CardProperty::Favorite, "X-FAVORITE", "X-FAVORITE", "X-FAVORITE", "text"},
};

static_assert([] {
  for (std::size_t i = 0; i < std::size(kPropertyRows); ++i)
    if (kPropertyRows[i].code != static_cast<CardProperty>(i)) return false;
  return true;
}());

constexpr const PropertyRow& RowOf(CardProperty property) {
  return kPropertyRows[static_cast<std::size_t>(property)];
}

// A code, or a bit of a mask, with its word in TYPE. What the RFCs have no word for has one of its
// own, so that nothing is lost.
struct TypeRow {
  std::uint32_t code;
  NarrowStringView v4;  // both empty for a code that is said by no word
  NarrowStringView v3;
};

inline constexpr NarrowStringView kOwnWord =
    "x-";  // begins what isn't the RFCs', in any letter case

// A preferred entry isn't among them: each version says it in its own way.
inline constexpr TypeRow kTelephoneRows[] = {
    {TEL_WORK, "work", "WORK"},
    {TEL_HOME, "home", "HOME"},
    {TEL_VOICE, "voice", "VOICE"},
    {TEL_FAX, "fax", "FAX"},
    {TEL_MESSAGE, "x-msg", "MSG"},
    {TEL_CELL, "cell", "CELL"},
    {TEL_PAGER, "pager", "PAGER"},
    {TEL_BBS, "x-bbs", "BBS"},
    {TEL_MODEM, "x-modem", "MODEM"},
    {TEL_CAR, "x-car", "CAR"},
    {TEL_ASSISTANT, "x-assistant", "X-ASSISTANT"},
    {TEL_VIDEO, "video", "VIDEO"},
    {TEL_INTERNET, "x-internet", "X-INTERNET"},
    {TEL_PTT, "x-ptt", "X-PTT"},
    {TEL_VOIP, "x-voip", "X-VOIP"},
    {TEL_COMPANY, "x-company", "X-COMPANY"},
    {TEL_OTHER, "x-other", "X-OTHER"},
    {TEL_CUSTOM, "x-custom", "X-CUSTOM"},
    {TEL_ISDN, "x-isdn", "ISDN"},
    {TEL_CALLBACK, "x-callback", "X-CALLBACK"},
    {TEL_MAIN, "main-number", "X-MAIN"},
    {TEL_TELEX, "x-telex", "X-TELEX"},
    {TEL_TTY, "textphone", "X-TTY"},
    {TEL_MMS, "x-mms", "X-MMS"},
    {TEL_RADIO, "x-radio", "X-RADIO"},
};

inline constexpr TypeRow kAddressRows[] = {
    {ADR_DOMESTIC, "x-dom", "DOM"},     {ADR_INTERNATIONAL, "x-intl", "INTL"},
    {ADR_POSTAL, "x-postal", "POSTAL"}, {ADR_PARCEL, "x-parcel", "PARCEL"},
    {ADR_WORK, "work", "WORK"},         {ADR_HOME, "home", "HOME"},
    {ADR_OTHER, "x-other", "X-OTHER"},  {ADR_CUSTOM, "x-custom", "X-CUSTOM"},
};

inline constexpr TypeRow kEmailRows[] = {
    {EMAIL_UNKNOWN, "", "INTERNET"},
    {EMAIL_WORK, "work", "INTERNET,WORK"},
    {EMAIL_PRIVATE, "home", "INTERNET,HOME"},
    {EMAIL_OTHER, "x-other", "INTERNET,X-OTHER"},
    {EMAIL_CUSTOM, "x-custom", "INTERNET,X-CUSTOM"},
    {EMAIL_MOBILE, "x-mobile", "INTERNET,X-MOBILE"},
};

inline constexpr TypeRow kUrlRows[] = {
    {URL_UNKNOWN, "", ""},
    {URL_WORK, "work", "WORK"},
    {URL_PRIVATE, "home", "HOME"},
    {URL_OTHER, "x-other", "X-OTHER"},
    {URL_CUSTOM, "x-custom", "X-CUSTOM"},
};

inline constexpr TypeRow kOrganizationRows[] = {
    {ORG_UNKNOWN, "", ""},
    {ORG_WORK, "work", "WORK"},
    {ORG_OTHER, "x-other", "X-OTHER"},
    {ORG_CUSTOM, "x-custom", "X-CUSTOM"},
};

constexpr const TypeRow* FindRow(std::span<const TypeRow> rows, std::uint32_t code) {
  const auto row = std::ranges::find(rows, code, &TypeRow::code);
  return row == rows.end() ? nullptr : &*row;
}

// Where a messenger's address is told by a URI: the word that says whose it is, and the URI's
// start.
struct MessengerRow {
  std::uint32_t code;
  NarrowStringView service;  // empty where no word says it
  NarrowStringView scheme;
};

inline constexpr NarrowStringView kServiceParameter = "X-SERVICE-TYPE";

// A scheme's first row is what it means where no word says more.
inline constexpr MessengerRow kMessengerRows[] = {
    {MESSENGER_UNKNOWN, "", "im:"},        {MESSENGER_AIM, "AIM", "aim:"},
    {MESSENGER_WINDOW, "MSN", "msnim:"},   {MESSENGER_YAHOO, "Yahoo", "ymsgr:"},
    {MESSENGER_JABBER, "Jabber", "xmpp:"}, {MESSENGER_GOOGLE_TALK, "GoogleTalk", "xmpp:"},
    {MESSENGER_SKYPE, "Skype", "skype:"},  {MESSENGER_QQ, "QQ", "qq:"},
    {MESSENGER_ICQ, "ICQ", "icq:"},        {MESSENGER_OTHER, "Other", "im:"},
    {MESSENGER_CUSTOM, "Custom", "im:"},
};

constexpr const MessengerRow* FindMessenger(std::uint32_t code) {
  const auto row = std::ranges::find(kMessengerRows, code, &MessengerRow::code);
  return row == std::end(kMessengerRows) ? nullptr : row;
}

// A picture's media: as a file's extension, in a data URI, as a word of TYPE, which 2.1 has too,
// and what its bytes begin with.
struct MediaRow {
  NarrowStringView extension;
  NarrowStringView media;
  NarrowStringView word;
  NarrowStringView start;  // empty where that says nothing
};

inline constexpr MediaRow kMediaRows[] = {
    {"jpg", "image/jpeg", "JPEG", "\xFF\xD8\xFF"},
    {"jpeg", "image/jpeg", "JPEG", "\xFF\xD8\xFF"},
    {"png", "image/png", "PNG", "\x89PNG"},
    {"gif", "image/gif", "GIF", "GIF8"},
    {"bmp", "image/bmp", "BMP", "BM"},
    {"bin", "application/octet-stream", "BIN", ""},
};
// Of any other file.
inline constexpr MediaRow kOtherMedia = {"", "application/octet-stream", "UNKNOWN", ""};

// A formatted name that was made of other fields, since the forms want one: it says nothing of its
// own and goes when the card is read (RFC 9554).
inline constexpr NarrowStringView kDerivedParameter = "DERIVED";
inline constexpr NarrowStringView kOwnDerivedParameter = "X-DERIVED";  // in 3.0
inline constexpr NarrowStringView kDerivedWord = "TRUE";

// Who wrote a card. Without the program's version, so that a card stays the same over versions.
inline constexpr NarrowStringView kProductId = "-//PimVobjMgr//pimvobj//EN";

// Stands in for the year of a day that has none.
inline constexpr NarrowStringView kYearOfNone = "1604";

inline constexpr NarrowStringView kGroupKind = "group";
inline constexpr NarrowStringView kPersonKind = "individual";
inline constexpr NarrowStringView kDataScheme = "data:";
inline constexpr NarrowStringView kUuidStart = "urn:uuid:";
inline constexpr NarrowStringView kFavoriteWord = "YES";

}  // namespace pim
