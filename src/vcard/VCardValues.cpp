// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "vcard/VCardValues.h"

#include <array>
#include <optional>
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

// Hands each field of a structured value, unescaped but not yet decoded, to `take` with its index
// and the place behind it and its semicolon, until that gives false.
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
    start = last ? value.size() : end + 1;
    if (!take(index, field, start) || last) return;
  }
}

// Where the fields of a structured value go. Where an account is told of them, `place` is that of
// the first one; those of a list's entry have none.
struct FieldTargets {
  std::span<WideText* const> fields;
  VCardAccount* account = nullptr;
  std::optional<std::uint8_t> place = {};
};

struct FieldsDecoded {
  LossMask losses = 0;
  std::size_t count = 0;
};

template <Telling kTelling>
FieldsDecoded DecodeFields(NarrowStringView value, std::int32_t charset, std::int32_t encoding,
                           const FieldTargets& targets) {
  WideString work;
  FieldsDecoded decoded;
  ForEachField(value, [&](std::size_t index, NarrowStringView field, std::size_t behind) {
    WideText& target = *targets.fields[index];
    const auto decode = [&] {
      decoded.losses |= DecodeText(field.data(), static_cast<std::int32_t>(field.size()), charset,
                                   encoding, work, target);
    };
    if (kTelling == Telling::None || !targets.place) {
      decode();
    } else {
      const WideText before = std::exchange(target, {});
      decode();
      const auto place = static_cast<std::uint8_t>(*targets.place + index);
      targets.account->Write(place, {.same = before == target,
                                     .says = !target.empty(),
                                     .isJoint = place <= PLACE_GIVEN_NAME});
    }
    decoded.count = index + 1;
    if (decoded.count < targets.fields.size()) return true;
    if constexpr (kTelling == Telling::Account) {
      const bool hasMore = value.find_first_not_of(';', behind) != NarrowStringView::npos;
      decoded.losses |= LossIf(hasMore, LOSS_EXTRA_PARTS);
    }
    return false;
  });
  return decoded;
}

std::array<WideText*, kNameParts> PartsOf(CName& name) {
  return {&name.family_name, &name.given_name, &name.additional_name, &name.prefix_name,
          &name.suffix_name};
}

std::array<WideText*, 7> PartsOf(CPostalAddress& address) {
  return {&address.post_office, &address.extended_address, &address.street, &address.locality,
          &address.region,      &address.postal_code,      &address.country};
}

// One property's value on its way into the contact, told to the account as it goes.
template <Telling kTelling>
class CardValueTaker {
 public:
  CardValueTaker(VCardReadContext& context, NarrowStringView value, CContact& contact)
      : context_(context), value_(value), contact_(contact), account_(context.account) {}

  LossMask Take() {
    switch (static_cast<VCardPropertyId>(context_.propertyId)) {  // no default: none is left out
      case VCARD_UNKNOWN:
      case VCARD_NO_PROPERTY:
      case VCARD_BEGIN:
      case VCARD_VERSION:
        break;
      case VCARD_FN:
        return TakeFormattedName();
      case VCARD_N:
        return TakeName();
      case VCARD_NICKNAME:
        contact_.NewNickname(Decoded());
        return EntryLosses();
      case VCARD_SOUND:
        return TakeParts(contact_.phonetic, PLACE_PHONETIC).losses;
      case VCARD_BDAY:
        return TakeEvent(EVENT_BIRTHDAY);
      case VCARD_X_BLOOD:
        return TakeBloodType();
      case VCARD_TEL:
        return TakeTelephone();
      case VCARD_EMAIL:
        contact_.NewEmail(Decoded(), context_.typeFlags, -1);
        return EntryLosses();
      case VCARD_URL:
        contact_.NewURL(Decoded(), context_.typeFlags, -1);
        return EntryLosses();
      case VCARD_ADR:
        return TakeAddress();
      case VCARD_NOTE:
        contact_.NewComment(Decoded());
        return EntryLosses();
      case VCARD_TITLE:
        return TakeText(contact_.org_title);
      case VCARD_ROLE:
        return TakeText(contact_.org_role);
      case VCARD_ORG:
        return TakeOrganization();
      case VCARD_X_HOBBY:
        return TakeText(contact_.hobby);
      case VCARD_PHOTO:
        return TakePhoto();
      case VCARD_X_GROUP:
        contact_.NewGroup(Decoded());
        return EntryLosses();
      case VCARD_X_CHATID:
        contact_.NewMessenger(Decoded(), context_.typeFlags);
        return EntryLosses();
      case VCARD_X_ANNI:
        return TakeEvent(EVENT_ANNIVERSARY);
      case VCARD_X_EVENTDAY:
        return TakeEvent(EVENT_OTHER);
      case VCARD_X_FAVORITE:
        return TakeFavorite();
    }
    return 0;
  }

