// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/prepare/TypeWords.h"

#include <algorithm>
#include <iterator>

#include "formats/vcard4/CardWords.h"
#include "pim/manager/TypeWords.h"
#include "support/Ascii.h"

namespace pim {
namespace {

NarrowString WordOfEmail(std::uint32_t code) { return NarrowString(EmailWord(code)); }
NarrowString WordOfUrl(std::uint32_t code) { return NarrowString(UrlWord(code)); }
NarrowString WordOfOrganization(std::uint32_t code) { return NarrowString(OrganizationWord(code)); }
NarrowString WordOfMessenger(std::uint32_t code) { return NarrowString(MessengerWord(code)); }

template <const TypeWords& kTypes, NarrowString (*kWords)(std::uint32_t)>
NarrowString LabelInWords(NarrowStringView label) {
  const TypesRead types = ReadTypes(kTypes, CardLine(), LabelText(label));
  return types.isLabelUsed && types.code != 0 ? kWords(types.code) : NarrowString();
}
NarrowString NoLabel(NarrowStringView) { return {}; }

constexpr CardTypes kCardTypes[] = {
    {"TEL", true, LabelInWords<kTelephoneTypes, TelephoneWords>, TelephoneWords},
    {"ADR", false, LabelInWords<kAddressTypes, AddressWords>, AddressWords},
    {"EMAIL", false, LabelInWords<kEmailTypes, WordOfEmail>, WordOfEmail},
    {"URL", false, LabelInWords<kUrlTypes, WordOfUrl>, WordOfUrl},
    {"ORG", false, LabelInWords<kOrganizationTypes, WordOfOrganization>, WordOfOrganization},
    {"X-CHATID", false, NoLabel, WordOfMessenger},
};

}  // namespace

// Codes are small numbers, or bits.
bool CardTypes::Knows(std::string_view word) const {
  constexpr std::uint32_t kMostCodes = 11;
  for (std::uint32_t code = 1; code < kMostCodes; ++code)
    if (EqualsIgnoringCase(wordOfCode(code), word)) return true;
  for (std::uint32_t bit = 0; bit < 32; ++bit)
    if (EqualsIgnoringCase(wordOfCode(1U << bit), word)) return true;
  return false;
}

const CardTypes* TypesOfProperty(std::string_view name) {
  const auto* const row = std::ranges::find_if(kCardTypes, [name](const CardTypes& types) {
    return EqualsIgnoringCase(types.property, name);
  });
  return row == std::end(kCardTypes) ? nullptr : row;
}

}  // namespace pim
