#include "vcard/VCardReader.h"

#include <new>

#include "pim/support/ParseFailure.h"
#include "support/ParameterTable.h"
#include "support/ShowParseFailure.h"
#include "vcard/VCardValues.h"
#include "vcard/VCardWords.h"

namespace pim {
namespace {

constexpr WordIndex kPropertyIndex(kVCardProperties);
constexpr WordIndex kTelephoneIndex(kTelephoneWords);
constexpr WordIndex kAddressIndex(kAddressWords);
constexpr WordIndex kEmailIndex(kEmailWords);
constexpr WordIndex kUrlIndex(kUrlWords);
constexpr WordIndex kOrganizationIndex(kOrganizationWords);
constexpr WordIndex kMessengerIndex(kMessengerWords);
constexpr WordIndex kMediaIndex(kMediaWords);

void TakeMedia(VCardReadContext& context, const WordKey& name, NarrowStringView value) {
  if (EqualsIgnoringCase(name.text, kTypeName)) {
    const auto code = kMediaIndex.CodeOf(KeyOf(value));
    context.mediaType = code ? static_cast<std::int32_t>(*code) : MEDIA_OTHER;
  } else if (const auto code = kMediaIndex.CodeOf(name)) {
    context.mediaType = static_cast<std::int32_t>(*code);
  }
}

// Adds what a parameter says of the value's type, by the property: the bits of all words are
// joined, and of codes the last one holds. Only a telephone's word may stand behind TYPE= too.
void TakeType(VCardReadContext& context, const WordKey& name, const char* value) {
  std::uint32_t& type = context.typeFlags;
  switch (context.propertyId) {
    case VCARD_TEL: {
      const bool valued = value != nullptr && EqualsIgnoringCase(name.text, kTypeName);
      type |= kTelephoneIndex.CodeOf(valued ? KeyOf(value) : name).value_or(0);
      return;
    }
    case VCARD_ADR:
      type |= kAddressIndex.CodeOf(name).value_or(0);
      return;
    case VCARD_EMAIL:
      type = kEmailIndex.CodeOf(name).value_or(type);
      return;
    case VCARD_URL:
      type = kUrlIndex.CodeOf(name).value_or(type);
      return;
    case VCARD_ORG:
      type = kOrganizationIndex.CodeOf(name).value_or(type);
      return;
    case VCARD_X_CHATID:
      type = kMessengerIndex.CodeOf(name).value_or(type);
      return;
    default:
      return;
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

void WatchEnd(TextWatcher& watcher, NarrowStringView value) {
  if (IsStartOf(kContactObject.text, watcher.WordOfEnd(value))) watcher.EndRecord();
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

bool VCardReader::Read(NarrowStringView piece, bool final) {
  const auto parse = [&] {
    return parser_->Parse(piece.data(), static_cast<std::int32_t>(piece.size()), final);
  };
  if (!watcher_) return parse();
  return watcher_->Around(piece, final, parse, [this] { return NameOfLast(*context_.contacts); });
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
  const auto id = kPropertyIndex.CodeOf(KeyOf(name));
  context.propertyId = id ? static_cast<std::int32_t>(*id) : VCARD_UNKNOWN;
  if (context.watcher != nullptr) context.isEnd = EqualsIgnoringCase(name, kEndWord);
  for (const ParserParam* param = params; param->name.text != nullptr; ++param) {
    const WordKey paramName = KeyOf(param->name.text);
    const NarrowStringView value = param->ValueText();
    if (!TakeTextParameter(paramName, value, context.charset, context.encoding))
      TakeMedia(context, paramName, value);
    TakeType(context, paramName, param->value.text);
  }
}

void OnVCardData(void* user, const char* bytes, std::int32_t length) {
  auto& context = *static_cast<VCardReadContext*>(user);
  if (bytes == nullptr) {
    context.propertyId = VCARD_NO_PROPERTY;
    context.typeFlags = 0;
    return;
  }
  CContacts& contacts = *context.contacts;
  const NarrowStringView value(bytes, static_cast<std::size_t>(length));
  // The only place where a card begins; none has an end, so what stands behind its END is its own.
  if (context.propertyId == VCARD_BEGIN && IsStartOf(kContactObject.text, value)) {
    if (context.watcher != nullptr) {
      context.watcher->Complete([&contacts] { return NameOfLast(contacts); });
      context.watcher->BeginRecord();
    }
    if (context.onBegin) context.onBegin();
    contacts.AddNew();
  }
  if (context.isEnd) WatchEnd(*context.watcher, value);
  if (contacts.GetCount() == 0) return;
  CContact& contact = contacts[contacts.GetCount() - 1];
  if (!TakeVCardValue(context, bytes, length, contact) && context.watcher != nullptr) {
    const auto id = static_cast<std::uint32_t>(context.propertyId);
    context.watcher->Note(TextEvent::DateNotUnderstood, TextOf(kVCardProperties, id), value);
  }
}

}  // namespace pim