 private:
  static constexpr bool kTells = kTelling == Telling::Account;

  const char* bytes() const { return value_.data(); }
  std::int32_t length() const { return static_cast<std::int32_t>(value_.size()); }
  std::uint8_t Field() const {
    return RowOf(static_cast<VCardPropertyId>(context_.propertyId)).field;
  }
  void TellAdded() {
    if constexpr (kTells) account_->Add(Field());
  }
  void TellWritten(bool same, bool says) {
    if constexpr (kTells) account_->Write(Field(), {.same = same, .says = says});
  }

  LossMask Decode(WideText& text) {
    return DecodeText(bytes(), length(), context_.charset, context_.encoding, context_.text, text);
  }

  LossMask TakeText(WideText& field) {
    if constexpr (!kTells) return Decode(field);
    const WideText before = std::exchange(field, {});
    const LossMask losses = Decode(field);
    TellWritten(before == field, !field.empty());
    return losses;
  }

  // The text of a list's entry, in place; what was lost of it follows when the entry is made.
  WideText Decoded() {
    WideText text;
    entryLosses_ = Decode(text);
    return text;
  }
  LossMask EntryLosses() {
    TellAdded();
    return entryLosses_;
  }

  LossMask TakeFormattedName() {
    const LossMask losses = TakeText(contact_.formatted_name);
    const auto fill = [this](auto& family, auto& given) {
      if (family.empty() && given.empty()) given = contact_.formatted_name;
    };
    CName& name = contact_.name;
    if constexpr (!kTells) {
      fill(name.family_name, name.given_name);
      return losses;
    }
    const VCardAccount::Name before = VCardAccount::Of(name);
    fill(name.family_name, name.given_name);
    if (before.given != name.given_name)
      account_->Write(PLACE_GIVEN_NAME, {.follows = true, .isJoint = true});
    account_->TakeNames(before, name,
                        [&fill](VCardAccount::Name& other) { fill(other.family, other.given); });
    return losses;
  }

  FieldsDecoded TakeParts(CName& name, std::uint8_t place) {
    const auto parts = PartsOf(name);
    return DecodeFields<kTelling>(value_, context_.charset, context_.encoding,
                                  {parts, account_, place});
  }

  LossMask TakeName() {
    CName& name = contact_.name;
    if constexpr (!kTells) return TakeParts(name, PLACE_NAME).losses;
    const VCardAccount::Name before = VCardAccount::Of(name);
    const FieldsDecoded parts = TakeParts(name, PLACE_NAME);
    account_->TakeNames(before, name, [&name, &parts](VCardAccount::Name& other) {
      other.family = name.family_name;
      if (parts.count > 1) other.given = name.given_name;
    });
    return parts.losses;
  }

  // Devices write numbers in their own code page whatever the parameters say.
  WideText Widened() {
    WideText text;
    entryLosses_ = WidenText(value_, context_.text, text);
    return text;
  }

  LossMask TakeTelephone() {
    const CTelephoneNumber& telephone =
        contact_.NewTelephone(Widened(), context_.typeFlags, false, -1);
    if (kTells && (context_.charset != 0 || context_.encoding != 0)) {
      WideText meant;
      entryLosses_ |= Decode(meant) & LOSS_UNKNOWN_CHARSET;
      entryLosses_ |= LossIf(meant != telephone.number, LOSS_TYPE_IGNORED);
    }
    return EntryLosses();
  }

