// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>
#include <initializer_list>

#include "app/output/Fields.h"
#include "app/output/Output.h"
#include "pim/manager/TypeWords.h"
#include "platform/CodePages.h"

namespace pim::app {
namespace {

using Cell = std::string (*)(const CContact& contact, const LocalTimes& times, CellForm form);

template <class List, class TextOfEntry>
std::string Joined(const List& list, CellForm form, TextOfEntry textOf) {
  std::string cell;
  for (const auto& entry : list) {
    const std::string text = CellText(textOf(entry), form);
    if (text.empty()) continue;
    cell.append(cell.empty() ? "" : ", ").append(text);
  }
  return cell;
}

WideString JoinedParts(std::initializer_list<const WideText*> parts) {
  WideString text;
  for (const WideText* part : parts)
    if (!part->empty()) text.append(text.empty() ? u"" : u" ").append(part->view());
  return text;
}

template <WideText CContact::*Field>
std::string Plain(const CContact& contact, const LocalTimes&, CellForm form) {
  return CellText(contact.*Field, form);
}
template <WideText CName::*Part>
std::string NamePart(const CContact& contact, const LocalTimes&, CellForm form) {
  return CellText(contact.name.*Part, form);
}

// The entries of a list of the contact, by one text of each.
template <auto List, auto Member>
std::string Entries(const CContact& contact, const LocalTimes&, CellForm form) {
  return Joined((contact.*List)(), form,
                [](const auto& entry) -> WideStringView { return entry.*Member; });
}
template <auto List>
std::string Texts(const CContact& contact, const LocalTimes&, CellForm form) {
  return Joined((contact.*List)(), form,
                [](const WideText& entry) -> WideStringView { return entry; });
}

std::string Key(const CContact& contact, const LocalTimes&, CellForm) {
  return std::to_string(contact.tag);
}
std::string Name(const CContact& contact, const LocalTimes&, CellForm form) {
  return CellText(DisplayName(contact), form);
}
std::string PhoneticName(const CContact& contact, const LocalTimes&, CellForm form) {
  const CName& name = contact.phonetic;
  return CellText(JoinedParts({&name.prefix_name, &name.given_name, &name.additional_name,
                               &name.family_name, &name.suffix_name}),
                  form);
}
std::string Addresses(const CContact& contact, const LocalTimes&, CellForm form) {
  return Joined(contact.addresses(), form, [](const CPostalAddress& entry) {
    return JoinedParts({&entry.post_office, &entry.extended_address, &entry.street,
                        &entry.postal_code, &entry.locality, &entry.region, &entry.country});
  });
}
std::string Units(const CContact& contact, const LocalTimes&, CellForm form) {
  std::string cell;
  for (const COrganization& entry : contact.organizations()) {
    for (const WideStringView unit : {entry.org_position.view()})
      if (!unit.empty()) cell.append(cell.empty() ? "" : ", ").append(CellText(unit, form));
    for (const WideText& unit : entry.org_additional)
      if (!unit.empty()) cell.append(cell.empty() ? "" : ", ").append(CellText(unit, form));
  }
  return cell;
}
// Birthdays, anniversaries, or the days that are neither.
template <std::uint32_t Type>
std::string Days(const CContact& contact, const LocalTimes&, CellForm) {
  std::string cell;
  for (const CContactEvent& event : contact.contactEvents()) {
    const bool isOther =
        event.event_type != EVENT_BIRTHDAY && event.event_type != EVENT_ANNIVERSARY;
    if (Type == 0 ? !isOther : event.event_type != Type) continue;
    cell.append(cell.empty() ? "" : ", ").append(PlainDay(event.event_date));
  }
  return cell;
}
std::string Blood(const CContact& contact, const LocalTimes&, CellForm) {
  return std::string(BloodWord(contact.blood_type));
}
std::string Favourite(const CContact& contact, const LocalTimes&, CellForm) {
  return contact.favorite != 0 ? "yes" : "";
}
template <COleDateTimeNull CVObject::*Field>
std::string Moment(const CContact& contact, const LocalTimes& times, CellForm) {
  return times.Moment(contact.*Field);
}

constexpr FieldRow<CContact> kContactFieldRows[] = {
    {"key", false, Key},
    {"name", true, Name},
    {"full-name", true, Plain<&CContact::formatted_name>},
    {"family-name", true, NamePart<&CName::family_name>},
    {"given-name", true, NamePart<&CName::given_name>},
    {"additional-name", true, NamePart<&CName::additional_name>},
    {"prefix", true, NamePart<&CName::prefix_name>},
    {"suffix", true, NamePart<&CName::suffix_name>},
    {"phonetic-name", true, PhoneticName},
    {"nickname", true, Texts<&CContact::nicknames>},
    {"number", true, Entries<&CContact::telephones, &CTelephoneNumber::number>},
    {"mail", true, Entries<&CContact::emails, &CEmail::email_address>},
    {"messenger", true, Entries<&CContact::messengers, &CMessenger::messenger_address>},
    {"url", true, Entries<&CContact::urls, &CURL::url_address>},
    {"address", true, Addresses},
    {"organisation", true, Entries<&CContact::organizations, &COrganization::org_name>},
    {"unit", true, Units},
    {"title", true, Plain<&CContact::org_title>},
    {"role", true, Plain<&CContact::org_role>},
    {"birthday", false, Days<EVENT_BIRTHDAY>},
    {"anniversary", false, Days<EVENT_ANNIVERSARY>},
    {"event-day", false, Days<0>},
    {"blood-type", false, Blood},
    {"hobby", true, Plain<&CContact::hobby>},
    {"picture", false, Plain<&CContact::photo>},
    {"note", true, Texts<&CContact::comments>},
    {"groups", true, Texts<&CContact::groups>},
    {"favourite", false, Favourite},
    {"created", false, Moment<&CVObject::created_time>},
    {"modified", false, Moment<&CVObject::modified_time>},
};
constexpr std::string_view kUsual[] = {"key", "name", "number", "mail", "organisation", "groups"};

}  // namespace

std::string CellText(WideStringView text, CellForm form) {
  return form == CellForm::Table ? Shown(text) : Utf8FromWide(text);
}

std::span<const FieldRow<CContact>> FieldsOf(const CContact*) { return kContactFieldRows; }
std::span<const std::string_view> UsualContactFields() { return kUsual; }

std::string_view FieldOfDay(std::uint32_t type) {
  switch (type) {
    case EVENT_BIRTHDAY:
      return "birthday";
    case EVENT_ANNIVERSARY:
      return "anniversary";
    default:
      return "event-day";
  }
}

WideString DisplayName(const CContact& contact) {
  if (!contact.formatted_name.empty()) return contact.formatted_name.str();
  return JoinedParts({&contact.name.given_name, &contact.name.family_name});
}

}  // namespace pim::app
