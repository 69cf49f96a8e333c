#include <gtest/gtest.h>

#include "tests/vcard/VCards.h"
#include "vcard/VCardWriter.h"

namespace pim {
namespace {

// Each line as a reader would get it, in the order of the record's own lists.
TEST(VCardWriter, LinesOfLists) {
  CContact contact;
  contact.tag = 0x12345;
  contact.NewTelephone(u"5=5;5", 0xFFFFFFFF, false, -1);
  contact.NewTelephone(u"", TEL_CELL, false, -1);
  contact.NewTelephone(u"1\r\nNOTE:x", 0, false, -1);
  contact.NewEmail(u"a@b", 99, -1);
  contact.NewURL(u"http://x?a=b", URL_WORK, -1);
  contact.NewMessenger(u"m", MESSENGER_GOOGLE_TALK);
  contact.NewAddress(nullptr, ADR_HOME | ADR_WORK | ADR_PREFERRED, -1).street = u"a;b\\c";
  contact.NewOrganization(ORG_UNKNOWN).org_name = u"Acme";
  contact.NewNickname(u"");
  contact.NewComment(u"a;b\\c");
  contact.NewContactEvent({}, EVENT_BIRTHDAY);
  COleDateTime day;
  day.SetDateTime(987, 2, 3, 0, 0, 0);
  contact.NewContactEvent(day, 44);
  contact.blood_type = BLOOD_UNNAMED;
  contact.favorite = -5;
  contact.phonetic.suffix_name = u"\u00FC";
  contact.phonetic.family_name = u"plain";
  VObjectBuffer data;
  WriteVCard(contact, data);
  EXPECT_EQ(data.tag, 0x2345);
  EXPECT_EQ(
      std::string(data.bytes.view()),
      "BEGIN:VCARD\r\nVERSION:2.1\r\n"
      "SOUND;CHARSET=utf-8;ENCODING=QUOTED-PRINTABLE:plain;;;;=C3=BC\r\n"
      "X-EVENTDAY:09870203\r\n"
      "TEL;PREF;WORK;HOME;VOICE;FAX;MSG;CELL;PAGER;BBS;MODEM;CAR;ASSISTANT;VIDEO;INTERNET;PTT;VOIP;"
      "COMPANY;ANDROID_OTHER;CUSTOM;ISDN;CALLBACK;MAIN;TELEX;TTY;MMS;RADIO:5=5;5\r\n"
      "TEL:1  NOTE:x\r\n"
      "EMAIL:a@b\r\nX-CHATID;GoogleTalk:m\r\n"
      "URL;Work;CHARSET=utf-8;ENCODING=QUOTED-PRINTABLE:http://x?a=3Db\r\n"
      "ADR;PREF;WORK;HOME:;;a\\;b\\\\c;;;;\r\nNOTE:a;b\\c\r\nORG;Unknown:Acme;\r\nX-BLOOD:\r\n"
      "X-FAVORITE:YES\r\nEND:VCARD");
  EXPECT_EQ(WriteCard(CContact()), "BEGIN:VCARD\r\nVERSION:2.1\r\nEND:VCARD");
}

// Numbers go out in the default code page; all other text is UTF-8.
TEST(VCardWriter, NumberInDefaultCodePage) {
  CContact contact;
  contact.NewTelephone(u"\u00E9", 0, false, -1);
  EXPECT_NE(WriteCard(contact).find("TEL:\xC3\xA9\r\n"), std::string::npos);
  ASSERT_TRUE(SetDefaultCodePage("CP1252"));
  EXPECT_NE(WriteCard(contact).find("TEL:\xE9\r\n"), std::string::npos);
  ASSERT_TRUE(SetDefaultCodePage("UTF-8"));
}

}  // namespace
}  // namespace pim
