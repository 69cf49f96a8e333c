// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "pim/Export.h"
#include "pim/records/Recurrence.h"
#include "pim/support/Strings.h"

namespace pim {

// The words that vObject text has for the codes of records, spelt as the writers spell them, for
// hosts that show records. A code without a word gives an empty text. Any thread may ask; what
// gives a NarrowString throws std::bad_alloc, what gives a view allocates nothing.

// Of all bits of CTelephoneNumber::number_type and CPostalAddress::address_type, with blanks
// between, in the order in which they are written: "PREF CELL".
PIM_EXPORT NarrowString TelephoneWords(std::uint32_t number_type);
PIM_EXPORT NarrowString AddressWords(std::uint32_t address_type);

// Of one code: "Work", "GoogleTalk". The views hold for ever.
PIM_EXPORT NarrowStringView EmailWord(std::uint32_t email_type);
PIM_EXPORT NarrowStringView UrlWord(std::uint32_t url_type);
PIM_EXPORT NarrowStringView OrganizationWord(std::uint32_t org_type);
PIM_EXPORT NarrowStringView MessengerWord(std::uint32_t messenger_type);
PIM_EXPORT NarrowStringView BloodWord(std::int32_t blood_type);
PIM_EXPORT NarrowStringView ClassWord(std::int32_t class_code);
PIM_EXPORT NarrowStringView StatusWord(std::int32_t status);
// From 0, Sunday: "SU".
PIM_EXPORT NarrowStringView WeekdayWord(std::int32_t weekday);

// A rule in vCalendar 1.0's basic grammar: "W2 MO FR #6". Empty without one.
PIM_EXPORT NarrowString RuleWords(const CRecurrence& rule);

}  // namespace pim
