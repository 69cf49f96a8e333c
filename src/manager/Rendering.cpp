// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>

#include "pim/manager/LabelKeys.h"
#include "pim/manager/VObjectMgr.h"
#include "pim/records/Calendar.h"
#include "support/Ascii.h"
#include "support/TextCodec.h"
#include "vcalendar/VCalendarReader.h"
#include "vcard/VCardReader.h"

namespace pim {
namespace {

constexpr WideStringView kLineEnd = u"\n";

VObjectBuffer NarrowObject(WideStringView text) {
  NarrowString bytes;
  NarrowText(text, bytes);
  VObjectBuffer data;
  data.bytes.Assign(bytes.data(), bytes.size());
  return data;
}

// Whether the text begins with the word, in any ASCII letter case.
bool BeginsWith(WideStringView text, NarrowStringView word) {
  return text.size() >= word.size() &&
         std::equal(word.begin(), word.end(), text.begin(), [](char letter, char16_t unit) {
           return unit < 0x80 && ToUpper(static_cast<char>(unit)) == letter;
         });
}

template <class... Numbers>
WideString Format(const char* form, Numbers... numbers) {
  std::array<char, 64> text{};
  const int length = std::snprintf(text.data(), text.size(), form, numbers...);
  return {text.data(), text.data() + length};
}

// The record's own value, UTC. A date that isn't set or doesn't exist is shown as none.
WideString FormatDate(const COleDateTime& value) {
  if (value.GetYear() < 0) return {};
  return Format("%02d/%02d/%04d", value.GetDay(), value.GetMonth(), value.GetYear());
}

WideString FormatTime(const COleDateTime& value) {
  if (value.GetYear() < 0) return {};
  return Format("%02d:%02d", value.GetHour(), value.GetMinute());
}

// A rendering under construction: labels, each with its value below.
class Rendering {
 public:
  Rendering(const VObjectMgr& manager, Label heading) : manager_(manager) {
    text_.append(manager_.GetString(KeyOf(heading))).append(kLineEnd).append(kLineEnd);
  }

  void Add(Label label, WideStringView value) {
    text_.append(Word(label)).append(u":").append(kLineEnd);
    AddLine(value);
  }
  void AddNumbered(Label label, std::int32_t number, WideStringView value) {
    text_.append(Word(label)).append(Format(" #%d:\n", number));
    AddLine(value);
  }
  void AddLine(WideStringView line) { text_.append(line).append(kLineEnd); }
  WideString Word(Label label) const { return manager_.GetString(KeyOf(label)); }
  WideString Word(std::optional<Label> label) const { return label ? Word(*label) : WideString(); }

  WideString& text() { return text_; }

