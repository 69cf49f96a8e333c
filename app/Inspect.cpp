#include "app/Inspect.h"

#include <algorithm>
#include <span>

#include "app/Inputs.h"
#include "app/ItemText.h"
#include "app/Output.h"
#include "app/PictureStaging.h"
#include "app/RecordDump.h"
#include "app/TextKind.h"
#include "app/TextReading.h"
#include "vcalendar/RecurrenceWriter.h"
#include "vcalendar/VCalendarWords.h"
#include "vcard/VCardWords.h"

namespace pim::app {
namespace {

// Lines of one record: a label, the words of a type, a value. Empty values are left out.
class Lines {
 public:
  void Add(std::string_view label, WideStringView value, const std::string& words = {}) {
    if (value.empty()) return;
    text_.append("  ").append(label);
    if (!words.empty()) text_.append(" (").append(words).append(")");
    text_.append(": ").append(Shown(value)).append("\n");
  }
  void AddFields(std::string_view label, std::initializer_list<const WideText*> fields,
                 const std::string& words = {}) {
    WideString joined;
    for (const WideText* field : fields)
      if (!field->empty()) joined.append(joined.empty() ? u"" : u"; ").append(field->view());
    Add(label, joined, words);
  }
  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

std::string MaskWords(std::span<const Word> words, std::uint32_t mask) {
  std::string text;
  for (const Word& word : words)
    if ((mask & word.code) != 0) text.append(text.empty() ? "" : " ").append(word.text);
  return text;
}

std::string CodeWord(std::span<const Word> words, std::uint32_t code) {
  return code == 0 ? std::string() : std::string(TextOf(words, code));
}

void AddName(Lines& lines, std::string_view label, const CName& name) {
  lines.AddFields(label, {&name.family_name, &name.given_name, &name.additional_name,
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

std::string_view EventLabel(std::uint32_t type) {
  switch (type) {
    case EVENT_BIRTHDAY:
      return "birthday";
    case EVENT_ANNIVERSARY:
      return "anniversary";
    default:
      return "event day";
  }
}

std::string LinesOf(const CContact& contact) {
  Lines lines;
  AddName(lines, "name", contact.name);
  AddName(lines, "phonetic name", contact.phonetic);
  lines.Add("formatted name", contact.formatted_name);
  for (const WideText& nickname : contact.nicknames()) lines.Add("nickname", nickname);
  for (const CTelephoneNumber& entry : contact.telephones())
    lines.Add("telephone", entry.number, MaskWords(kTelephoneWords, entry.number_type));
  for (const CEmail& entry : contact.emails())
    lines.Add("e-mail", entry.email_address, CodeWord(kEmailWords, entry.email_type));
  for (const CMessenger& entry : contact.messengers()) {
    lines.Add("messenger", entry.messenger_address,
              CodeWord(kMessengerWords, entry.messenger_type));
  }
  for (const CURL& entry : contact.urls())
    lines.Add("web page", entry.url_address, CodeWord(kUrlWords, entry.url_type));
  for (const CPostalAddress& entry : contact.addresses()) {
    lines.AddFields("address",
                    {&entry.post_office, &entry.extended_address, &entry.street, &entry.locality,
                     &entry.region, &entry.postal_code, &entry.country},
                    MaskWords(kAddressWords, entry.address_type));
  }
  for (const COrganization& entry : contact.organizations()) {
    lines.AddFields("organisation", {&entry.org_name, &entry.org_position},
                    CodeWord(kOrganizationWords, entry.org_type));
    for (const WideText& unit : entry.org_additional) lines.Add("organisation unit", unit);
  }
  lines.Add("title", contact.org_title);
  lines.Add("role", contact.org_role);
  for (const CContactEvent& event : contact.contactEvents())
    lines.Add(EventLabel(event.event_type), DateText(event.event_date));
  lines.Add("blood type",
            Ascii(TextOf(kBloodWords, static_cast<std::uint32_t>(contact.blood_type))));
  lines.Add("hobby", contact.hobby);
  lines.Add("picture", contact.photo);
  for (const WideText& comment : contact.comments()) lines.Add("note", comment);
  for (const WideText& group : contact.groups()) lines.Add("group", group);
  if (contact.favorite != 0) lines.Add("favourite", u"yes");
  return lines.text();
}

// In UTC, as the record has it.
void AddTime(Lines& lines, std::string_view label, const COleDateTime& time) {
  if (time.status == StatusNull) return;
  const WideString clock =
      time.status != StatusValid
          ? WideString()
          : Ascii(" " + Padded(time.GetHour(), 2) + ":" + Padded(time.GetMinute(), 2) + " UTC");
  lines.Add(label, DateText(time) + clock);
}

void AddRule(Lines& lines, std::string_view label, const CRecurrence& holder) {
  NarrowString text;
  if (holder.data != nullptr && FormatRule(*holder.data, text)) lines.Add(label, Ascii(text));
}

std::string LinesOf(const CCalendar& item) {
  Lines lines;
  lines.Add("summary", item.summary);
  lines.Add("description", item.description);
  lines.Add("location", item.location);
  AddTime(lines, "start", item.start_time);
  AddTime(lines, "end", item.end_time);
  if (item.allday == 1) lines.Add("all day", u"yes");
  AddTime(lines, "due", item.due);
  AddTime(lines, "completed", item.completed);
  AddTime(lines, "alarm", item.reminder.alarm_date);
  AddRule(lines, "repeats", item.recurrence);
  AddRule(lines, "but not", item.exceptionRule);
  for (const CCategory& category : item.categories) lines.Add("category", category.category_name);
  lines.Add("class", Ascii(TextOf(kClassWords, static_cast<std::uint32_t>(item.class_))));
  if (item.priority != 0) lines.Add("priority", Ascii(std::to_string(item.priority)));
  if (item.status != 0)
    lines.Add("status", Ascii(TextOf(kStatusWords, static_cast<std::uint32_t>(item.status))));
  lines.Add("colour", item.color);
  if (item.set_holiday != 0) lines.Add("holiday", u"yes");
  return lines.text();
}

std::string_view TitleOf(const CContact&) { return "contact"; }
std::string_view TitleOf(const CCalendar& item) {
  return NounOf(static_cast<CalendarType>(item.calendar_type));
}

// `name` is the list's in JSON, `noun` one record's in words.
template <class Records>
void PrintRecords(const Options& options, const Outcome& outcome, const Records& records,
                  std::string_view name, std::string_view noun) {
  if (options.json) {
    JsonList list(name, outcome.rejected, outcome.messages);
    for (std::int32_t i = 0; i < records.GetCount(); ++i) list.Add(records[i]);
    list.End();
    return;
  }
  for (std::int32_t i = 0; i < records.GetCount(); ++i) {
    Print(std::string(TitleOf(records[i])) + " " + std::to_string(i + 1) + "\n" +
          LinesOf(records[i]));
  }
  Print(Counted(records.GetCount(), noun) + "\n");
}

}  // namespace

int InspectFile(const Options& options) {
  const std::string& path = options.paths.front();
  ByteBuffer bytes;
  ReadInput(path, ByteOrderMark::Kept, bytes);
  const NarrowStringView text = WithoutMark(bytes.view());
  const TextForm form = options.form.value_or(FormOf(text).value_or(TextForm::VCard));
  const PrivatePictures pictures(TemporaryFolder());
  Outcome outcome;
  std::int32_t count = 0;
  if (form == TextForm::VCard) {
    CContacts contacts;
    outcome = ReadContacts(text, contacts);
    count = contacts.GetCount();
    PrintRecords(options, outcome, contacts, "contacts", "contact");
  } else {
    CCalendars items;
    outcome = ReadItems(bytes.view(), items);
    count = items.GetCount();
    PrintRecords(options, outcome, items, "calendars", "item");
  }
  return TellOutcome(path, outcome, count, text, form);
}

}  // namespace pim::app
