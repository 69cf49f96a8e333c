// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <filesystem>

#include "pim/manager/TextReading.h"
#include "tests/account/Accounts.h"
#include "tests/store/TemporaryFolder.h"

namespace pim::testing {
namespace {

// One record's lines behind its BEGIN, and what is told of each entry: its name, the verdict, ">"
// with the fields that hold it, "!" with why, "=" where the record would be the same without it,
// and the number of its lines if there are several.
struct Case {
  TextForm form;
  std::string_view lines;
  std::string_view told;
};
constexpr Case kCases[] = {
    // Single values, the last of which counts.
    {TextForm::VCard, "TITLE:a\nTITLE:b", "TITLE dropped !replaced | TITLE kept >org_title"},
    {TextForm::VCard, "TITLE:a\nTITLE:a", "TITLE kept >org_title = | TITLE kept >org_title ="},
    {TextForm::VCard, "TITLE:a\nTITLE:b\nTITLE:a",
     "TITLE dropped !replaced | TITLE dropped !replaced | TITLE kept >org_title"},
    {TextForm::VCard, "TITLE:\nROLE:x", "TITLE dropped !empty | ROLE kept >org_role"},
    {TextForm::VCard, "X-HOBBY;QUOTED-PRINTABLE:a=00b", "X-HOBBY changed >hobby !nul"},
    // Names, of which some parts are replaced.
    {TextForm::VCard, "N:Berg;Ann", "N kept >name"},
    {TextForm::VCard, "N:a;b\nN:c", "N changed >name !replaced | N kept >name"},
    {TextForm::VCard, "N:a;b\nN:c;d", "N dropped !replaced | N kept >name"},
    {TextForm::VCard, "N:a\nN:a;b", "N kept >name = | N kept >name"},
    {TextForm::VCard, "N:;;;;", "N kept >name ="},
    {TextForm::VCard, "N:;;;;;x", "N dropped !extra-parts"},
    {TextForm::VCard, "N:;;;;x;y", "N changed >name !extra-parts"},
    {TextForm::VCard, "SOUND;X-IRMC-N:a\nSOUND:b;c",
     "SOUND dropped !replaced | SOUND kept >phonetic"},
    // A formatted name and the given name that it fills.
    {TextForm::VCard, "FN:a", "FN kept >name,formatted_name"},
    {TextForm::VCard, "FN:a\nN:;a", "FN kept >name,formatted_name | N kept >name ="},
    {TextForm::VCard, "FN:a\nN:b;c", "FN kept >formatted_name | N kept >name"},
    {TextForm::VCard, "N:b;c\nFN:a", "N kept >name | FN kept >formatted_name"},
    {TextForm::VCard, "FN:a\nFN:b", "FN changed >name !replaced | FN kept >formatted_name"},
    {TextForm::VCard, "N:;a\nFN:a", "N kept >name = | FN kept >formatted_name"},
    {TextForm::VCard, "N:x\nFN:a\nN:;",
     "N dropped !replaced | FN kept >formatted_name | N kept >name"},
    // Entries of lists.
    {TextForm::VCard, "TEL:1\nTEL:1", "TEL kept >telephones | TEL kept >telephones"},
    {TextForm::VCard, "ADR:;;", "ADR kept >addresses"},
    {TextForm::VCard, "ORG:a;b;;c", "ORG kept >organizations"},
    {TextForm::VCard, "NICKNAME:a", "NICKNAME kept >nicknames"},
    {TextForm::VCard, "X-GROUP:a", "X-GROUP kept >groups"},
    // Words of types.
    {TextForm::VCard, "TEL;CELL;WORK:1", "TEL kept >telephones"},
    {TextForm::VCard, "TEL;TYPE=CELL:1", "TEL kept >telephones"},
    {TextForm::VCard, "TEL;TYPE=CELL,VOICE:1", "TEL changed >telephones !type-ignored"},
    {TextForm::VCard, "ADR;TYPE=HOME:a", "ADR changed >addresses !type-ignored"},
    {TextForm::VCard, "EMAIL;INTERNET:a", "EMAIL changed >emails !type-ignored"},
    {TextForm::VCard, "EMAIL;Work;Mobile:a", "EMAIL changed >emails !type-ignored"},
    {TextForm::VCard, "EMAIL;Mobile;Mobile:a", "EMAIL kept >emails"},
    {TextForm::VCard, "FN;LANGUAGE=de:a", "FN changed >name,formatted_name !type-ignored"},
    {TextForm::VCard, "FN;ENCODING=8BIT:a", "FN kept >name,formatted_name"},
    {TextForm::VCard, "FN;8BIT:a", "FN kept >name,formatted_name"},
    {TextForm::VCard, "FN;ENCODING=X:a", "FN changed >name,formatted_name !type-ignored"},
    {TextForm::VCard, "BEGIN;X=1:VNONE", "BEGIN frame"},
    // Charsets.
    {TextForm::VCard, "FN;CHARSET=UTF-8:\xC3\xA9", "FN kept >name,formatted_name"},
    {TextForm::VCard, "FN;CHARSET=ISO-8859-1:a", "FN kept >name,formatted_name"},
    {TextForm::VCard, "FN;CHARSET=ISO-8859-1:\xE9",
     "FN changed >name,formatted_name !unknown-charset,invalid-bytes"},
    {TextForm::VCard, "FN;CHARSET=ISO-2022-JP:a",
     "FN changed >name,formatted_name !unknown-charset"},
    {TextForm::VCard, "FN;CHARSET=SHIFT_JIS;CHARSET=UTF-8:a",
     "FN changed >name,formatted_name !type-ignored"},
    {TextForm::VCard,
     "TEL;CHARSET=SHIFT_JIS:\x83"
     "A",
     "TEL changed >telephones !type-ignored,invalid-bytes"},
    {TextForm::VCard, "TEL;CHARSET=UTF-8:\xC3\xA9", "TEL kept >telephones"},
    {TextForm::VCard, "TEL;QUOTED-PRINTABLE:=31", "TEL changed >telephones !type-ignored"},
    {TextForm::VCard, "TEL;QUOTED-PRINTABLE:1", "TEL kept >telephones"},
    // Escapes and bytes.
    {TextForm::VCard, "FN;QUOTED-PRINTABLE:=41", "FN kept >name,formatted_name"},
    {TextForm::VCard, "FN;QUOTED-PRINTABLE:a=G", "FN dropped !bad-escape,cut"},
    {TextForm::VCard, "FN;QUOTED-PRINTABLE:a=4", "FN dropped !bad-escape,cut"},
    {TextForm::VCard, "FN;QUOTED-PRINTABLE:a=4G", "FN changed >name,formatted_name !bad-escape"},
    {TextForm::VCard, "FN;QUOTED-PRINTABLE:a=4\n1",
     "FN changed >name,formatted_name !bad-escape 2 lines"},
    {TextForm::VCard, "FN:\xFF", "FN changed >name,formatted_name !invalid-bytes"},
    {TextForm::VCard, "FN:\xEF\xBF\xBD", "FN kept >name,formatted_name"},
    {TextForm::VCard, "NOTE:a\rb", "NOTE changed >comments !return"},
    {TextForm::VCard, "NOTE:a\r", "NOTE kept >comments"},
    // Days.
    {TextForm::VCard, "BDAY:19700131", "BDAY kept >events"},
    {TextForm::VCard, "BDAY:1970-01-31", "BDAY kept >events"},
    {TextForm::VCard, "BDAY:1970-131", "BDAY changed >events !bad-value"},
    {TextForm::VCard, "BDAY:00000000", "BDAY kept >events"},
    {TextForm::VCard, "BDAY:x", "BDAY changed >events !bad-value"},
    {TextForm::VCard, "X-ANNI:19700101T000000", "X-ANNI changed >events !bad-value"},
    // Words.
    {TextForm::VCard, "X-BLOOD:AB", "X-BLOOD kept >blood_type"},
    {TextForm::VCard, "X-BLOOD:Z", "X-BLOOD dropped !bad-value"},
    {TextForm::VCard, "X-BLOOD:A\nX-BLOOD:Z",
     "X-BLOOD dropped !replaced | X-BLOOD changed >blood_type !bad-value"},
    {TextForm::VCard, "X-FAVORITE:YES", "X-FAVORITE kept >favorite"},
    {TextForm::VCard, "X-FAVORITE:NO", "X-FAVORITE kept >favorite ="},
    {TextForm::VCard, "X-FAVORITE:1", "X-FAVORITE dropped !bad-value"},
    // Pictures.
    {TextForm::VCard, "PHOTO;JPEG;BASE64:QUJD\n\nPHOTO;JPEG;BASE64:QUJD\n",
     "PHOTO kept >photo = | - frame | PHOTO kept >photo = | - frame"},
    {TextForm::VCard, "PHOTO;JPEG;BASE64:QUJD\n\nPHOTO;PNG;BASE64:QUJD\n",
     "PHOTO dropped !replaced | - frame | PHOTO kept >photo | - frame"},
    {TextForm::VCard, "PHOTO;BASE64:QUI\n", "PHOTO changed >photo !bad-base64 | - frame"},
    {TextForm::VCard, "PHOTO;BASE64:QQ=x\n", "PHOTO changed >photo !bad-base64 | - frame"},
    {TextForm::VCard, "PHOTO;BASE64:Q\n", "PHOTO dropped !bad-base64 | - frame"},
    {TextForm::VCard, "PHOTO;ENCODING=b:QUJD", "PHOTO changed >photo !type-ignored"},
    {TextForm::VCard, "PHOTO;TYPE=WEBP;BASE64:QUJD\n",
     "PHOTO changed >photo !type-ignored | - frame"},
    // Names that are unknown.
    {TextForm::VCard, "X-FOO:1", "X-FOO dropped !unknown-property"},
    {TextForm::VCard, "item1.TEL:1", "item1.TEL dropped !group-prefix"},
    {TextForm::VCard, "item1.FOO:1", "item1.FOO dropped !unknown-property"},
    {TextForm::VCard, ":a", "- dropped !unknown-property"},
    {TextForm::VCard, "JUNK", "- dropped !no-colon"},
    {TextForm::VCard, "TEL;HOME\nX:1", "TEL changed >telephones !type-ignored 2 lines"},
    {TextForm::VCard, "LABEL:", "LABEL dropped !unknown-property"},
    // The frame.
    {TextForm::VCard, "END:VCARD\nTEL:1", "END frame | TEL kept >telephones !behind-end"},
    {TextForm::VCard, "END:VCARD\nX:1", "END frame | X dropped !unknown-property,behind-end"},
    {TextForm::VCard, "END:VCARD\nJUNK", "END frame | - dropped !no-colon,behind-end"},
    {TextForm::VCard, "BEGIN:VCARD\nTEL:1", "BEGIN frame !nested | TEL kept >telephones"},
    {TextForm::VCard, "BEGIN:VCARD ", "BEGIN dropped !bad-value"},
    {TextForm::VCard, "VERSION:2.1\rFN:a", "VERSION dropped !return"},
    {TextForm::VCard, "END:VCARDBEGIN:VCARD", "END dropped !joined"},
    {TextForm::VCard, "BEGIN:VCALENDAR", "BEGIN frame"},
    // Blank lines and folds.
    {TextForm::VCard, "FN:a\n\nTITLE:b",
     "FN kept >name,formatted_name | - frame | TITLE kept >org_title"},
    {TextForm::VCard, "FN:a\n\r\n\r\nTITLE:b",
     "FN kept >name,formatted_name | - frame 2 lines | TITLE kept >org_title"},
    {TextForm::VCard, "FN:a\n \r\nTITLE:b",
     "FN kept >name,formatted_name | - frame | TITLE kept >org_title"},
    {TextForm::VCard, "FN:a\n  \nTITLE:b",
     "FN kept >name,formatted_name 2 lines | TITLE kept >org_title"},
    {TextForm::VCard, "FN:a\n b\nTITLE:c",
     "FN kept >name,formatted_name 2 lines | TITLE kept >org_title"},
    {TextForm::VCard, "NOTE;QUOTED-PRINTABLE:a=\nb=\n\nc", "NOTE kept >comments 4 lines"},
    // Dates.
    {TextForm::VCalendar, "DUE:20100105T120000Z", "DUE kept >due"},
    {TextForm::VCalendar, "DUE:20100105", "DUE kept >due"},
    {TextForm::VCalendar, "DUE:20100105T120059Z", "DUE changed >due !seconds-dropped"},
    {TextForm::VCalendar, "DUE:20100105T240000Z", "DUE changed >due !time-dropped"},
    {TextForm::VCalendar, "DUE:20100105T1230", "DUE changed >due !bad-value"},
    {TextForm::VCalendar, "DUE:2010-01-05", "DUE changed >due !bad-value"},
    {TextForm::VCalendar, "DUE:0", "DUE kept >due ="},
    {TextForm::VCalendar, "DUE:x", "DUE dropped !bad-value"},
    {TextForm::VCalendar, "DUE:20100230", "DUE changed >due !bad-value"},
    {TextForm::VCalendar, "DUE:20100105T120000Z+2", "DUE changed >due !bad-value"},
    {TextForm::VCalendar, "DUE:20100101\nDUE:x",
     "DUE dropped !replaced | DUE changed >due !bad-value"},
    // Days of an all-day item.
    {TextForm::VCalendar, "DTSTART:20100105\nDTEND:20100105",
     "DTSTART kept >allday,start_time | DTEND kept >allday,end_time"},
    {TextForm::VCalendar, "DTSTART:20100105", "DTSTART kept >start_time"},
    {TextForm::VCalendar, "DTSTART:20100105\nDTSTART:20100106",
     "DTSTART changed >allday !replaced | DTSTART kept >allday,start_time"},
    {TextForm::VCalendar, "DTSTART:20100105\nDTEND:20100105\nDTEND:20100106",
     "DTSTART kept >start_time | DTEND dropped !replaced | DTEND kept >allday,end_time"},
    {TextForm::VCalendar, "DTSTART:20100105\nDTEND:20100105T240000",
     "DTSTART kept >allday,start_time | DTEND kept >allday,end_time"},
    {TextForm::VCalendar, "DTEND:20100105T240000", "DTEND changed >end_time !time-dropped"},
    {TextForm::VCalendar, "DTSTART:20100105\nDTEND:20100105\nDTSTART:20100105T120000Z",
     "DTSTART dropped !replaced | DTEND kept >end_time | DTSTART kept >allday,start_time"},
    {TextForm::VCalendar, "DTSTART:x\nDTEND:20100105",
     "DTSTART dropped !bad-value | DTEND kept >end_time"},
    // Words.
    {TextForm::VCalendar, "CLASS:PUBLIC", "CLASS kept >class"},
    {TextForm::VCalendar, "CLASS:X", "CLASS dropped !bad-value"},
    {TextForm::VCalendar, "STATUS:NEEDS ACTION", "STATUS kept >status ="},
    {TextForm::VCalendar, "STATUS:SENT\nSTATUS:X",
     "STATUS dropped !replaced | STATUS changed >status !bad-value"},
    {TextForm::VCalendar, "PRIORITY:1", "PRIORITY kept >priority"},
    {TextForm::VCalendar, "PRIORITY:0", "PRIORITY kept >priority ="},
    {TextForm::VCalendar, "PRIORITY:HIGH", "PRIORITY dropped !bad-value"},
    {TextForm::VCalendar, "PRIORITY:2 x", "PRIORITY changed >priority !bad-value"},
    {TextForm::VCalendar, "PRIORITY:99999999999", "PRIORITY changed >priority !bad-value"},
    {TextForm::VCalendar, "X-HOLIDAY:NO", "X-HOLIDAY kept >set_holiday ="},
    {TextForm::VCalendar, "X-HOLIDAY:x", "X-HOLIDAY dropped !bad-value"},
    // Categories.
    {TextForm::VCalendar, "CATEGORIES:APPOINTMENT", "CATEGORIES kept >categories"},
    {TextForm::VCalendar, "CATEGORIES:MEETING", "CATEGORIES dropped !other-parts"},
    {TextForm::VCalendar, "CATEGORIES:MEETING;BIRTHDAY",
     "CATEGORIES changed >categories !other-parts"},
    {TextForm::VCalendar, "CATEGORIES:MEMO\nCATEGORIES:MEMO",
     "CATEGORIES kept >calendar_type = | CATEGORIES kept >calendar_type ="},
    {TextForm::VCalendar, "CATEGORIES:;", "CATEGORIES dropped !empty"},
    // Zones.
    {TextForm::VCalendar, "TZ:+09:00", "TZ kept >zone"},
    {TextForm::VCalendar, "TZ:-0530", "TZ changed >zone !bad-value"},
    {TextForm::VCalendar, "TZ:x", "TZ dropped !bad-value"},
    {TextForm::VCalendar, "TZ:+00", "TZ kept >zone ="},
    {TextForm::VCalendar, "DAYLIGHT:FALSE", "DAYLIGHT kept >zone ="},
    {TextForm::VCalendar, "DAYLIGHT:true", "DAYLIGHT dropped !bad-value"},
    {TextForm::VCalendar, "DAYLIGHT:TRUE;-04;20100314T020000Z;20101107T020000Z;EST;EDT;x",
     "DAYLIGHT changed >zone !extra-parts"},
    {TextForm::VCalendar, "DAYLIGHT:TRUE;;-04", "DAYLIGHT changed >zone !bad-value"},
    {TextForm::VCalendar, "DAYLIGHT:FALSE;-04", "DAYLIGHT changed >zone !other-parts ="},
    {TextForm::VCalendar, "DAYLIGHT:TRUE", "DAYLIGHT dropped !bad-value"},
    // Alarms.
    {TextForm::VCalendar, "AALARM:20100105T110000Z;PT5M;3;Meet", "AALARM kept >reminder"},
    {TextForm::VCalendar, "AALARM;TYPE=WAVE;VALUE=CONTENT-ID:20100105T110000Z",
     "AALARM kept >reminder"},
    {TextForm::VCalendar, "AALARM;TYPE=X:20100105T110000Z",
     "AALARM changed >reminder !type-ignored"},
    {TextForm::VCalendar, "AALARM:x;P1W;a;b;c", "AALARM changed >reminder !bad-value,extra-parts"},
    {TextForm::VCalendar, "AALARM:;;;", "AALARM kept >reminder"},
    {TextForm::VCalendar, "DALARM:20100105T110000Z", "DALARM dropped !unknown-property"},
    // Rules.
    {TextForm::VCalendar, "RRULE:D1 #5", "RRULE kept >recurrence"},
    {TextForm::VCalendar, "RRULE:D1 MO", "RRULE changed >recurrence !other-parts"},
    {TextForm::VCalendar, "RRULE:FOO", "RRULE dropped !bad-value"},
    {TextForm::VCalendar, "RRULE:D1 #5\nRRULE:FOO",
     "RRULE dropped !replaced | RRULE changed >recurrence !bad-value"},
    {TextForm::VCalendar, "RRULE:D1 20100230T000000", "RRULE changed >recurrence !bad-value"},
    {TextForm::VCalendar, "RRULE:D1 #99999999999", "RRULE changed >recurrence !bad-value"},
    {TextForm::VCalendar, "XRULE:W1 MO\nXRULE:W1 TU",
     "XRULE dropped !replaced | XRULE kept >exceptionRule"},
    // Texts.
    {TextForm::VCalendar, "SUMMARY:a\nSUMMARY:a",
     "SUMMARY kept >summary = | SUMMARY kept >summary ="},
    {TextForm::VCalendar, "DESCRIPTION;QUOTED-PRINTABLE:a=0D=0Ab", "DESCRIPTION kept >description"},
    {TextForm::VCalendar, "X-COLOR:a\nX-COLOR:b",
     "X-COLOR dropped !replaced | X-COLOR kept >color"},
    {TextForm::VCalendar, "ATTENDEE:a", "ATTENDEE dropped !unknown-property"},
    {TextForm::VCalendar, "DCREATED:20100105T120000Z", "DCREATED dropped !unknown-property"},
};

std::string Told(const AccountEntry& entry, TextForm form) {
  std::string told(entry.name.empty() ? "-" : entry.name);
  told.append(" ").append(NameOf(entry.verdict));
  std::string mark = " >";
  const auto fields = RecordFields(form);
  for (std::size_t i = 0; i < fields.size(); ++i)
    if ((entry.into >> i & 1U) != 0) told.append(std::exchange(mark, ",")).append(fields[i]);
  mark = " !";
  for (LossMask left = entry.why; left != 0; left &= left - 1)
    told.append(std::exchange(mark, ",")).append(FirstOf(left).name);
  if (entry.same) told += " =";
  const std::int64_t lines = entry.last - entry.first + 1;
  return lines == 1 ? told : told + " " + std::to_string(lines) + " lines";
}

TEST(AccountCases, EachProperty) {
  const TemporaryFolder folder;
  SetAppDataFolder(folder.path());
  std::filesystem::create_directories(NativePath(GetCallerIdPath()));
  SetMessageSink([](std::u16string_view) {});
  for (const Case& row : kCases) {
    const std::string begin = row.form == TextForm::VCard ? "BEGIN:VCARD\n" : "BEGIN:VTODO\n";
    std::string told;
    const TextObserver observer{{}, [&](const AccountEntry& entry) {
                                  if (entry.first == 1) return;
                                  told += (told.empty() ? "" : " | ") + Told(entry, row.form);
                                }};
    const std::string text = begin + std::string(row.lines) + "\n";
    if (row.form == TextForm::VCard) {
      static_cast<void>(ReadContacts(
          text, [](CContact&) { return true; }, observer));
    } else {
      static_cast<void>(ReadCalendars(
          text, [](CCalendar&) { return true; }, observer));
    }
    EXPECT_EQ(told, row.told) << row.lines;
  }
  SetMessageSink({});
  SetAppDataFolder({});
}

// What the record is called, why a text is rejected and what of it is unread.
TEST(AccountCases, TitlesAndRejections) {
  SetMessageSink([](std::u16string_view) {});
  std::vector<std::string> told;
  const TextObserver observer{{}, [&told](const AccountEntry& entry) {
                                told.push_back(Utf8FromWide(entry.title) + "/" +
                                               std::string(entry.ignored) + "/" +
                                               std::string(TextOf(entry.fault)));
                              }};
  CContacts contacts;
  const TextResult result =
      ReadContacts("X:1\nBEGIN:VCARD\nTEL;A=b;C:1\nFN:Ann\nBEGIN:VCARD\nN:Bo\nTEL;A=:\nFN:x\n",
                   contacts, observer);
  EXPECT_EQ(result.outcome, TextOutcome::Rejected);
  EXPECT_EQ(result.line, 7);
  EXPECT_EQ(result.fault, TextFault::NoParameterValue);
  const std::string fault = "Bo//no value behind the equals sign of a parameter";
  EXPECT_EQ(told,
            (std::vector<std::string>{"//", "//", "Ann/A=b/", "Ann//", "//", "//", fault, "Bo//"}));
  SetMessageSink({});
}

}  // namespace
}  // namespace pim::testing