 private:
  const VObjectMgr& manager_;
  WideString text_;
};

std::optional<Label> CategoryLabel(std::uint32_t mask) {
  switch (mask) {
    case CATEGORY_ANNIVERSARY:
      return Label::Anniversary;
    case CATEGORY_APPOINTMENT:
      return Label::Appointment;
    case CATEGORY_BIRTHDAY:
      return Label::Birthday;
    default:
      return std::nullopt;
  }
}

std::optional<Label> RepeatLabel(const RecurrenceData* rule) {
  if (rule == nullptr) return Label::Once;
  switch (rule->type) {
    case RECUR_DAILY:
      return Label::Daily;
    case RECUR_WEEKLY:
      return Label::Weekly;
    case RECUR_MONTHLY_BY_POS:
    case RECUR_MONTHLY_BY_DAY:
      return Label::Monthly;
    case RECUR_YEARLY_BY_MONTH:
    case RECUR_YEARLY_BY_DAY:
      return Label::Yearly;
    default:
      return std::nullopt;
  }
}

std::optional<Label> PriorityLabel(std::int32_t priority) {
  switch (priority) {
    case PRIORITY_HIGH:
      return Label::High;
    case PRIORITY_MEDIUM:
      return Label::Medium;
    case PRIORITY_LOW:
      return Label::Low;
    default:
      return std::nullopt;
  }
}

WideString AlarmPhrase(const Rendering& rendering, const CCalendar& item) {
  std::int32_t minutes = 0;
  item.GetAlarmRuntime(minutes);
  switch (item.GetAlarmType()) {
    case DESKMATE_IDS::ALARM_NONE:
      return rendering.Word(Label::NoAlarm);
    case DESKMATE_IDS::ALARM_AUDIO:
    case DESKMATE_IDS::ALARM_OTHER:
      return Format("%d ", minutes).append(rendering.Word(Label::MinutesBefore));
    default:
      return {};
  }
}

}  // namespace

void VObjectMgr::MakeMapString(WideString key, WideString text) {
  if (labelMap == nullptr) labelMap = std::make_unique<std::map<WideString, WideString>>();
  labelMap->try_emplace(std::move(key), std::move(text));
}

WideString VObjectMgr::GetString(const char16_t* key) const {
  if (labelMap == nullptr) return {};
  const auto found = labelMap->find(key);
  return found == labelMap->end() ? WideString() : found->second;
}

WideString VObjectMgr::VObjectToString(WideString text) const {
  if (BeginsWith(text, "BEGIN:VCARD")) return VCardToString(std::move(text));
  if (BeginsWith(text, "BEGIN:VCALE")) return VCalendarToString(std::move(text));
  if (BeginsWith(text, "BEGIN:VTODO")) return VTodoToString(std::move(text));
  return text;
}

WideString VObjectMgr::VCardToString(WideString text) const {
  if (text.empty()) return {};
  CContacts contacts;
  ParseVCard(contacts, NarrowObject(text));
  if (contacts.GetCount() == 0) return {};
  const CContact& contact = contacts[0];
  Rendering rendering(*this, Label::VCard);
  rendering.Add(Label::Name,
                contact.name.given_name.str().append(u" ").append(contact.name.family_name.view()));
  for (std::int32_t i = 0; i < contact.GetTelephoneCount(); ++i)
    rendering.AddNumbered(Label::Number, i, contact.GetTelephone(i).number);
  for (std::int32_t i = 0; i < contact.GetEmailCount(); ++i)
    rendering.AddNumbered(Label::Email, i, contact.GetEmail(i).email_address);
  return std::move(rendering.text());
}

WideString VObjectMgr::VCalendarToString(WideString text) const {
  if (text.empty()) return {};
  CCalendars items;
  ParseVCalendar(items, NarrowObject(text));
  if (items.GetCount() == 0) return {};
  const CCalendar& item = items[0];
  const RecurrenceData* rule = item.recurrence.GetRecurrenceData();
  const bool ends = rule != nullptr && rule->endDate.status == StatusValid;
  Rendering rendering(*this, Label::VCalendar);
  rendering.Add(Label::StartDate, FormatDate(item.start_time));
  rendering.Add(Label::EndDate, FormatDate(item.end_time));
  rendering.Add(Label::Category, rendering.Word(CategoryLabel(item.GetCategories())));
  rendering.Add(Label::Time,
                FormatTime(item.start_time).append(u" ~ ").append(FormatTime(item.end_time)));
  rendering.Add(Label::Subject, item.summary);
  rendering.Add(Label::Location, item.location);
  rendering.Add(Label::Alarm, AlarmPhrase(rendering, item));
  rendering.Add(Label::Repeat, rendering.Word(RepeatLabel(rule)));
  rendering.Add(Label::Expiration,
                ends ? FormatDate(rule->endDate) : rendering.Word(Label::NoExpiration));
  return std::move(rendering.text());
}

WideString VObjectMgr::VTodoToString(WideString text) const {
  if (text.empty()) return {};
  CCalendars items;
  ParseVCalendar(items, NarrowObject(text));
  if (items.GetCount() == 0) return {};
  const CCalendar& item = items[0];
  Rendering rendering(*this, Label::VTodo);
  rendering.AddLine(rendering.Word(Label::Date));  // the one label without a colon
  rendering.AddLine(FormatDate(item.due));
  rendering.Add(Label::Priority, rendering.Word(PriorityLabel(item.priority)));
  rendering.Add(Label::Notes, {});
  return std::move(rendering.text());
}

}  // namespace pim
