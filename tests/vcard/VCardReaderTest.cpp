// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "pim/records/TypeCodes.h"
#include "support/TextCodec.h"
#include "tests/vcard/VCards.h"
#include "vcard/VCardReader.h"
#include "vcard/VCardWords.h"

namespace pim {
namespace {

struct TypeRow {
  const char* line;
  std::uint32_t type;
};

// The bits or codes that the words of a line give.
TEST(VCardReader, Types) {
  static constexpr TypeRow kTelephones[] = {
      {"TEL;VOICE;PREF:1", TEL_VOICE | TEL_PREFERRED},
      {"TEL;TYPE=VOICE;TYPE=PREF:1", TEL_VOICE | TEL_PREFERRED},
      {"tel;cell:1", TEL_CELL},
      {"TEL;HOME=x;type=work:1", TEL_HOME | TEL_WORK},
      {"TEL;TYPE:1", 0},
      {"TEL;TYPE=CELL,VOICE:1", 0},  // a list is one word, and an unknown one
      {"TEL;ANDROID_OTHER;RADIO;MSG:1", TEL_OTHER | TEL_RADIO | TEL_MESSAGE},
  };
  for (const TypeRow& row : kTelephones)
    EXPECT_EQ(ReadCard(row.line).GetTelephone(0).GetType(), row.type) << row.line;
  static constexpr TypeRow kAddresses[] = {
      {"ADR;HOME:1", ADR_HOME}, {"ADR;TYPE=HOME:1", 0}, {"ADR;work;dom;PREF:1", 0x10000021}};
  for (const TypeRow& row : kAddresses)
    EXPECT_EQ(ReadCard(row.line).GetAddress(0).GetType(), row.type) << row.line;
  static constexpr TypeRow kEmails[] = {{"EMAIL;Work;Private:a", EMAIL_PRIVATE},
                                        {"EMAIL;TYPE=Work:a", EMAIL_UNKNOWN},
                                        {"EMAIL;INTERNET;WORK;PREF:a", EMAIL_WORK},
                                        {"EMAIL;Mobile;Unknown:a", EMAIL_UNKNOWN}};
  for (const TypeRow& row : kEmails)
    EXPECT_EQ(ReadCard(row.line).GetEmail(0).GetType(), row.type) << row.line;
  EXPECT_EQ(ReadCard("URL;custom:u").GetURL(0).GetType(), URL_CUSTOM);
  EXPECT_EQ(ReadCard("ORG;Other:o").GetOrganization(0).org_type, ORG_OTHER);
  EXPECT_EQ(ReadCard("X-CHATID;icq:c").GetMessenger(0).messenger_type, MESSENGER_ICQ);
}

// What the recogniser makes of a property's name and parameters.
TEST(VCardReader, Parameters) {
  static constexpr struct {
    const char* header;
    std::int32_t id, charset, encoding, media;
  } kRows[] = {
      {"N;CHARSET=Big5", VCARD_N, CHARSET_OTHER, 0, 0},
      {"n;charset=UTF-8;charset", VCARD_N, CHARSET_OTHER, 0, 0},
      {"N;charset=shift_jis", VCARD_N, CHARSET_SHIFT_JIS, 0, 0},
      {"N;ENCODING=8BIT", VCARD_N, 0, ENCODING_OTHER, 0},
      {"N;ENCODING;quoted-printable=x", VCARD_N, 0, ENCODING_QUOTED_PRINTABLE, 0},
      {"PHOTO;TYPE=jpg;ENCODING=BASE64", VCARD_PHOTO, 0, ENCODING_BASE64, MEDIA_JPEG},
      {"PHOTO;JPEG;BASE64", VCARD_PHOTO, 0, ENCODING_BASE64, MEDIA_JPEG},
      {"PHOTO;TYPE=TIFF", VCARD_PHOTO, 0, 0, MEDIA_OTHER},
      {"PHOTO;TYPE", VCARD_PHOTO, 0, 0, MEDIA_OTHER},
      {"PHOTO;PNG;TIFF", VCARD_PHOTO, 0, 0, MEDIA_PNG},
      {"TEL;TYPE=CELL", VCARD_TEL, 0, 0, MEDIA_OTHER},
      {"item1.TEL", VCARD_UNKNOWN, 0, 0, 0},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.header);
    VCardReadContext context;
    context.propertyId = context.charset = context.encoding = context.mediaType = 99;
    const auto parser = VObjectParser::Create();
    parser->SetUserData(&context);
    parser->SetPropertyHandler(OnVCardProperty);
    const std::string text = std::string(row.header) + ":1";
    ASSERT_TRUE(parser->Parse(text.data(), static_cast<std::int32_t>(text.size()), false));
    EXPECT_EQ(context.propertyId, row.id);
    EXPECT_EQ(context.charset, row.charset);
    EXPECT_EQ(context.encoding, row.encoding);
    EXPECT_EQ(context.mediaType, row.media);
  }
}

TEST(VCardReader, Frame) {
  static constexpr struct {
    const char* text;
    std::int32_t count;
  } kRows[] = {
      {"", 0},
      {"FN:a", 0},
      {"BEGIN:vcard", 1},
      {"BEGIN:VCA", 1},
      {"BEGIN:V", 1},
      {"BEGIN:VCARD ", 0},
      {"BEGIN:VCALENDAR", 0},
      {"BEGIN:", 0},
      {"X:VCARD", 0},
      {"BEGIN:VCARD\nBEGIN:VCARD", 2},
  };
  for (const auto& row : kRows) EXPECT_EQ(ReadCards(row.text).GetCount(), row.count) << row.text;

  CContacts contacts = ReadCards("BEGIN:VCARD\nEND:VCARD\nTITLE:late\nBEGIN:VCARD\n");
  EXPECT_EQ(contacts[0].org_title, u"late");
  EXPECT_EQ(contacts[0].tag, 65535);
  VObjectBuffer more;
  more.tag = 7;
  constexpr NarrowStringView kEarly = "ROLE:early\nBEGIN:VCARD\nTEL;:1\nBEGIN:VCARD";
  more.bytes.Assign(kEarly.data(), kEarly.size());
  std::vector<std::u16string> messages;
  SetMessageSink([&](std::u16string_view text) { messages.emplace_back(text); });
  try {
    ParseVCard(contacts, more);
    ADD_FAILURE() << "not rejected";
  } catch (unsigned short failure) {
    EXPECT_EQ(failure, 0xFFF9);
    EXPECT_EQ(messages, std::vector<std::u16string>{u"Error parsing vCard"});
  }
  SetMessageSink({});
  ASSERT_EQ(contacts.GetCount(), 3);
  EXPECT_EQ(contacts[1].org_role, u"early");
  EXPECT_EQ(contacts[0].tag, 7);
}

TEST(VCardReader, Names) {
  static constexpr struct {
    const char* lines;
    WideStringView family, given, suffix, formatted;
  } kRows[] = {
      {"FN:John Doe", u"", u"John Doe", u"", u"John Doe"},
      {"FN:John Doe\nN:Doe;John", u"Doe", u"John", u"", u"John Doe"},
      {"N:Doe;John\nFN:x", u"Doe", u"John", u"", u"x"},
      {"N:Doe;John;;Dr;Jr;extra", u"Doe", u"John", u"Jr", u""},
      {"N:Doe;John\nN:Roe", u"Roe", u"John", u"", u""},
      {"N:Doe;John\nN:;;", u"", u"", u"", u""},
      {"N:Doe\\;Smith;John", u"Doe;Smith", u"John", u"", u""},
      {"N:Doe\\\\;John", u"Doe\\", u"John", u"", u""},
      {"N;ENCODING=QUOTED-PRINTABLE:A=3BB;C", u"A;B", u"C", u"", u""},
      {"N;CHARSET=SHIFT_JIS:\x88\xC0;\x93\xA1", u"\u5B89", u"\u85E4", u"", u""},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.lines);
    const CContact contact = ReadCard(row.lines);
    EXPECT_EQ(contact.name.family_name, row.family);
    EXPECT_EQ(contact.name.given_name, row.given);
    EXPECT_EQ(contact.name.suffix_name, row.suffix);
    EXPECT_EQ(contact.formatted_name, row.formatted);
  }
}

