// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "pim/records/TypeCodes.h"
#include "records/CategoryWords.h"
#include "support/WordTable.h"
#include "vcalendar/VCalendarWords.h"
#include "vcard/VCardWords.h"

namespace pim {

// Codes that no table of words has: those of properties and objects.
inline constexpr Word kEventProperties[] = {
    {"BDAY", EVENT_BIRTHDAY}, {"X-ANNI", EVENT_ANNIVERSARY}, {"X-EVENTDAY", EVENT_OTHER}};
inline constexpr Word kObjectsOfKinds[] = {
    {"VEVENT", static_cast<std::uint32_t>(CalendarType::Event)},
    {"VTODO", static_cast<std::uint32_t>(CalendarType::Todo)},
    {"VMEMO", static_cast<std::uint32_t>(CalendarType::Memo)}};
inline constexpr Word kAlarms[] = {{"AALARM", DESKMATE_IDS::ALARM_AUDIO}};

struct CodedWords {
  std::string_view where;
  std::string_view key;  // of the dump; empty where no code is kept
  std::string_view remark;
  std::span<const Word> words;
};
inline constexpr CodedWords kCodedWords[] = {
    {"TEL, bare or behind `TYPE=`, any number", "number_type", ": the sum", kTelephoneWords},
    {"ADR, bare, any number", "address_type", ": the sum", kAddressWords},
    {"EMAIL, bare, the last one", "email_type", "", kEmailWords},
    {"URL, bare, the last one", "url_type", "", kUrlWords},
    {"ORG, bare, the last one", "org_type", "", kOrganizationWords},
    {"X-CHATID, bare, the last one", "messenger_type", "", kMessengerWords},
    {"the property of a day", "event_type", "", kEventProperties},
    {"PHOTO, bare or behind `TYPE=`, the last one", "", "the picture's extension", kMediaWords},
    {"value of X-BLOOD", "blood_type", "", kBloodWords},
    {"the object of an item", "calendar_type", "", kObjectsOfKinds},
    {"value of CLASS", "class", "", kClassWords},
    {"value of STATUS", "status", "", kStatusWords},
    {"the property of an alarm", "alarmType", "", kAlarms},
    {"AALARM, `TYPE=`", "reminderType", "", kAlarmTypeWords},
    {"AALARM, `VALUE=`", "valueType", "", kAlarmValueWords},
    {"words of CATEGORIES; of these APPOINTMENT, ANNIVERSARY and BIRTHDAY are kept, and MEMO makes "
     "the item one",
     "", "`categories`: the words", kCategoryWords},
    {"start of RRULE and XRULE", "type", " of a rule", kRuleWords},
    {"weekdays of a rule", "days", " or `weekdays`", kWeekdayWords},
};

}  // namespace pim
