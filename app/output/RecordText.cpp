// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/output/RecordText.h"

#include <algorithm>
#include <initializer_list>

#include "app/output/Fields.h"
#include "app/output/Output.h"
#include "pim/manager/TypeWords.h"

namespace pim::app {
namespace {

// Lines of one record: the title of a field, the words of a type, a value. Empty values are left
// out.
class Lines {
 public:
  explicit Lines(const Titles& titles) : titles_(titles) {}

  void Add(std::string_view field, WideStringView value, const std::string& words = {}) {
    if (value.empty()) return;
    text_.append("  ").append(titles_.Of(field));
    if (!words.empty()) text_.append(" (").append(words).append(")");
    text_.append(": ").append(Shown(value)).append("\n");
  }
  void AddFields(std::string_view field, std::initializer_list<const WideText*> texts,
                 const std::string& words = {}) {
    WideString joined;
    for (const WideText* text : texts)
      if (!text->empty()) joined.append(joined.empty() ? u"" : u"; ").append(text->view());
    Add(field, joined, words);
  }
  const std::string& text() const { return text_; }

 private:
  const Titles& titles_;
  std::string text_;
};

// A code of 0 says nothing.
std::string Unless0(std::uint32_t code, NarrowStringView word) {
  return code == 0 ? std::string() : std::string(word);
}

void AddName(Lines& lines, std::string_view field, const CName& name) {
  lines.AddFields(field, {&name.family_name, &name.given_name, &name.additional_name,
                          &name.prefix_name, &name.suffix_name});
}

WideString Ascii(NarrowStringView text) { return {text.begin(), text.end()}; }

std::string Padded(std::int32_t number, std::size_t width) {
  const std::string digits = std::to_string(number);
  return std::string(width - std::min(width, digits.size()), '0') + digits;
}

WideString DateText(const COleDateTime& date) {
  if (date.status != StatusValid) return u"(no date)";
  return Ascii(Padded(date.GetYear(), 4) + "-" + Padded(date.GetMonth(), 2) + "-" +
               Padded(date.GetDay(), 2));
}

// In UTC, as the record has it.
void AddTime(Lines& lines, std::string_view field, const COleDateTime& time) {
  if (time.status == StatusNull) return;
  const WideString clock =
      time.status != StatusValid
          ? WideString()
          : Ascii(" " + Padded(time.GetHour(), 2) + ":" + Padded(time.GetMinute(), 2) + " UTC");
  lines.Add(field, DateText(time) + clock);
}

}  // namespace

std::string LinesOf(const CContact& contact, const Titles& titles) {
  Lines lines(titles);
  AddName(lines, "name", contact.name);
  AddName(lines, "phonetic-name", contact.phonetic);
  lines.Add("full-name", contact.formatted_name);
  for (const WideText& nickname : contact.nicknames()) lines.Add("nickname", nickname);
  for (const CTelephoneNumber& entry : contact.telephones())
    lines.Add("number", entry.number, TelephoneWords(entry.number_type));
  for (const CEmail& entry : contact.emails()) {
    lines.Add("mail", entry.email_address, Unless0(entry.email_type, EmailWord(entry.email_type)));
  }
  for (const CMessenger& entry : contact.messengers()) {
    lines.Add("messenger", entry.messenger_address,
              Unless0(entry.messenger_type, MessengerWord(entry.messenger_type)));
  }
  for (const CURL& entry : contact.urls())
    lines.Add("url", entry.url_address, Unless0(entry.url_type, UrlWord(entry.url_type)));
  for (const CPostalAddress& entry : contact.addresses()) {
    lines.AddFields("address",
                    {&entry.post_office, &entry.extended_address, &entry.street, &entry.locality,
                     &entry.region, &entry.postal_code, &entry.country},
                    AddressWords(entry.address_type));
  }
  for (const COrganization& entry : contact.organizations()) {
    lines.AddFields("organisation", {&entry.org_name, &entry.org_position},
                    Unless0(entry.org_type, OrganizationWord(entry.org_type)));
    for (const WideText& unit : entry.org_additional) lines.Add("unit", unit);
  }
  lines.Add("title", contact.org_title);
  lines.Add("role", contact.org_role);
  for (const CContactEvent& event : contact.contactEvents())
    lines.Add(FieldOfDay(event.event_type), DateText(event.event_date));
  lines.Add("blood-type", Ascii(BloodWord(contact.blood_type)));
  lines.Add("hobby", contact.hobby);
  lines.Add("picture", contact.photo);
  for (const WideText& comment : contact.comments()) lines.Add("note", comment);
  for (const WideText& group : contact.groups()) lines.Add("groups", group);
  if (contact.favorite != 0) lines.Add("favourite", u"yes");
  return lines.text();
}

std::string LinesOf(const CCalendar& item, const Titles& titles) {
  Lines lines(titles);
  lines.Add("summary", item.summary);
  lines.Add("description", item.description);
  lines.Add("location", item.location);
  AddTime(lines, "start", item.start_time);
  AddTime(lines, "end", item.end_time);
  if (item.allday == 1) lines.Add("all-day", u"yes");
  AddTime(lines, "due", item.due);
  AddTime(lines, "completed", item.completed);
  AddTime(lines, "alarm", item.reminder.alarm_date);
  lines.Add("repeats", Ascii(RuleWords(item.recurrence)));
  lines.Add("exceptions", Ascii(RuleWords(item.exceptionRule)));
  for (const CCategory& category : item.categories) lines.Add("category", category.category_name);
  lines.Add("class", Ascii(ClassWord(item.class_)));
  if (item.priority != 0) lines.Add("priority", Ascii(std::to_string(item.priority)));
  if (item.status != 0) lines.Add("status", Ascii(StatusWord(item.status)));
  lines.Add("colour", item.color);
  if (item.set_holiday != 0) lines.Add("holiday", u"yes");
  return lines.text();
}

}  // namespace pim::app