TEST(VCardReader, Values) {
  const CContact contact = ReadCard(
      "SOUND;X-IRMC-N:a;b\nADR:1;2;3;4;5;6;7;8\nADR:po\nORG:Acme;Sales;Unit1;;Unit2\nORG:Solo\n"
      "NOTE:a\\;b\nTEL;ENCODING=QUOTED-PRINTABLE;CHARSET=SHIFT_JIS:=31\nTEL:\nX-BLOOD:ab\n"
      "X-FAVORITE:ye\nNICKNAME:n\nX-GROUP:g\nX-HOBBY:h\nURL:u\nX-CHATID;QQ:q\nEND:VCARD");
  EXPECT_EQ(contact.phonetic.given_name, u"b");
  EXPECT_EQ(contact.GetAddress(0).country, u"7");
  EXPECT_EQ(contact.GetAddress(1).post_office, u"po");
  EXPECT_EQ(contact.GetOrganization(0).org_position, u"Sales");
  EXPECT_EQ(contact.GetOrganization(0).org_additional, (std::vector<WideText>{u"Unit1", u"Unit2"}));
  EXPECT_EQ(contact.GetOrganization(1).org_position, u"");
  EXPECT_EQ(contact.GetComment(0), u"a\\;b");
  ASSERT_EQ(contact.GetTelephoneCount(), 1);
  EXPECT_EQ(contact.GetTelephone(0).number, u"=31");
  EXPECT_EQ(contact.blood_type, BLOOD_AB);
  EXPECT_EQ(contact.favorite, 1);
  EXPECT_EQ(contact.GetNickname(0), u"n");
  EXPECT_EQ(contact.GetMessenger(0).messenger_address, u"q");
  static constexpr struct {
    const char* line;
    std::int32_t code;
  } kBlood[] = {{"A", 1}, {"b", 2}, {"O", 4}, {"AB", 3}, {"ABX", 0}, {"Y", 0}};
  for (const auto& row : kBlood)
    EXPECT_EQ(ReadCard(std::string("X-BLOOD:") + row.line).blood_type, row.code) << row.line;
  EXPECT_EQ(ReadCard("X-FAVORITE:YES\nX-FAVORITE:YESS").favorite, 0);
}

