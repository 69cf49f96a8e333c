// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>

namespace pim {

// The words that the renderings ask for.
enum class Label : std::uint8_t {
  VCard,  // heading of a contact
  Name,
  Number,
  Email,
  VCalendar,  // heading of an item
  StartDate,
  EndDate,
  Category,
  Appointment,
  Anniversary,
  Birthday,
  Time,
  Subject,
  Location,
  Alarm,
  NoAlarm,
  MinutesBefore,  // behind the number
  Repeat,
  Once,
  Daily,
  Weekly,
  Monthly,
  Yearly,
  Expiration,
  NoExpiration,
  VTodo,  // heading of a to-do
  Date,
  Priority,
  High,
  Medium,
  Low,
  Notes,
};

struct LabelKey {
  Label label;
  const char16_t* key;
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

constexpr const char16_t* KeyOf(Label label) {
  return kLabelKeys[static_cast<std::size_t>(label)].key;
}

static_assert([] {
  for (std::size_t i = 0; i < std::size(kLabelKeys); ++i)
    if (kLabelKeys[i].label != static_cast<Label>(i)) return false;
  return kLabelKeys[std::size(kLabelKeys) - 1].label == Label::Notes;
}());

}  // namespace pim
