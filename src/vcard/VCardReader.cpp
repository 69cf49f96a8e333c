#include "vcard/VCardReader.h"

#include <new>
#include <span>

#include "support/ParameterTable.h"
#include "support/RaiseParseFailure.h"
#include "vcard/VCardValues.h"
#include "vcard/VCardWords.h"

namespace pim {
namespace {

NarrowStringView ValueOf(const ParserParam& param) {
  return param.value.text == nullptr ? NarrowStringView{} : param.value.text;
}

constexpr WordIndex kPropertyIndex(kVCardProperties);
constexpr WordIndex kTelephoneIndex(kTelephoneWords);
constexpr WordIndex kAddressIndex(kAddressWords);
constexpr WordIndex kMediaIndex(kMediaWords);

void TakeMedia(VCardReadContext& context, NarrowStringView name, NarrowStringView value) {
  if (EqualsIgnoringCase(name, "TYPE")) {
    const auto code = kMediaIndex.CodeOf(value);
    context.mediaType = code ? static_cast<std::int32_t>(*code) : MEDIA_OTHER;
  } else if (const auto code = kMediaIndex.CodeOf(name)) {
    context.mediaType = static_cast<std::int32_t>(*code);
  }
}

// The bits of all words: each is a parameter's name, or its value when `typeForm` allows TYPE=.
template <class Index>
std::uint32_t MaskOf(const Index& words, const ParserParam* params, bool typeForm) {
  std::uint32_t mask = 0;
  for (; params->name.text != nullptr; ++params) {
    const bool valued =
        typeForm && params->value.text != nullptr && EqualsIgnoringCase(params->name.text, "TYPE");
    mask |= words.CodeOf(valued ? params->value.text : params->name.text).value_or(0);
  }
  return mask;
}

// The code of the last known word.
std::uint32_t LastCodeOf(std::span<const Word> words, const ParserParam* params) {
  std::uint32_t code = 0;
  for (; params->name.text != nullptr; ++params)
    code = CodeOf(words, params->name.text).value_or(code);
  return code;
}

std::uint32_t TypeFlagsOf(std::int32_t propertyId, const ParserParam* params) {
  switch (propertyId) {
    case VCARD_TEL:
      return MaskOf(kTelephoneIndex, params, true);
    case VCARD_ADR:
      return MaskOf(kAddressIndex, params, false);
    case VCARD_EMAIL:
      return LastCodeOf(kEmailWords, params);
    case VCARD_URL:
      return LastCodeOf(kUrlWords, params);
    case VCARD_ORG:
      return LastCodeOf(kOrganizationWords, params);
    case VCARD_X_CHATID:
      return LastCodeOf(kMessengerWords, params);
    default:
      return 0;
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

bool VCardReader::Read(NarrowStringView piece, bool final) {
  return parser_->Parse(piece.data(), static_cast<std::int32_t>(piece.size()), final);
}

void RaiseVCardFailure() { RaiseParseFailure(u"Error parsing vCard"); }

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
  for (const ParserParam* param = params; param->name.text != nullptr; ++param) {
    const NarrowStringView paramName = param->name.text;
    const NarrowStringView value = ValueOf(*param);
    if (!TakeTextParameter(paramName, value, context.charset, context.encoding))
      TakeMedia(context, paramName, value);
  }
  const auto id = kPropertyIndex.CodeOf(name);
  context.propertyId = id ? static_cast<std::int32_t>(*id) : VCARD_UNKNOWN;
  context.typeFlags = TypeFlagsOf(context.propertyId, params);
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
  if (context.propertyId == VCARD_BEGIN && IsStartOf("VCARD", value)) contacts.AddNew();
  if (contacts.GetCount() == 0) return;
  TakeVCardValue(context, bytes, length, contacts[contacts.GetCount() - 1]);
}

}  // namespace pim
