// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pim/records/TypeCodes.h"
#include "stream/ObjectWords.h"
#include "support/WordTable.h"

namespace pim {

// The words of vCard text, each with the code that it gives and is written from.

enum VCardPropertyId : std::int32_t {
  VCARD_UNKNOWN = -1,
  VCARD_NO_PROPERTY = 0,
  VCARD_BEGIN = 1,
  VCARD_VERSION = 2,
  VCARD_FN = 3,
  VCARD_N = 4,
  VCARD_NICKNAME = 5,
  VCARD_SOUND = 6,
  VCARD_BDAY = 7,
  VCARD_X_BLOOD = 8,
  VCARD_TEL = 9,
  VCARD_EMAIL = 10,
  VCARD_URL = 11,
  VCARD_ADR = 12,
  VCARD_NOTE = 13,
  VCARD_TITLE = 14,
  VCARD_ROLE = 15,
  VCARD_ORG = 16,
  VCARD_X_HOBBY = 17,
  VCARD_PHOTO = 18,
  VCARD_X_GROUP = 19,
  VCARD_X_CHATID = 20,
  VCARD_X_ANNI = 21,
  VCARD_X_EVENTDAY = 22,
  VCARD_X_FAVORITE = 23,
};

inline constexpr Word kVCardProperties[] = {
    {kBeginWord, VCARD_BEGIN},
    {kVersionWord, VCARD_VERSION},
    {"FN", VCARD_FN},
    {"N", VCARD_N},
    {"NICKNAME", VCARD_NICKNAME},
    {"SOUND", VCARD_SOUND},
    {"BDAY", VCARD_BDAY},
    {"X-BLOOD", VCARD_X_BLOOD},
    {"TEL", VCARD_TEL},
    {"EMAIL", VCARD_EMAIL},
    {"URL", VCARD_URL},
    {"ADR", VCARD_ADR},
    {"NOTE", VCARD_NOTE},
    {"TITLE", VCARD_TITLE},
    {"ROLE", VCARD_ROLE},
    {"ORG", VCARD_ORG},
    {"X-HOBBY", VCARD_X_HOBBY},
    {"PHOTO", VCARD_PHOTO},
    {"X-GROUP", VCARD_X_GROUP},
    {"X-CHATID", VCARD_X_CHATID},
    {"X-ANNI", VCARD_X_ANNI},
    {"X-EVENTDAY", VCARD_X_EVENTDAY},
    {"X-FAVORITE", VCARD_X_FAVORITE},
};

// Words of a TEL line in written order: PREF leads, though its bit is the highest.
inline constexpr Word kTelephoneWords[] = {
    {"PREF", TEL_PREFERRED}, {"WORK", TEL_WORK},         {"HOME", TEL_HOME},
    {"VOICE", TEL_VOICE},    {"FAX", TEL_FAX},           {"MSG", TEL_MESSAGE},
    {"CELL", TEL_CELL},      {"PAGER", TEL_PAGER},       {"BBS", TEL_BBS},
    {"MODEM", TEL_MODEM},    {"CAR", TEL_CAR},           {"ASSISTANT", TEL_ASSISTANT},
    {"VIDEO", TEL_VIDEO},    {"INTERNET", TEL_INTERNET}, {"PTT", TEL_PTT},
    {"VOIP", TEL_VOIP},      {"COMPANY", TEL_COMPANY},   {"ANDROID_OTHER", TEL_OTHER},
    {"CUSTOM", TEL_CUSTOM},  {"ISDN", TEL_ISDN},         {"CALLBACK", TEL_CALLBACK},
    {"MAIN", TEL_MAIN},      {"TELEX", TEL_TELEX},       {"TTY", TEL_TTY},
    {"MMS", TEL_MMS},        {"RADIO", TEL_RADIO},
};

// Words of an ADR line in written order: WORK stands ahead of HOME.
inline constexpr Word kAddressWords[] = {
    {"PREF", ADR_PREFERRED}, {"DOM", ADR_DOMESTIC},  {"INTL", ADR_INTERNATIONAL},
    {"POSTAL", ADR_POSTAL},  {"PARCEL", ADR_PARCEL}, {"WORK", ADR_WORK},
    {"HOME", ADR_HOME},      {"OTHER", ADR_OTHER},   {"CUSTOM", ADR_CUSTOM},
};

inline constexpr Word kEmailWords[] = {
    {"Unknown", EMAIL_UNKNOWN}, {"Work", EMAIL_WORK},     {"Private", EMAIL_PRIVATE},
    {"Other", EMAIL_OTHER},     {"Custom", EMAIL_CUSTOM}, {"Mobile", EMAIL_MOBILE},
};

inline constexpr Word kUrlWords[] = {
    {"Unknown", URL_UNKNOWN}, {"Work", URL_WORK},     {"Private", URL_PRIVATE},
    {"Other", URL_OTHER},     {"Custom", URL_CUSTOM},
};

inline constexpr Word kOrganizationWords[] = {
    {"Unknown", ORG_UNKNOWN},
    {"Work", ORG_WORK},
    {"Other", ORG_OTHER},
    {"Custom", ORG_CUSTOM},
};

inline constexpr Word kMessengerWords[] = {
    {"Unknown", MESSENGER_UNKNOWN}, {"GoogleTalk", MESSENGER_GOOGLE_TALK},
    {"AIM", MESSENGER_AIM},         {"Window", MESSENGER_WINDOW},
    {"Yahoo", MESSENGER_YAHOO},     {"Jabber", MESSENGER_JABBER},
    {"Skype", MESSENGER_SKYPE},     {"QQ", MESSENGER_QQ},
    {"ICQ", MESSENGER_ICQ},         {"Other", MESSENGER_OTHER},
    {"Custom", MESSENGER_CUSTOM},
};

inline constexpr Word kBloodWords[] = {
    {"A", BLOOD_A}, {"B", BLOOD_B}, {"O", BLOOD_O}, {"AB", BLOOD_AB}};

// What a favourite's line says. Only the first is written; the other is what any word reads as.
inline constexpr NarrowStringView kYesWord = "YES";
inline constexpr NarrowStringView kNoWord = "NO";

// The media of a picture: what its parameter says, and the extension of its file.
enum MediaCode : std::int32_t {
  MEDIA_OTHER = -1,
  MEDIA_NONE = 0,
  MEDIA_JPEG = 1,
  MEDIA_GIF = 2,
  MEDIA_PNG = 3,
  MEDIA_BMP = 4,
  MEDIA_BIN = 5,
};

inline constexpr Word kMediaWords[] = {
    {"JPEG", MEDIA_JPEG}, {"JPG", MEDIA_JPEG}, {"PNG", MEDIA_PNG},
    {"GIF", MEDIA_GIF},   {"BMP", MEDIA_BMP},  {"BIN", MEDIA_BIN},
};

// A parameter of SOUND that devices write, and that changes nothing: it is read as they mean it.
inline constexpr NarrowStringView kIrmcNameParameter = "X-IRMC-N";

inline constexpr Word kMediaExtensions[] = {
    {"jpg", MEDIA_JPEG}, {"jpeg", MEDIA_JPEG}, {"png", MEDIA_PNG},
    {"gif", MEDIA_GIF},  {"bmp", MEDIA_BMP},   {"bin", MEDIA_BIN},
};

static_assert(TextsDiffer(kVCardProperties) && TextsDiffer(kTelephoneWords) &&
              TextsDiffer(kAddressWords) && TextsDiffer(kEmailWords) && TextsDiffer(kUrlWords) &&
              TextsDiffer(kOrganizationWords) && TextsDiffer(kMessengerWords) &&
              TextsDiffer(kBloodWords) && TextsDiffer(kMediaWords) &&
              TextsDiffer(kMediaExtensions));

}  // namespace pim
