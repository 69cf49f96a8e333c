#include "vcard/VCardValues.h"

#include <span>
#include <utility>

#include "support/Numbers.h"
#include "support/TextCodec.h"
#include "vcard/PhotoMedia.h"
#include "vcard/VCardReader.h"
#include "vcard/VCardWords.h"

namespace pim {
namespace {

NarrowStringView ViewOf(const char* bytes, std::int32_t length) {
  return {bytes, static_cast<std::size_t>(length)};
}

// Hands each field of a structured value, unescaped but not yet decoded, to `take` with its index,
// until that gives false.
template <class Take>
void ForEachField(NarrowStringView value, Take take) {
  const bool hasEscapes = value.find('\\') != NarrowStringView::npos;
  NarrowString unescaped;
  std::size_t start = 0;
  for (std::size_t index = 0;; ++index) {
    std::size_t end = value.find(';', start);
    while (hasEscapes && end != NarrowStringView::npos && !IsFieldSeparator(value, end))
      end = value.find(';', end + 1);
    const bool last = end == NarrowStringView::npos;
    NarrowStringView field = value.substr(start, last ? end : end - start);
    if (hasEscapes) {
      unescaped = field;
      UnescapeValue(unescaped);
      field = unescaped;
    }
    if (!take(index, field) || last) return;
    start = end + 1;
  }
}

void DecodeFields(NarrowStringView value, std::int32_t charset, std::int32_t encoding,
                  std::span<WideText* const> targets) {
  WideString work;
  ForEachField(value, [&](std::size_t index, NarrowStringView field) {
    DecodeText(field.data(), static_cast<std::int32_t>(field.size()), charset, encoding, work,
               *targets[index]);
    return index + 1 < targets.size();
  });
}

void Decode(VCardReadContext& context, const char* bytes, std::int32_t length, WideText& text) {
  DecodeText(bytes, length, context.charset, context.encoding, context.text, text);
}

WideText Decoded(VCardReadContext& context, const char* bytes, std::int32_t length) {
  WideText text;
  Decode(context, bytes, length, text);
  return text;
}

// Devices write numbers in their own code page whatever the parameters say.
WideText Widened(VCardReadContext& context, const char* bytes, std::int32_t length) {
  WideText text;
  WidenText(ViewOf(bytes, length), context.text, text);
  return text;
}

void TakeFormattedName(VCardReadContext& context, const char* bytes, std::int32_t length,
                       CContact& contact) {
  Decode(context, bytes, length, contact.formatted_name);
  if (contact.name.family_name.empty() && contact.name.given_name.empty())
    contact.name.given_name = contact.formatted_name;
}

bool TakeEvent(const char* bytes, std::int32_t length, ContactEventType type, CContact& contact) {
  COleDateTimeNull date;
  const bool understood = ParseEventDate(bytes, length, date);
  contact.NewContactEvent(date, type);  // also without a date: the event is there
  return understood;
}

void TakePhoto(const VCardReadContext& context, const char* bytes, std::int32_t length,
               CContact& contact) {
  WideString photo;
  SavePhoto(bytes, length, context.mediaType, photo);
  contact.photo = photo;
}

}  // namespace

bool TakeVCardValue(VCardReadContext& context, const char* bytes, std::int32_t length,
                    CContact& contact) {
  const std::uint32_t type = context.typeFlags;
  switch (context.propertyId) {
    case VCARD_FN:
      TakeFormattedName(context, bytes, length, contact);
      break;
    case VCARD_N:
      ParseNameValue(bytes, length, context.charset, context.encoding, contact.name);
      break;
    case VCARD_NICKNAME:
      contact.NewNickname(Decoded(context, bytes, length));
      break;
    case VCARD_SOUND:
      ParseNameValue(bytes, length, context.charset, context.encoding, contact.phonetic);
      break;
    case VCARD_BDAY:
      return TakeEvent(bytes, length, EVENT_BIRTHDAY, contact);
    case VCARD_X_BLOOD:
      ParseBloodType(bytes, length, contact.blood_type);
      break;
    case VCARD_TEL:
      contact.NewTelephone(Widened(context, bytes, length), type, false, -1);
      break;
    case VCARD_EMAIL:
      contact.NewEmail(Decoded(context, bytes, length), type, -1);
      break;
    case VCARD_URL:
      contact.NewURL(Decoded(context, bytes, length), type, -1);
      break;
    case VCARD_ADR:
      ParseAddressValue(bytes, length, context.charset, context.encoding,
                        contact.NewAddress(nullptr, type, -1));
      break;
    case VCARD_NOTE:
      contact.NewComment(Decoded(context, bytes, length));
      break;
    case VCARD_TITLE:
      Decode(context, bytes, length, contact.org_title);
      break;
    case VCARD_ROLE:
      Decode(context, bytes, length, contact.org_role);
      break;
    case VCARD_ORG:
      ParseOrganizationValue(bytes, length, context.charset, context.encoding,
                             contact.NewOrganization(type));
      break;
    case VCARD_X_HOBBY:
      Decode(context, bytes, length, contact.hobby);
      break;
    case VCARD_PHOTO:
      TakePhoto(context, bytes, length, contact);
      break;
    case VCARD_X_GROUP:
      contact.NewGroup(Decoded(context, bytes, length));
      break;
    case VCARD_X_CHATID:
      contact.NewMessenger(Decoded(context, bytes, length), type);
      break;
    case VCARD_X_ANNI:
      return TakeEvent(bytes, length, EVENT_ANNIVERSARY, contact);
    case VCARD_X_EVENTDAY:
      return TakeEvent(bytes, length, EVENT_OTHER, contact);
    case VCARD_X_FAVORITE:
      ParseYesFlag(bytes, length, contact.favorite);
      break;
    default:
      break;
  }
  return true;
}

void ParseNameValue(const char* bytes, std::int32_t length, std::int32_t charset,
                    std::int32_t encoding, CName& name) {
  WideText* const targets[] = {&name.family_name, &name.given_name, &name.additional_name,
                               &name.prefix_name, &name.suffix_name};
  DecodeFields(ViewOf(bytes, length), charset, encoding, targets);
}

void ParseAddressValue(const char* bytes, std::int32_t length, std::int32_t charset,
                       std::int32_t encoding, CPostalAddress& address) {
  WideText* const targets[] = {
      &address.post_office, &address.extended_address, &address.street, &address.locality,
      &address.region,      &address.postal_code,      &address.country};
  DecodeFields(ViewOf(bytes, length), charset, encoding, targets);
}

void ParseOrganizationValue(const char* bytes, std::int32_t length, std::int32_t charset,
                            std::int32_t encoding, COrganization& organization) {
  WideString work;
  ForEachField(ViewOf(bytes, length), [&](std::size_t index, NarrowStringView field) {
    WideText text;
    DecodeText(field.data(), static_cast<std::int32_t>(field.size()), charset, encoding, work,
               text);
    if (index == 0) {
      organization.org_name = std::move(text);
    } else if (index == 1) {
      organization.org_position = std::move(text);
    } else if (!text.empty()) {
      organization.org_additional.push_back(std::move(text));
    }
    return true;
  });
}

bool ParseEventDate(const char* bytes, std::int32_t length, COleDateTimeNull& date) {
  const bool namesNone = NamesNoDate(ViewOf(bytes, length));
  if (length != 8 && length != 10) return namesNone;
  if (length == 10 && (bytes[4] != '-' || bytes[7] != '-')) return namesNone;
  std::int32_t digits = 0;
  for (std::int32_t i = 0; i < length; ++i) {
    if (bytes[i] == '-' && (i == 4 || i == 7))
      continue;  // in eight bytes too: 1970-131 is 197-01-31
    if (!IsDigit(bytes[i])) return namesNone;
    digits = digits * 10 + (bytes[i] - '0');
  }
  COleDateTime day;
  day.SetDateTime(digits / 10000, digits / 100 % 100, digits % 100, 0, 0, 0);
  if (day.status != StatusValid) return namesNone;
  date = day;
  return true;
}

void ParseYesFlag(const char* bytes, std::int32_t length, std::int32_t& flag) {
  flag = IsStartOf(kYesWord, ViewOf(bytes, length)) ? 1 : 0;
}

void ParseBloodType(const char* bytes, std::int32_t length, std::int32_t& code) {
  code = static_cast<std::int32_t>(
      CodeOfStart(kBloodWords, ViewOf(bytes, length)).value_or(BLOOD_NONE));
}

}  // namespace pim
