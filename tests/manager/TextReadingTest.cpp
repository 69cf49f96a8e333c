// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <fstream>
#include <stdexcept>

#include "pim/manager/TextReading.h"
#include "pim/manager/TextWriting.h"
#include "pim/platform/Host.h"
#include "pim/stream/TextHead.h"
#include "platform/CodePages.h"
#include "tests/platform/Scoped.h"
#include "vcalendar/VCalendarReader.h"
#include "vcard/VCardReader.h"

namespace pim {
namespace {

// Names or summaries of what was handed over, and what came of the text.
struct Seen {
  TextResult result;
  std::string names;
  std::string messages;
};

class TextReading : public ::testing::Test {
 protected:
  TextReading() {
    SetMessageSink([this](WideStringView text) { seen_.messages += Utf8FromWide(text) + '\n'; });
  }
  ~TextReading() override { SetMessageSink({}); }

  const Seen& Contacts(NarrowStringView text, std::size_t wanted = 99) {
    seen_ = {};
    seen_.result = ReadContacts(text, [&](CContact& contact) {
      EXPECT_EQ(contact.tag, kUnsavedTag);
      seen_.names += Utf8FromWide(contact.formatted_name) + '/';
      return --wanted != 0;
    });
    return seen_;
  }
  const Seen& Items(NarrowStringView text) {
    seen_ = {};
    seen_.result = ReadCalendars(text, [&](CCalendar& item) {
      seen_.names += Utf8FromWide(item.summary) + '/';
      // The rule's message comes while its own item is open.
      seen_.names += seen_.messages.empty() ? "" : "!";
      return true;
    });
    return seen_;
  }

