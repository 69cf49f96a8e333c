#include "app/Inspect.h"

#include <algorithm>
#include <span>

#include "app/Inputs.h"
#include "app/Interrupt.h"
#include "app/Output.h"
#include "app/PictureStaging.h"
#include "app/RecordDump.h"
#include "app/Session.h"
#include "app/TextKind.h"
#include "pim/support/ParseFailure.h"
#include "platform/Visible.h"
#include "vcard/VCardReader.h"
#include "vcard/VCardWords.h"

namespace pim::app {
namespace {

// Small enough that an interrupt is seen soon.
constexpr std::size_t kPieceBytes = std::size_t{1} << 20;

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

WideString DateText(const COleDateTime& date) {
  if (date.status != StatusValid) return u"(no date)";
  const auto padded = [](std::int32_t number, std::size_t width) {
    const std::string digits = std::to_string(number);
    return std::string(width - std::min(width, digits.size()), '0') + digits;
  };
  return Ascii(padded(date.GetYear(), 4) + "-" + padded(date.GetMonth(), 2) + "-" +
               padded(date.GetDay(), 2));
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
  for (const CMessenger& entry : contact.messengers())
    lines.Add("messenger", entry.messenger_address,
              CodeWord(kMessengerWords, entry.messenger_type));
  for (const CURL& entry : contact.urls())
    lines.Add("web page", entry.url_address, CodeWord(kUrlWords, entry.url_type));
  for (const CPostalAddress& entry : contact.addresses())
    lines.AddFields("address",
                    {&entry.post_office, &entry.extended_address, &entry.street, &entry.locality,
                     &entry.region, &entry.postal_code, &entry.country},
                    MaskWords(kAddressWords, entry.address_type));
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

// What came of reading one text.
struct Outcome {
  bool rejected = false;
  std::vector<std::u16string> messages;
};

Outcome ReadContacts(NarrowStringView text, CContacts& contacts) {
  Messages messages;
  VCardReader reader(contacts);
  Outcome outcome;
  try {
    do {
      CheckInterrupt();
      const NarrowStringView piece = text.substr(0, kPieceBytes);
      text.remove_prefix(piece.size());
      if (!reader.Read(piece, text.empty())) RaiseVCardFailure();
    } while (!text.empty());
  } catch (ParseFailure) {
    outcome.rejected = true;
  }
  for (std::int32_t i = 0; i < contacts.GetCount(); ++i) contacts[i].tag = kUnsavedTag;
  outcome.messages = messages.Take();
  return outcome;
}

void PrintContacts(const Options& options, const Outcome& outcome, const CContacts& contacts) {
  if (options.json) {
    JsonList list("contacts", outcome.rejected, outcome.messages);
    for (std::int32_t i = 0; i < contacts.GetCount(); ++i) list.Add(contacts[i]);
    list.End();
    return;
  }
  for (std::int32_t i = 0; i < contacts.GetCount(); ++i)
    Print("contact " + std::to_string(i + 1) + "\n" + LinesOf(contacts[i]));
  Print(Counted(contacts.GetCount(), "contact") + "\n");
}

void TellOutcome(const Options& options, const Outcome& outcome, std::int32_t count,
                 NarrowStringView text, TextForm form) {
  const std::string file = ShownName(options.paths.front());
  for (const std::u16string& message : outcome.messages)
    Complain(file + ": " + VisibleUtf8(message, LineFeeds::Kept));
  if (count == 0 && !outcome.rejected) {
    const std::string hint = LooksLike(text, form);
    Complain(file + ": no record begins in it" + (hint.empty() ? "" : ": " + hint));
  }
}

}  // namespace

int InspectFile(const Options& options) {
  const std::string& path = options.paths.front();
  ByteBuffer text;
  ReadInput(path, ByteOrderMark::Skipped, text);
  const TextForm form = options.form.value_or(FormOf(text.view()).value_or(TextForm::VCard));
  const PrivatePictures pictures(TemporaryFolder());
  CContacts contacts;
  const Outcome outcome = ReadContacts(text.view(), contacts);
  PrintContacts(options, outcome, contacts);
  TellOutcome(options, outcome, contacts.GetCount(), text.view(), form);
  return outcome.rejected ? kRejected : kDone;
}

}  // namespace pim::app
