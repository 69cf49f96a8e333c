// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/support/MadeTexts.h"
#include "tests/support/ScopedWritingForm.h"
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
      "TEL:1\r\nNOTE:x\r\n"
      "EMAIL:a@b\r\nX-CHATID;GoogleTalk:m\r\n"
      "URL;Work;CHARSET=utf-8;ENCODING=QUOTED-PRINTABLE:http://x?a=3Db\r\n"
      "ADR;PREF;WORK;HOME:;;a\\;b\\\\c;;;;\r\nNOTE:a;b\\c\r\nORG;Unknown:Acme;\r\nX-BLOOD:\r\n"
      "X-FAVORITE:YES\r\nEND:VCARD");
  EXPECT_EQ(WriteCard(CContact()), "BEGIN:VCARD\r\nVERSION:2.1\r\nEND:VCARD");
}

// The two forms of a text differ in blanks at the head of a line and in a number's line breaks.
TEST(VCardWriter, WritingForms) {
  const std::string x64(64, 'x');
  const std::u16string w64(64, u'x');
  const struct {
    WideString text;
    std::string bare;
    std::string readsBack;
  } kRows[] = {
      {u"a b ", "a b ", "a b "},
      {u" a", " a", "=20a"},
      {u"\ta", "\ta", "=09a"},
      {w64 + u"xxxx b", x64 + "xxxx=\r\n b", x64 + "xxxx=\r\n=20b"},
      {w64 + u"xxxx  b", x64 + "xxxx=\r\n  b", x64 + "xxxx=\r\n=20 b"},
      {w64 + u"xxxx\t", x64 + "xxxx=\r\n\t", x64 + "xxxx=\r\n=09"},
      {w64 + u" b", x64 + "=20b", x64 + "=20b"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.readsBack);
    CContact contact;
    contact.NewComment(row.text);
    contact.name.given_name = row.text;
    for (const auto form : {WritingForm::ToTheLetter, WritingForm::ReadsBack}) {
      const ScopedWritingForm scope(form);
      const std::string& value = form == WritingForm::ReadsBack ? row.readsBack : row.bare;
      const std::string parameters =
          value.find('=') == std::string::npos ? "" : ";CHARSET=utf-8;ENCODING=QUOTED-PRINTABLE";
      const std::string card = WriteCard(contact);
      EXPECT_NE(card.find("\r\nNOTE" + parameters + ":" + value + "\r\n"), std::string::npos);
      EXPECT_NE(card.find("\r\nN" + parameters + ":;" + value + ";;;\r\n"), std::string::npos);
      if (form == WritingForm::ToTheLetter) continue;
      EXPECT_EQ(ReadCards(card)[0].comments()[0], row.text);
      EXPECT_EQ(ReadCards(card)[0].name.given_name, row.text);
    }
  }
  CContact contact;
  contact.NewTelephone(u"1\r\nNOTE:x", 0, false, -1);
  const ScopedWritingForm scope(WritingForm::ReadsBack);
  EXPECT_NE(WriteCard(contact).find("TEL:1  NOTE:x\r\n"), std::string::npos);
}

TEST(VCardWriter, MadeTextsReadBack) {
  const ScopedWritingForm scope(WritingForm::ReadsBack);
  MadeTexts made;
  for (int i = 0; i < 500; ++i) {
    CContact contact;
    contact.name.family_name = u"x" + made.Next();
    contact.name.suffix_name = made.Next();
    contact.formatted_name = made.Next();
    contact.NewComment(made.Next() + u"x");
    contact.NewEmail(u"x" + made.Next(), EMAIL_WORK, -1);
    CPostalAddress& address = contact.NewAddress(nullptr, ADR_HOME, -1);
    address.post_office = made.Next();
    address.country = u"x" + made.Next();
    const std::string card = WriteCard(contact);
    const CContact back = std::move(ReadCards(card)[0]);
    SCOPED_TRACE(card);
    EXPECT_EQ(back.name, contact.name);
    EXPECT_EQ(back.formatted_name, contact.formatted_name);
    ASSERT_EQ(back.GetCommentCount(), 1);
    EXPECT_EQ(back.comments()[0], contact.comments()[0]);
    EXPECT_EQ(back.emails()[0], contact.emails()[0]);
    EXPECT_EQ(back.addresses()[0], contact.addresses()[0]);
  }
}

// A date that is none has its line, and is read as none again.
TEST(VCardWriter, InvalidDate) {
  CContact contact;
  contact.NewContactEvent({}, EVENT_BIRTHDAY);
  COleDateTime none;
  none.status = StatusInvalid;
  contact.NewContactEvent(none, EVENT_BIRTHDAY);
  EXPECT_EQ(WriteCard(contact), "BEGIN:VCARD\r\nVERSION:2.1\r\nBDAY:-001-1-1\r\nEND:VCARD");
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