TEST(VCardReader, EventDates) {
  static constexpr struct {
    const char* date;
    std::int32_t year, month, day;  // -1: null
  } kRows[] = {
      {"19700131", 1970, 1, 31}, {"1970-01-31", 1970, 1, 31}, {"1970-131", 197, 1, 31},
      {"1970-1-1", -1, -1, -1},  {"1970013", -1, -1, -1},     {"19701301", -1, -1, -1},
      {"19700230", -1, -1, -1},  {"1970-01:31", -1, -1, -1},  {"19700101T000000", -1, -1, -1},
      {"1970 131", -1, -1, -1},  {"00500101", -1, -1, -1},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.date);
    const CContact contact = ReadCard(std::string("X-ANNI:") + row.date);
    ASSERT_EQ(contact.GetContactEventCount(), 1);
    const CContactEvent& event = contact.GetContactEvent(0);
    EXPECT_EQ(event.event_type, EVENT_ANNIVERSARY);
    EXPECT_EQ(event.event_date.GetYear(), row.year);
    EXPECT_EQ(event.event_date.GetMonth(), row.month);
    EXPECT_EQ(event.event_date.GetDay(), row.day);
    EXPECT_EQ(event.event_date.status, row.year < 0 ? StatusNull : StatusValid);
  }
}

}  // namespace
}  // namespace pim