  Seen seen_;
};

TEST_F(TextReading, TellsWhatCameOfAText) {
  static constexpr struct {
    std::string_view text;
    TextOutcome outcome;
    std::int64_t line;
    std::string_view names;
  } kRows[] = {
      {"", TextOutcome::NothingBegins, 0, ""},
      {"FN:a\nEND:VCARD\n", TextOutcome::NothingBegins, 0, ""},
      {"BEGIN:VCARD\nFN:a\nEND:VCARD\nNOTE:late\nBEGIN:VCARD\nFN:b", TextOutcome::Read, 0, "a/b/"},
      {"\xEF\xBB\xBF"
       "BEGIN:VCARD\nFN:a",
       TextOutcome::Read, 0, "a/"},
      {"TEL;:1", TextOutcome::Rejected, 1, ""},
      {"BEGIN:VCARD\r\nFN:a\r\n\r\nTEL;TYPE=:1\r\nBEGIN:VCARD\r\n", TextOutcome::Rejected, 4, "a/"},
      // the place counts, not where its property begins
      {"BEGIN:VCARD\nTEL;\n\n :1\nFN:a\n", TextOutcome::Rejected, 4, "/"},
      {"BEGIN:VCARD\nFN:a\nPHOTO;BASE64:\n QUJD\n Q?==\n\nFN:b", TextOutcome::Rejected, 5, "a/"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.text);
    const Seen& seen = Contacts(row.text);
    EXPECT_EQ(seen.result.outcome, row.outcome);
    EXPECT_EQ(seen.result.line, row.line);
    EXPECT_EQ(seen.names, row.names);
    EXPECT_EQ(seen.result.records, std::ranges::count(row.names, '/'));
    EXPECT_EQ(seen.messages, row.outcome == TextOutcome::Rejected ? "Error parsing vCard\n" : "");
  }
}

TEST_F(TextReading, HandsOverWhatIsComplete) {
  const Seen& contacts = Contacts("BEGIN:VCARD\nFN:a\nBEGIN:VCARD\nFN:b\nBEGIN:VCARD\nTEL;:", 1);
  EXPECT_EQ(contacts.result.outcome, TextOutcome::Stopped);
  EXPECT_EQ(contacts.result.records, 1);
  EXPECT_EQ(contacts.names, "a/");
  EXPECT_EQ(contacts.messages, "");
  const Seen& items = Items(
      "BEGIN:VCALENDAR\nBEGIN:VEVENT\nSUMMARY:a\nEND:VEVENT\nBEGIN:VTODO\nSUMMARY:b\n"
      "RRULE:Q1\nBEGIN:VMEMO\nSUMMARY:c\nEND:VMEMO\nEND:VCALENDAR\n");
  EXPECT_EQ(items.result.outcome, TextOutcome::Read);
  EXPECT_EQ(items.names, "a/b/!c/!");
  EXPECT_THROW(static_cast<void>(ReadContacts(
                   "BEGIN:VCARD\n", [](CContact&) -> bool { throw std::runtime_error("host"); })),
               std::runtime_error);
}

// What stands in the collection already isn't touched, not even by lines ahead of the first BEGIN.
TEST_F(TextReading, AppendsToACollection) {
  CContacts contacts;
  contacts.AddNew().tag = 7;
  EXPECT_EQ(ReadContacts("FN:stray\nBEGIN:VCARD\nFN:a\n", contacts).records, 1);
  ASSERT_EQ(contacts.GetCount(), 2);
  EXPECT_EQ(contacts[0].tag, 7);
  EXPECT_TRUE(contacts[0].formatted_name.empty());
  EXPECT_EQ(WriteContact(contacts[1]),
            "BEGIN:VCARD\r\nVERSION:2.1\r\nN:;a;;;\r\nFN:a\r\nEND:VCARD");
  CCalendars items;
  EXPECT_EQ(WriteCalendars(items), "");
  EXPECT_EQ(ReadCalendars("BEGIN:VMEMO\n", items).records, 1);
  EXPECT_EQ(WriteCalendars(items),
            "BEGIN:VCALENDAR\r\nVERSION:1.0\r\nBEGIN:VMEMO\r\nCATEGORIES:MEMO\r\nEND:VMEMO\r\n"
            "END:VCALENDAR");
}

TEST_F(TextReading, TellsAnUnreadableFileFromOneWithNothingInIt) {
  const test::TemporaryFolder folder;
  const std::string path = folder.path() + "/a.vcf";
  CContacts contacts;
  const TextResult missing = ReadContactFile(WideFromUtf8(path), contacts);
  EXPECT_EQ(missing.outcome, TextOutcome::Unreadable);
  EXPECT_EQ(missing.problem, "No such file or directory");
  std::ofstream(path, std::ios::binary) << "";
  EXPECT_EQ(ReadContactFile(WideFromUtf8(path), contacts).outcome, TextOutcome::NothingBegins);
  std::ofstream(path, std::ios::binary) << "\xEF\xBB\xBF"
                                        << "BEGIN:VCARD\nFN:a\n";
  EXPECT_EQ(ReadContactFile(WideFromUtf8(path), contacts).records, 1);
  // The mark stays ahead of items, as in their imports: it spoils the frame's line.
  EXPECT_EQ(ReadCalendarFile(WideFromUtf8(path), [](CCalendar&) { return true; }).outcome,
            TextOutcome::NothingBegins);
  EXPECT_EQ(ReadCalendarFile(WideFromUtf8(folder.path()), [](CCalendar&) { return true; }).outcome,
            TextOutcome::Unreadable);
}

// "what line property value of record", one line for each notice, of a text that is read in two
// pieces.
std::string NoticesOf(TextForm form, NarrowStringView text, std::size_t cut) {
  static constexpr const char* kEvents[] = {"date", "rule", "joined", "cut", "cut value"};
  std::string told;
  const auto watch = [&told](const TextNotice& notice) {
    told += std::string(kEvents[static_cast<std::size_t>(notice.event)]) + ' ' +
            std::to_string(notice.line) + ' ' + notice.property + ' ' + notice.value + " of " +
            Utf8FromWide(notice.record) + '\n';
  };
  CContacts contacts;
  CCalendars items;
  const auto read = [&](auto reader) {
    reader.Watch(watch);
    if (reader.Read(text.substr(0, cut), false))
      static_cast<void>(reader.Read(text.substr(cut), true));
  };
  form == TextForm::VCard ? read(VCardReader(contacts)) : read(VCalendarReader(items));
  return told;
}

TEST_F(TextReading, TellsAWatcher) {
  static constexpr struct {
    TextForm form;
    std::string_view text;
    std::string_view told;
  } kRows[] = {
      {TextForm::VCard, "BEGIN:VCARD\nFN:a\nBDAY:19700131\nX-OTHER:x\nEND:VCARD\n", ""},
      // a name that comes behind; folded, soft-broken and empty lines count
      {TextForm::VCard,
       "BEGIN:VCARD\r\n\r\nNOTE:a\r\n b\r\nBDAY:so\r\n on\r\nN:Berg;Ann\r\nEND:VCARD\r\n",
       "date 5 BDAY soon of Ann Berg\n"},
      {TextForm::VCard,
       "BEGIN:VCARD\nNOTE;QUOTED-PRINTABLE:a=\nb\nX-ANNI:?\nFN:a\nEND:VCARD\n"
       "BEGIN:VCARD\nFN:b\nX-EVENTDAY:!\nend:vcard",
       "date 4 X-ANNI ? of a\ndate 9 X-EVENTDAY ! of b\n"},
      {TextForm::VCard, "BEGIN:VCARD\nFN:a\nEND:VCARDBEGIN:VCARD\nFN:b\nEND:VCARD\n",
       "joined 3 END VCARDBEGIN:VCARD of b\n"},
      {TextForm::VCard, "BEGIN:VCARD\nFN:a\nEND:VCARD\nBEGIN:VCARD\nFN:b\nPHOTO;BASE64:\n QUJ",
       "cut 4   of b\n"},
      // up to a rejection
      {TextForm::VCard, "BEGIN:VCARD\nFN:a\nBDAY:x\nTEL;:1\nBDAY:y\n", "date 3 BDAY x of a\n"},
      {TextForm::VCalendar,
       "BEGIN:VCALENDAR\nBEGIN:VEVENT\nDTSTART:soon\nRRULE:X 1\nSUMMARY:a\nEND:VEVENT\n"
       "BEGIN:VTODO\nDUE:20101399\nAALARM:;;;\nXRULE:Y\nDESCRIPTION:b\nEND:VTODO\nEND:VCALENDAR\n",
       "date 3 DTSTART soon of a\nrule 4 RRULE X 1 of a\ndate 8 DUE 20101399 of b\n"
       "rule 10 XRULE Y of b\n"},
      // what holds no date but zeros isn't set; dates inside other values count
      {TextForm::VCalendar,
       "BEGIN:VEVENT\nDTSTART:00000000T000000\nAALARM:x;;;\nRRULE:D1 20240231T000000Z\n"
       "DAYLIGHT:TRUE;+01;20101399;0;a;b\nDAYLIGHT:FALSE;x\nEND:VEV\n",
       "date 3 AALARM x;;; of \ndate 4 RRULE D1 20240231T000000Z of \n"
       "date 5 DAYLIGHT TRUE;+01;20101399;0;a;b of \n"},
      {TextForm::VCard, "\n\n BEGIN:VCARD\nBDAY:0000-00-00\nX-ANNI:0\n", "cut 3   of \n"},
      {TextForm::VCard, "BEGIN:VC\nFN:a\nEND:VC \n", ""},
      {TextForm::VCard, "BEGIN:V\nEND:VBEGIN:VCARD\n", "joined 2 END VBEGIN:VCARD of \n"},
      {TextForm::VCard, "BEGIN:VCARD\nFN:a\nEND:VCARD\nPHOTO;BASE64:\n QUJ",
       "cut value 4   of a\n"},
      {TextForm::VCalendar, "BEGIN:VCALENDAR\nBEGIN:VEVENT\nSUMMARY:a\n", "cut 2   of a\n"},
      {TextForm::VCalendar, "BEGIN:VCALENDAR\nBEGIN:VMEMO\nSUMMARY:a\nEND:VMEMO\n",
       "cut 1   of \n"},
      {TextForm::VCalendar,
       "BEGIN:VCALENDAR\nBEGIN:VEVENT\nEND:VEVENT\nEND:VCALENDARBEGIN:VCALENDAR\n"
       "BEGIN:VEVENT\nEND:VEVENT\nEND:VCALENDAR\n",
       "joined 4 END VCALENDARBEGIN:VCALENDAR of \n"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.text);
    for (std::size_t cut = 0; cut <= row.text.size(); ++cut)
      EXPECT_EQ(NoticesOf(row.form, row.text, cut), row.told) << cut;
  }
}

// A frame is a part of its own only without items; what stands behind an END is its record's.
TEST_F(TextReading, DividesATextIntoItsParts) {
  static constexpr struct {
    std::string_view text;
    std::string_view objects;  // with a + for an item in a frame
  } kRows[] = {
      {"", ""},
      {"FN:a\nTEL;:1\n", ""},
      {"\xEF\xBB\xBF"
       "BEGIN:VCARD\nFN:a\nEND:VCARD\nFN:b\nbegin:V\nBEGIN:VCALENDAR\nBEGIN:VTOD\n",
       "VCARD VCARD VTODO+ "},
      {"BEGIN:VCALENDAR\nEND:VCALENDAR\nBEGIN:VTODO\nSUMMARY:a\nEND:VTODO\n", "VCALENDAR VTODO "},
      {"x\nBEGIN:VCALENDAR\nBEGIN:VMEMO\nSUMMARY:a\nEND:VMEMO\nBEGIN:VEVENT\nSUMMARY:b\n"
       "END:VEVENT\nEND:VCALENDAR\nBEGIN:VCALENDAR\nDESCRIPTION:of b\nBEGIN:VEVENT\nLOCATION:c\n"
       "TZ;:1\nSUMMARY:unread\n",
       "VMEMO+ VEVENT+ VEVENT+ "},
  };
  static constexpr const char* kNames[] = {"VCARD", "VEVENT", "VTODO", "VMEMO", "VCALENDAR"};
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.text);
    std::string objects;
    CContacts contacts;
    CCalendars items;
    for (const TextPart& part : PartsOf(row.text)) {
      objects +=
          std::string(kNames[static_cast<std::size_t>(part.object)]) + (part.isFramed ? "+ " : " ");
      const NarrowStringView own = NarrowStringView(row.text).substr(part.offset, part.size);
      EXPECT_TRUE(own.starts_with("BEGIN:") || own.starts_with("begin:")) << own;
      static_cast<void>(ReadContacts(own, contacts));
      static_cast<void>(ReadCalendars(own, items));
    }
    EXPECT_EQ(objects, row.objects);
    CContacts wholeContacts;
    CCalendars wholeItems;
    static_cast<void>(ReadContacts(row.text, wholeContacts));
    static_cast<void>(ReadCalendars(row.text, wholeItems));
    EXPECT_EQ(WriteCalendars(items), WriteCalendars(wholeItems));
    ASSERT_EQ(contacts.GetCount(), wholeContacts.GetCount());
    for (std::int32_t i = 0; i < contacts.GetCount(); ++i)
      EXPECT_EQ(WriteContact(contacts[i]), WriteContact(wholeContacts[i]));
  }
}

}  // namespace
}  // namespace pim
