// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>

namespace pim {

// The words that a host gives for previews (VObjectMgr::VObjectToString), in the user's language.
// A table that never changes: any thread may use it.

// The words that the renderings ask for; each stands above its value or for it.
enum class Label : std::uint8_t {
  VCard,          // heading of a contact
  Name,           // of a contact: given name, family name
  Number,         // of a telephone, numbered
  Email,          // of an e-mail address, numbered
  VCalendar,      // heading of an item
  StartDate,      // day of an item's start
  EndDate,        // day of an item's end
  Category,       // of an item, one of the three below
  Appointment,    // CATEGORY_APPOINTMENT
  Anniversary,    // CATEGORY_ANNIVERSARY
  Birthday,       // CATEGORY_BIRTHDAY
  Time,           // from start to end
  Subject,        // the summary
  Location,       // of an item
  Alarm,          // of an item, one of the two below
  NoAlarm,        // ALARM_NONE
  MinutesBefore,  // behind the number
  Repeat,         // of an item, one of the five below
  Once,           // no repeat rule
  Daily,          // RECUR_DAILY
  Weekly,         // RECUR_WEEKLY
  Monthly,        // either of the monthly rules
  Yearly,         // either of the yearly rules
  Expiration,     // a rule's last day, or the next word
  NoExpiration,   // a rule without an end, or none
  VTodo,          // heading of a to-do
  Date,           // day on which a to-do is due
  Priority,       // of a to-do, one of the three below
  High,           // PRIORITY_HIGH
  Medium,         // PRIORITY_MEDIUM
  Low,            // PRIORITY_LOW
  Notes,          // of a to-do; nothing follows it
};

// A word and the key under which it is fed.
struct LabelKey {
  Label label;          // which word
  const char16_t* key;  // zero-terminated, good for ever
};

// The keys by which an application feeds the words through VObjectMgr::MakeMapString, in the order
// of the labels. A word that is missing leaves its place empty.
inline constexpr LabelKey kLabelKeys[] = {
    {Label::VCard, u"VCARD_vCard"},
    {Label::Name, u"VCARD_Name"},
    {Label::Number, u"VCARD_Number"},
    {Label::Email, u"VCARD_Email"},
    {Label::VCalendar, u"VCAL_vCalendar"},
    {Label::StartDate, u"VCAL_Start_date"},
    {Label::EndDate, u"VCAL_End_date"},
    {Label::Category, u"VCAL_Category"},
    {Label::Appointment, u"VCAL_Appointment"},
    {Label::Anniversary, u"VCAL_Anniversary"},
    {Label::Birthday, u"VCAL_Birthday"},
    {Label::Time, u"VCAL_Time"},
    {Label::Subject, u"VCAL_Subject"},
    {Label::Location, u"VCAL_Location"},
    {Label::Alarm, u"VCAL_Alarm"},
    {Label::NoAlarm, u"VCAL_No_alarm"},
    {Label::MinutesBefore, u"VCAL_mins_before"},
    {Label::Repeat, u"VCAL_Repeat"},
    {Label::Once, u"VCAL_Once"},
    {Label::Daily, u"VCAL_Daily"},
    {Label::Weekly, u"VCAL_Weekly"},
    {Label::Monthly, u"VCAL_Monthly"},
    {Label::Yearly, u"VCAL_Yearly"},
    {Label::Expiration, u"VCAL_Expiration"},
    {Label::NoExpiration, u"VCAL_No_expiration"},
    {Label::VTodo, u"VCAL_vTodo"},
    {Label::Date, u"VCAL_Date"},
    {Label::Priority, u"VCAL_Priority"},
    {Label::High, u"VCAL_High"},
    {Label::Medium, u"VCAL_Medium"},
    {Label::Low, u"VCAL_Low"},
    {Label::Notes, u"VCAL_Notes"},
};

// The key of a word.
constexpr const char16_t* KeyOf(Label label) {
  return kLabelKeys[static_cast<std::size_t>(label)].key;
}

static_assert([] {
  for (std::size_t i = 0; i < std::size(kLabelKeys); ++i)
    if (kLabelKeys[i].label != static_cast<Label>(i)) return false;
  return kLabelKeys[std::size(kLabelKeys) - 1].label == Label::Notes;
}());

}  // namespace pim
