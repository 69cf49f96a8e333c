// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/manager/TypeWords.h"

#include "vcalendar/RecurrenceWriter.h"
#include "vcalendar/VCalendarWords.h"
#include "vcard/VCardWords.h"

namespace pim {
namespace {

NarrowString WordsOfMask(std::span<const Word> words, std::uint32_t mask) {
  NarrowString text;
  for (const Word& word : words)
    if ((mask & word.code) != 0) text.append(text.empty() ? "" : " ").append(word.text);
  return text;
}

NarrowStringView WordOf(std::span<const Word> words, std::int32_t code) {
  return TextOf(words, static_cast<std::uint32_t>(code));
}

}  // namespace

NarrowString TelephoneWords(std::uint32_t number_type) {
  return WordsOfMask(kTelephoneWords, number_type);
}
NarrowString AddressWords(std::uint32_t address_type) {
  return WordsOfMask(kAddressWords, address_type);
}

NarrowStringView EmailWord(std::uint32_t email_type) { return TextOf(kEmailWords, email_type); }
NarrowStringView UrlWord(std::uint32_t url_type) { return TextOf(kUrlWords, url_type); }
NarrowStringView OrganizationWord(std::uint32_t org_type) {
  return TextOf(kOrganizationWords, org_type);
}
NarrowStringView MessengerWord(std::uint32_t messenger_type) {
  return TextOf(kMessengerWords, messenger_type);
}
NarrowStringView BloodWord(std::int32_t blood_type) { return WordOf(kBloodWords, blood_type); }
NarrowStringView ClassWord(std::int32_t class_code) { return WordOf(kClassWords, class_code); }
NarrowStringView StatusWord(std::int32_t status) { return WordOf(kStatusWords, status); }
NarrowStringView WeekdayWord(std::int32_t weekday) { return WordOf(kWeekdayWords, weekday); }

NarrowString RuleWords(const CRecurrence& rule) {
  NarrowString text;
  const bool known = rule.data != nullptr && FormatRule(*rule.data, text);
  return known ? text : NarrowString();
}

}  // namespace pim