  LossMask TakeAddress() {
    const auto parts = PartsOf(contact_.NewAddress(nullptr, context_.typeFlags, -1));
    TellAdded();
    return DecodeFields<kTelling>(value_, context_.charset, context_.encoding, {parts, account_})
        .losses;
  }

  LossMask TakeOrganization() {
    TellAdded();
    return ParseOrganizationValue(bytes(), length(), context_.charset, context_.encoding,
                                  contact_.NewOrganization(context_.typeFlags));
  }

  LossMask TakeEvent(ContactEventType type) {
    COleDateTimeNull date;
    const bool isUnderstood = ParseEventDate(bytes(), length(), date);
    contact_.NewContactEvent(date, type);  // also without a date: the event is there
    TellAdded();
    // In eight bytes 1970-131 is taken for the year 197.
    const bool isShifted = date.status == StatusValid && value_.size() == 8 &&
                           value_.find('-') != NarrowStringView::npos;
    return LossIf(!isUnderstood || isShifted, LOSS_BAD_VALUE);
  }

  LossMask TakeBloodType() {
    const std::int32_t before = contact_.blood_type;
    ParseBloodType(bytes(), length(), contact_.blood_type);
    const bool isKnown = contact_.blood_type != BLOOD_NONE;
    TellWritten(before == contact_.blood_type, isKnown);
    return LossIf(!isKnown, LOSS_BAD_VALUE);
  }

  LossMask TakeFavorite() {
    const std::int32_t before = contact_.favorite;
    ParseYesFlag(bytes(), length(), contact_.favorite);
    const bool isKnown = contact_.favorite != 0 || IsStartOf(kNoWord, value_);
    TellWritten(before == contact_.favorite, isKnown);
    return LossIf(!isKnown, LOSS_BAD_VALUE);
  }

  LossMask TakePhoto() {
    WideString photo;
    SavePhoto(bytes(), length(), context_.mediaType, photo);
    contact_.photo = photo;
    if constexpr (!kTells) return 0;
    const bool isThere = !photo.empty();
    const bool isSame = account_->IsSamePicture(isThere, value_, context_.mediaType);
    TellWritten(isSame, isThere);
    const bool isEscaped = context_.encoding == ENCODING_QUOTED_PRINTABLE &&
                           value_.find('=') != NarrowStringView::npos;
    return LossIf(!isThere, LOSS_NO_PICTURE) | LossIf(isEscaped, LOSS_TYPE_IGNORED);
  }

  VCardReadContext& context_;
  NarrowStringView value_;
  CContact& contact_;
  VCardAccount* account_;
  LossMask entryLosses_ = 0;
};

}  // namespace

LossMask TakeVCardValue(VCardReadContext& context, const char* bytes, std::int32_t length,
                        CContact& contact) {
  const NarrowStringView value = ViewOf(bytes, length);
  if (context.account != nullptr) [[unlikely]]
    return CardValueTaker<Telling::Account>(context, value, contact).Take();
  return CardValueTaker<Telling::None>(context, value, contact).Take();
}

void ParseNameValue(const char* bytes, std::int32_t length, std::int32_t charset,
                    std::int32_t encoding, CName& name) {
  const auto parts = PartsOf(name);
  DecodeFields<Telling::None>(ViewOf(bytes, length), charset, encoding, {parts});
}

void ParseAddressValue(const char* bytes, std::int32_t length, std::int32_t charset,
                       std::int32_t encoding, CPostalAddress& address) {
  const auto parts = PartsOf(address);
  DecodeFields<Telling::None>(ViewOf(bytes, length), charset, encoding, {parts});
}

LossMask ParseOrganizationValue(const char* bytes, std::int32_t length, std::int32_t charset,
                                std::int32_t encoding, COrganization& organization) {
  WideString work;
  LossMask losses = 0;
  ForEachField(ViewOf(bytes, length), [&](std::size_t index, NarrowStringView field, std::size_t) {
    WideText text;
    losses |= DecodeText(field.data(), static_cast<std::int32_t>(field.size()), charset, encoding,
                         work, text);
    if (index == 0) {
      organization.org_name = std::move(text);
    } else if (index == 1) {
      organization.org_position = std::move(text);
    } else if (!text.empty()) {
      organization.org_additional.push_back(std::move(text));
    }
    return true;
  });
  return losses;
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
