// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "vcard/VCardReader.h"

#include <new>

#include "pim/support/ParseFailure.h"
#include "support/ParameterTable.h"
#include "support/ShowParseFailure.h"
#include "vcard/VCardValues.h"
#include "vcard/VCardWords.h"

namespace pim {
namespace {

constexpr WordIndex kCardPropertyIndex(kVCardProperties);
constexpr WordIndex kTelephoneIndex(kTelephoneWords);
constexpr WordIndex kAddressIndex(kAddressWords);
constexpr WordIndex kEmailIndex(kEmailWords);
constexpr WordIndex kUrlIndex(kUrlWords);
constexpr WordIndex kOrganizationIndex(kOrganizationWords);
constexpr WordIndex kMessengerIndex(kMessengerWords);
constexpr WordIndex kMediaIndex(kMediaWords);

// Gives whether the parameter says a picture's media.
template <Telling kTelling>
bool TakeMedia(VCardReadContext& context, const WordKey& name, NarrowStringView value) {
  const bool valued = EqualsIgnoringCase(name.text, kTypeName);
  const auto code = kMediaIndex.CodeOf(valued ? KeyOf(value) : name);
  if (!code) {
    if (valued) context.mediaType = MEDIA_OTHER;
    return false;
  }
  const auto media = static_cast<std::int32_t>(*code);
  if constexpr (kTelling == Telling::Account) {
    if (context.mediaType != MEDIA_NONE && context.mediaType != media)
      context.account->Tell(LOSS_TYPE_IGNORED);
  }
  context.mediaType = media;
  return context.propertyId == VCARD_PHOTO;
}

// A bit, where the word has one.
bool TakeBit(std::uint32_t& type, std::optional<std::uint32_t> bit) {
  type |= bit.value_or(0);
  return bit.has_value();
}

// A code, where the word has one. A different one before it has no effect any more.
template <Telling kTelling>
bool TakeCode(VCardReadContext& context, std::optional<std::uint32_t> code) {
  std::uint32_t& type = context.typeFlags;
  if (!code) return false;
  if constexpr (kTelling == Telling::Account) {
    if (type != 0 && type != *code) context.account->Tell(LOSS_TYPE_IGNORED);
  }
  type = *code;
  return true;
}

// Adds what a parameter says of the value's type, by the property: the bits of all words are
// joined, and of codes the last one holds. Only a telephone's word may stand behind TYPE= too.
// Gives whether the parameter says any.
template <Telling kTelling>
bool TakeType(VCardReadContext& context, const WordKey& name, const char* value) {
  switch (context.propertyId) {
    case VCARD_TEL: {
      const bool valued = value != nullptr && EqualsIgnoringCase(name.text, kTypeName);
      return TakeBit(context.typeFlags, kTelephoneIndex.CodeOf(valued ? KeyOf(value) : name));
    }
    case VCARD_ADR:
      return TakeBit(context.typeFlags, kAddressIndex.CodeOf(name));
    case VCARD_EMAIL:
      return TakeCode<kTelling>(context, kEmailIndex.CodeOf(name));
    case VCARD_URL:
      return TakeCode<kTelling>(context, kUrlIndex.CodeOf(name));
    case VCARD_ORG:
      return TakeCode<kTelling>(context, kOrganizationIndex.CodeOf(name));
    case VCARD_X_CHATID:
      return TakeCode<kTelling>(context, kMessengerIndex.CodeOf(name));
    default:
      return false;
  }
}

// Whether a parameter without a word that is known changes nothing by that.
bool IsHarmless(const VCardReadContext& context, NarrowStringView name) {
  return IsPlainEncoding(name) ||
         (context.propertyId == VCARD_SOUND && EqualsIgnoringCase(name, kIrmcNameParameter));
}

// Gives whether the parameter has an effect.
template <Telling kTelling>
[[gnu::always_inline]] inline bool TakeParameter(VCardReadContext& context,
                                                 const ParserParam& param) {
  const WordKey name = KeyOf(param.name.text);
  const NarrowStringView value = param.ValueText();
  const bool ofValue = TakeTextParameter(name, value, context.charset, context.encoding) ||
                       TakeMedia<kTelling>(context, name, value);
  return TakeType<kTelling>(context, name, param.value.text) || ofValue;
}

void TellParameter(VCardReadContext& context, const ParserParam& param, bool isHeard,
                   const ReadingParameters& before) {
  const WordKey name = KeyOf(param.name.text);
  const LossMask losses =
      LossIf(!isHeard && !IsHarmless(context, name.text), LOSS_TYPE_IGNORED) |
      LossesOfTextParameter(name, param.ValueText(), before, {context.charset, context.encoding});
  if (losses != 0) context.account->TellParameter(losses, name.text, param.ValueText());
}

void TellLosses(VCardReadContext& context, LossMask losses, NarrowStringView value) {
  if (context.account != nullptr) context.account->Tell(losses);
  const auto property = static_cast<VCardPropertyId>(context.propertyId);
  if (context.watcher == nullptr || (losses & LOSS_BAD_VALUE) == 0) return;
  if (RowOf(property).value != VCardValue::Date) return;
  context.watcher->Note(TextEvent::DateNotUnderstood,
                        TextOf(kVCardProperties, static_cast<std::uint32_t>(property)), value);
}

PropertyKind KindOf(const VCardReadContext& context) {
  if (context.propertyId == VCARD_UNKNOWN)
    return context.isEnd ? PropertyKind::Frame : PropertyKind::Unknown;
  const bool isFrame = context.propertyId == VCARD_BEGIN || context.propertyId == VCARD_VERSION;
  return isFrame ? PropertyKind::Frame : PropertyKind::Known;
}

template <Telling kTelling>
void TakeParameters(VCardReadContext& context, const ParserParam* params) {
  const bool tells = kTelling == Telling::Account && KindOf(context) == PropertyKind::Known;
  for (const ParserParam* param = params; param->name.text != nullptr; ++param) {
    const ReadingParameters before{context.charset, context.encoding};
    const bool isHeard = TakeParameter<kTelling>(context, *param);
    if (tells) TellParameter(context, *param, isHeard, before);
  }
}

WideString NameOfLast(const CContacts& contacts) {
  if (contacts.GetCount() == 0) return {};
  const CContact& contact = contacts[contacts.GetCount() - 1];
  if (!contact.formatted_name.empty()) return contact.formatted_name.str();
  WideString name = contact.name.given_name.str();
  if (!name.empty() && !contact.name.family_name.empty()) name += u' ';
  return name.append(contact.name.family_name.view());
}

void TakeBegin(VCardReadContext& context, NarrowStringView value) {
  CContacts& contacts = *context.contacts;
  if (IsStartOf(kContactObject.text, value)) {
    if (context.watcher != nullptr) {
      context.watcher->Complete([&contacts] { return NameOfLast(contacts); });
      context.watcher->BeginRecord();
    }
    if (context.account != nullptr) context.account->BeginRecord();
    if (context.onBegin) context.onBegin();
    contacts.AddNew();
  } else if (context.account != nullptr && IsStartOf(kContactObject.text, Trim(value))) {
    context.account->TellFrame(LOSS_BAD_VALUE);  // blanks behind the word: it begins nothing
  }
}

void TellEnd(VCardReadContext& context, NarrowStringView value) {
  const WordBehindEnd end = WordOfEnd(value);
  const bool endsCard = IsStartOf(kContactObject.text, end.word);
  if (context.watcher != nullptr) {
    if (end.isJoined) context.watcher->Note(TextEvent::RecordsJoined, kEndWord, value);
    if (endsCard) context.watcher->EndRecord();
  }
  if (context.account != nullptr) {
    if (end.isJoined) context.account->TellFrame(LOSS_JOINED);
    if (endsCard) context.account->EndRecord();
  }
}

}  // namespace

VCardReader::VCardReader(CContacts& contacts) : parser_(VObjectParser::Create()) {
  if (parser_ == nullptr) throw std::bad_alloc();
  context_.contacts = &contacts;
  parser_->SetPropertyHandler(OnVCardProperty);
  parser_->SetDataHandler(OnVCardData);
  parser_->SetUserData(&context_);
}

void VCardReader::Watch(WatchText watch) {
  watcher_.emplace(std::move(watch), *parser_);
  context_.watcher = &*watcher_;
}

void VCardReader::Account(TakeEntry take) {
  account_.emplace(std::move(take), *parser_, [this] { return NameOfLast(*context_.contacts); });
  context_.account = &*account_;
  parser_->junkHandler = [](void* user) {
    static_cast<VCardReadContext*>(user)->account->TakeJunk();
  };
}

bool VCardReader::Read(NarrowStringView piece, bool final) {
  const auto parse = [&] {
    return parser_->Parse(piece.data(), static_cast<std::int32_t>(piece.size()), final);
  };
  const auto account = [&] { return account_ ? account_->Around(piece, final, parse) : parse(); };
  if (!watcher_) return account();
  return watcher_->Around(piece, final, account, [this] { return NameOfLast(*context_.contacts); });
}

void ShowVCardFailure() { ShowParseFailure(u"Error parsing vCard"); }

void RaiseVCardFailure() {
  ShowVCardFailure();
  throw kParseFailure;
}

void ParseVCard(CContacts& contacts, const VObjectBuffer& data) {
  const bool accepted = VCardReader(contacts).Read(data.bytes.view(), true);
  for (std::int32_t i = 0; i < contacts.GetCount(); ++i) contacts[i].tag = data.tag;
  if (!accepted) RaiseVCardFailure();
}

void OnVCardProperty(void* user, const char* name, const ParserParam* params) {
  auto& context = *static_cast<VCardReadContext*>(user);
  context.charset = CHARSET_NONE;
  context.encoding = ENCODING_NONE;
  context.mediaType = MEDIA_NONE;
  context.typeFlags = 0;
  const auto id = kCardPropertyIndex.CodeOf(KeyOf(name));
  context.propertyId = id ? static_cast<std::int32_t>(*id) : VCARD_UNKNOWN;
  VCardAccount* const account = context.account;
  if (context.watcher != nullptr || account != nullptr)
    context.isEnd = EqualsIgnoringCase(name, kEndWord);
  if (account != nullptr) [[unlikely]] {
    account->BeginProperty(name, KindOf(context), [](NarrowStringView rest) {
      return kCardPropertyIndex.CodeOf(KeyOf(rest)).has_value() ||
             EqualsIgnoringCase(rest, kEndWord);
    });
    return TakeParameters<Telling::Account>(context, params);
  }
  TakeParameters<Telling::None>(context, params);
}

namespace {

template <Telling kTelling>
void TakeData(VCardReadContext& context, const char* bytes, std::int32_t length) {
  constexpr bool kTells = kTelling == Telling::Account;
  if (bytes == nullptr) {
    if constexpr (kTells) context.account->EndProperty();
    context.propertyId = VCARD_NO_PROPERTY;
    context.typeFlags = 0;
    return;
  }
  if constexpr (kTells) context.account->TakeValue();
  CContacts& contacts = *context.contacts;
  const NarrowStringView value(bytes, static_cast<std::size_t>(length));
  // The only place where a card begins; none has an end, so what stands behind its END is its own.
  if (context.propertyId == VCARD_BEGIN) TakeBegin(context, value);
  if (context.isEnd) TellEnd(context, value);
  if (contacts.GetCount() == 0) return;
  CContact& contact = contacts[contacts.GetCount() - 1];
  const LossMask losses = TakeVCardValue(context, bytes, length, contact);
  if (losses != 0) [[unlikely]]
    TellLosses(context, losses, value);
}

}  // namespace

void OnVCardData(void* user, const char* bytes, std::int32_t length) {
  auto& context = *static_cast<VCardReadContext*>(user);
  if (context.account != nullptr) [[unlikely]]
    return TakeData<Telling::Account>(context, bytes, length);
  TakeData<Telling::None>(context, bytes, length);
}

}  // namespace pim
