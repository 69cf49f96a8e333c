// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/vcard4/CsvFields.h"

#include <algorithm>

#include "formats/vcard4/DayText.h"
#include "formats/vcard4/UriText.h"
#include "formats/vcard4/VCardRows.h"
#include "pim/manager/TypeWords.h"
#include "platform/CodePages.h"
#include "support/Ascii.h"

namespace pim {
namespace {

// The labels that address books know; a mask has its label as a whole.
constexpr Word kTelephoneLabels[] = {
    {"Mobile", TEL_CELL},
    {"Home", TEL_HOME},
    {"Work", TEL_WORK},
    {"Home Fax", TEL_HOME | TEL_FAX},
    {"Work Fax", TEL_WORK | TEL_FAX},
    {"Other Fax", TEL_OTHER | TEL_FAX},
    {"Main", TEL_MAIN},
    {"Pager", TEL_PAGER},
    {"Other", TEL_OTHER},
};
constexpr Word kAddressLabels[] = {{"Home", ADR_HOME}, {"Work", ADR_WORK}, {"Other", ADR_OTHER}};
constexpr Word kEmailLabels[] = {{"Home", EMAIL_PRIVATE}};
constexpr Word kUrlLabels[] = {{"Home", URL_PRIVATE}};
constexpr Word kEventLabels[] = {
    {"Birthday", EVENT_BIRTHDAY}, {"Anniversary", EVENT_ANNIVERSARY}, {"Other", EVENT_OTHER}};
constexpr NarrowStringView kPreferredLabel = "* ";  // ahead of the label of a preferred entry

bool AppendText(WideStringView text, NarrowString& out) {
  AppendUtf8(text, out);
  return !HasLoneSurrogate(text);
}

// The label of a mask, or else its words.
void AppendMask(std::span<const Word> labels, std::uint32_t mask, std::uint32_t preferred,
                NarrowString (*wordsOf)(std::uint32_t), NarrowString& out) {
  const std::uint32_t rest = mask & ~preferred;
  if (rest != mask) out.append(kPreferredLabel);
  const NarrowStringView label = TextOf(labels, rest);
  out.append(label.empty() ? wordsOf(rest) : NarrowString(label));
}
void AppendCode(std::span<const Word> labels, std::uint32_t code,
                NarrowStringView (*wordOf)(std::uint32_t), NarrowString& out) {
  const NarrowStringView label = TextOf(labels, code);
  if (code != 0) out.append(label.empty() ? wordOf(code) : label);
}

bool HasWord(NarrowStringView words, NarrowStringView word) {
  while (!words.empty()) {
    const std::size_t end = words.find(' ');
    if (EqualsIgnoringCase(words.substr(0, end), word)) return true;
    words.remove_prefix(end == NarrowStringView::npos ? words.size() : end + 1);
  }
  return false;
}

template <WideText CName::*Part>
bool NameText(const CContact& contact, std::size_t, NarrowString& out) {
  return AppendText(contact.name.*Part, out);
}
template <WideText CName::*Part>
bool PhoneticText(const CContact& contact, std::size_t, NarrowString& out) {
  return AppendText(contact.phonetic.*Part, out);
}
template <WideText CContact::*Field>
bool FieldText(const CContact& contact, std::size_t, NarrowString& out) {
  return AppendText(contact.*Field, out);
}
template <WideText CPostalAddress::*Part>
bool AddressText(const CContact& contact, std::size_t index, NarrowString& out) {
  return AppendText(contact.addresses()[index].*Part, out);
}
// A list of plain texts.
template <auto List>
bool ListText(const CContact& contact, std::size_t index, NarrowString& out) {
  return AppendText((contact.*List)()[index], out);
}
template <auto List>
std::size_t SizeOf(const CContact& contact) {
  return (contact.*List)().size();
}

constexpr CsvMember kFavoriteMember[] = {{"", [](const CContact& contact, std::size_t, auto& out) {
                                            if (contact.favorite != 0) out.append(kFavoriteWord);
                                            return true;
                                          }}};
constexpr CsvMember kNameMembers[] = {
    {"family_name", NameText<&CName::family_name>},
    {"given_name", NameText<&CName::given_name>},
    {"additional_name", NameText<&CName::additional_name>},
    {"prefix_name", NameText<&CName::prefix_name>},
    {"suffix_name", NameText<&CName::suffix_name>},
};
constexpr CsvMember kPhoneticMembers[] = {
    {"family_name", PhoneticText<&CName::family_name>},
    {"given_name", PhoneticText<&CName::given_name>},
    {"additional_name", PhoneticText<&CName::additional_name>},
    {"prefix_name", PhoneticText<&CName::prefix_name>},
    {"suffix_name", PhoneticText<&CName::suffix_name>},
};
constexpr CsvMember kFormattedMember[] = {{"", FieldText<&CContact::formatted_name>}};
constexpr CsvMember kBloodMember[] = {{"", [](const CContact& contact, std::size_t, auto& out) {
                                         out.append(BloodWord(contact.blood_type));
                                         return true;
                                       }}};
constexpr CsvMember kHobbyMember[] = {{"", FieldText<&CContact::hobby>}};
constexpr CsvMember kTitleMember[] = {{"", FieldText<&CContact::org_title>}};
constexpr CsvMember kRoleMember[] = {{"", FieldText<&CContact::org_role>}};
constexpr CsvMember kPhotoMember[] = {{"", FieldText<&CContact::photo>}};
constexpr CsvMember kTelephoneMembers[] = {
    {"number_type",
     [](const CContact& contact, std::size_t index, auto& out) {
       // A number is one for voices unless it says more (RFC 2426, 3.3.1).
       AppendMask(kTelephoneLabels, contact.telephones()[index].number_type & ~TEL_VOICE,
                  TEL_PREFERRED, TelephoneWords, out);
       return true;
     },
     MemberKind::Type},
    {"number", [](const CContact& contact, std::size_t index,
                  auto& out) { return AppendText(contact.telephones()[index].number, out); }},
};
constexpr CsvMember kEmailMembers[] = {
    {"email_type",
     [](const CContact& contact, std::size_t index, auto& out) {
       AppendCode(kEmailLabels, contact.emails()[index].email_type, EmailWord, out);
       return true;
     },
     MemberKind::Type},
    {"email_address",
     [](const CContact& contact, std::size_t index, auto& out) {
       return AppendText(contact.emails()[index].email_address, out);
     }},
};
constexpr CsvMember kMessengerMembers[] = {
    {"messenger_type",
     [](const CContact& contact, std::size_t index, auto& out) {
       AppendCode({}, contact.messengers()[index].messenger_type, MessengerWord, out);
       return true;
     },
     MemberKind::Type},
    {"messenger_address",
     [](const CContact& contact, std::size_t index, auto& out) {
       return AppendText(contact.messengers()[index].messenger_address, out);
     }},
};
constexpr CsvMember kUrlMembers[] = {
    {"url_type",
     [](const CContact& contact, std::size_t index, auto& out) {
       AppendCode(kUrlLabels, contact.urls()[index].url_type, UrlWord, out);
       return true;
     },
     MemberKind::Type},
    {"url_address", [](const CContact& contact, std::size_t index,
                       auto& out) { return AppendText(contact.urls()[index].url_address, out); }},
};
constexpr CsvMember kAddressMembers[] = {
    {"address_type",
     [](const CContact& contact, std::size_t index, auto& out) {
       AppendMask(kAddressLabels, contact.addresses()[index].address_type, ADR_PREFERRED,
                  AddressWords, out);
       return true;
     },
     MemberKind::Type},
    {"post_office", AddressText<&CPostalAddress::post_office>},
    {"extended_address", AddressText<&CPostalAddress::extended_address>},
    {"street", AddressText<&CPostalAddress::street>},
    {"locality", AddressText<&CPostalAddress::locality>},
    {"region", AddressText<&CPostalAddress::region>},
    {"postal_code", AddressText<&CPostalAddress::postal_code>},
    {"country", AddressText<&CPostalAddress::country>},
};
constexpr CsvMember kOrganizationMembers[] = {
    {"org_type",
     [](const CContact& contact, std::size_t index, auto& out) {
       AppendCode({}, contact.organizations()[index].org_type, OrganizationWord, out);
       return true;
     },
     MemberKind::Type},
    {"org_name",
     [](const CContact& contact, std::size_t index, auto& out) {
       return AppendText(contact.organizations()[index].org_name, out);
     }},
    {"org_position",
     [](const CContact& contact, std::size_t index, auto& out) {
       return AppendText(contact.organizations()[index].org_position, out);
     }},
    {"org_additional",
     [](const CContact& contact, std::size_t index, auto& out) {
       bool isWhole = true;
       const std::size_t start = out.size();
       for (const WideText& unit : contact.organizations()[index].org_additional) {
         if (unit.empty()) continue;
         if (out.size() != start) out.append(", ");
         isWhole = AppendText(unit, out) && isWhole;
       }
       return isWhole;
     }},
};
constexpr CsvMember kEventMembers[] = {
    {"event_type",
     [](const CContact& contact, std::size_t index, auto& out) {
       const NarrowStringView label =
           TextOf(kEventLabels, contact.contactEvents()[index].event_type);
       out.append(label.empty() ? TextOf(kEventLabels, EVENT_OTHER) : label);
       return true;
     },
     MemberKind::Type},
    {"event_date",
     [](const CContact& contact, std::size_t index, auto& out) {
       if (const auto day = contact.contactEvents()[index].event_date.GetFields())
         out.append(DayText(*day, true).AddDay().view());
       return true;
     }},
};
constexpr CsvMember kNicknameMember[] = {{"", ListText<&CContact::nicknames>}};
constexpr CsvMember kCommentMember[] = {{"", ListText<&CContact::comments>}};
constexpr CsvMember kGroupMember[] = {{"", ListText<&CContact::groups>}};

constexpr CsvList kLists[] = {
    {"favorite", nullptr, kFavoriteMember, nullptr},
    {"name", nullptr, kNameMembers, nullptr},
    {"phonetic", nullptr, kPhoneticMembers, nullptr},
    {"formatted_name", nullptr, kFormattedMember, nullptr},
    {"blood_type", nullptr, kBloodMember, nullptr},
    {"hobby", nullptr, kHobbyMember, nullptr},
    {"org_title", nullptr, kTitleMember, nullptr},
    {"org_role", nullptr, kRoleMember, nullptr},
    {"photo", nullptr, kPhotoMember, nullptr},
    {"telephones", SizeOf<&CContact::telephones>, kTelephoneMembers,
     [](const CContact& contact, std::size_t index, NarrowStringView word) {
       return HasWord(TelephoneWords(contact.telephones()[index].number_type), word);
     }},
    {"emails", SizeOf<&CContact::emails>, kEmailMembers,
     [](const CContact& contact, std::size_t index, NarrowStringView word) {
       return HasWord(EmailWord(contact.emails()[index].email_type), word);
     }},
    {"messengers", SizeOf<&CContact::messengers>, kMessengerMembers,
     [](const CContact& contact, std::size_t index, NarrowStringView word) {
       return HasWord(MessengerWord(contact.messengers()[index].messenger_type), word);
     }},
    {"urls", SizeOf<&CContact::urls>, kUrlMembers,
     [](const CContact& contact, std::size_t index, NarrowStringView word) {
       return HasWord(UrlWord(contact.urls()[index].url_type), word);
     }},
    {"addresses", SizeOf<&CContact::addresses>, kAddressMembers,
     [](const CContact& contact, std::size_t index, NarrowStringView word) {
       return HasWord(AddressWords(contact.addresses()[index].address_type), word);
     }},
    {"organizations", SizeOf<&CContact::organizations>, kOrganizationMembers,
     [](const CContact& contact, std::size_t index, NarrowStringView word) {
       return HasWord(OrganizationWord(contact.organizations()[index].org_type), word);
     }},
    {"events", SizeOf<&CContact::contactEvents>, kEventMembers,
     [](const CContact& contact, std::size_t index, NarrowStringView word) {
       return HasWord(TextOf(kEventLabels, contact.contactEvents()[index].event_type), word);
     }},
    {"nicknames", SizeOf<&CContact::nicknames>, kNicknameMember, nullptr},
    {"comments", SizeOf<&CContact::comments>, kCommentMember, nullptr},
    {"groups", SizeOf<&CContact::groups>, kGroupMember, nullptr},
};

}  // namespace

std::span<const CsvList> CsvLists() { return kLists; }

}  // namespace pim
