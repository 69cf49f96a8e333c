// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <random>

#include "tests/vcard4/Forms.h"

namespace pim {
namespace {

std::string Card(std::string_view lines) {
  return "BEGIN:VCARD\r\nVERSION:3.0\r\n" + std::string(lines) + "END:VCARD\r\n";
}

// The lines between the frame of a card of vCard 2.1.
std::string Inside(const std::string& text) {
  const std::string start = "BEGIN:VCARD\r\nVERSION:2.1\r\n";
  const std::string end = "END:VCARD\r\n";
  EXPECT_TRUE(text.starts_with(start) && text.ends_with(end)) << text;
  return text.substr(start.size(), text.size() - start.size() - end.size());
}

TEST(VCardDown, Lines) {
  const struct {
    std::string_view lines;
    std::string_view expected;
    std::string_view losses = "";
  } kRows[] = {
      // Types: lists, quotes, bare words, other programs' words.
      {"TEL;TYPE=cell,voice;PREF=1:1\n", "TEL;PREF;VOICE;CELL:1\r\n"},
      {"TEL;type=\"CELL,FAX\";TYPE=pref:1\n", "TEL;PREF;FAX;CELL:1\r\n"},
      {"TEL;HOME;X-Mobile:1\n", "TEL;HOME;CELL:1\r\n"},
      {"TEL;type=IPHONE;type=CELL:1\n", "TEL;CELL:1\r\n", "2 TEL changed type-ignored\n"},
      {"TEL;TYPE=text;PREF=2:1\n", "TEL:1\r\n", "2 TEL changed type-ignored\n"},
      {"TEL;VALUE=uri:tel:+1-555%2D0;ext=5\n", "TEL:+1-555-0;ext=5\r\n"},
      {"TEL:12\\,34\\;5\n", "TEL:12,34;5\r\n"},
      {"TEL:1\\n2\n", "TEL:1  2\r\n", "2 TEL changed bad-character\n"},
      {"EMAIL;TYPE=INTERNET,HOME:a@b\n", "EMAIL;Private:a@b\r\n"},
      {"EMAIL;TYPE=INTERNET;TYPE=PREF:a\n", "EMAIL:a\r\n", "2 EMAIL changed type-ignored\n"},
      {"URL;TYPE=work:http\\://a,b\n", "URL;Work:http://a,b\r\n"},
      {"ADR;TYPE=dom,home:;;1\\, A St\\;B;C;;9\n", "ADR;DOM;HOME:;;1, A St\\;B;C;;9;\r\n"},
      {"ADR:;;a;;;;;more\n", "ADR:;;a;;;;\r\n", "2 ADR changed extra-parts\n"},
      {"ADR;LABEL=\"x: y; z\":;;a;;;;\n", "ADR:;;a;;;;\r\n", "2 ADR changed type-ignored\n"},
      {"ORG:Acme\n", "ORG:Acme;\r\n"},
      // Groups and their labels, wherever they stand.
      {"item1.X-ABLabel:_$!<HomeFAX>!$_\nitem1.TEL:1\n", "TEL;HOME;FAX:1\r\n"},
      {"a.TEL:1\na.X-ABLabel:iPhone\n", "TEL;CELL:1\r\n", "2 TEL changed type-ignored\n"},
      {"a.URL:u\na.X-ABLabel:Blog\n", "URL:u\r\n", "3 X-ABLabel dropped type-ignored\n"},
      {"a.X-ABDATE:2001-02-03\na.X-ABLabel:_$!<Anniversary>!$_\n", "X-ANNI:20010203\r\n"},
      // Texts.
      {"NOTE:a\\nb\\\\n\\,\\;\\x\n",
       "NOTE;CHARSET=utf-8;ENCODING=QUOTED-PRINTABLE:a=0D=0Ab\\n,;\\x\r\n"},
      {"NOTE:fol\n ded\r\n\t in two\n", "NOTE:folded in two\r\n"},
      {"NOTE;LANGUAGE=de:\xC3\xBC\n", "NOTE;CHARSET=utf-8;ENCODING=QUOTED-PRINTABLE:=C3=BC\r\n",
       "2 NOTE changed type-ignored\n"},
      {"NOTE;ENCODING=QUOTED-PRINTABLE:a=\nb=3D\n",
       "NOTE;CHARSET=utf-8;ENCODING=QUOTED-PRINTABLE:ab=3D\r\n"},
      {"NOTE:  a\xFF\n", "NOTE;CHARSET=utf-8;ENCODING=QUOTED-PRINTABLE:=20 a=EF=BF=BD\r\n",
       "2 NOTE changed bad-character\n"},
      {"NICKNAME:A,B\\,C\nCATEGORIES:x,,y\n",
       "NICKNAME:A\r\nNICKNAME:B,C\r\nX-GROUP:x\r\nX-GROUP:y\r\n"},
      {"N:D;J;;;;II\nFN:J D\nFN:other\n", "N:D;J;;;\r\nFN:J D\r\n",
       "2 N changed extra-parts\n4 FN dropped replaced\n"},
      {"X-PHONETIC-LAST-NAME:do\nX-PHONETIC-FIRST-NAME:jon\n", "SOUND:do;jon;;;\r\n"},
      {"SOUND;X-IRMC-N:do;jon\nSOUND:x\n", "SOUND:do;jon;;;\r\n", "3 SOUND dropped no-property\n"},
      {"FN;DERIVED=TRUE:a@b\n", ""},
      {"HOBBY:chess\nX-BLOOD:ab\nX-FAVORITE:1\n",
       "X-HOBBY:chess\r\nX-BLOOD:AB\r\nX-FAVORITE:YES\r\n"},
      // Days.
      {"BDAY:1970-01-31\n", "BDAY:19700131\r\n"},
      {"BDAY;VALUE=date-time:19700131T101112Z\n", "BDAY:19700131\r\n",
       "2 BDAY changed time-dropped\n"},
      {"BDAY:--0229\n", "BDAY:16040229\r\n", "2 BDAY changed no-year\n"},
      {"BDAY;X-APPLE-OMIT-YEAR=1604:1604-01-02\n", "BDAY:16040102\r\n", "2 BDAY changed no-year\n"},
      {"BDAY:1970\nBDAY:--02\nBDAY:19700230\n", "",
       "2 BDAY dropped bad-value\n3 BDAY dropped bad-value\n4 BDAY dropped bad-value\n"},
      {"ANNIVERSARY:20010203\nX-EVENTDAY:20010204\n", "X-ANNI:20010203\r\nX-EVENTDAY:20010204\r\n"},
      // Messengers.
      {"IMPP;X-SERVICE-TYPE=Skype:skype:a%20b\n", "X-CHATID;Skype:a b\r\n"},
      {"IMPP:xmpp:a@b\nIMPP:aim:goim?screenname=c\n", "X-CHATID;Jabber:a@b\r\nX-CHATID;AIM:c\r\n"},
      {"IMPP;X-SERVICE-TYPE=GaduGadu:gg:7\n", "X-CHATID;Other:gg:7\r\n",
       "2 IMPP changed type-ignored\n"},
      {"X-MSN:m\nX-CHATID;ICQ:9\n", "X-CHATID;Window:m\r\nX-CHATID;ICQ:9\r\n"},
      // Pictures.
      {"PHOTO;ENCODING=b;TYPE=PNG:QUJD\n RA==\n",
       "PHOTO;TYPE=PNG;ENCODING=BASE64:QUJDRA==\r\n\r\n"},
      {"PHOTO:data:image/jpeg;base64,QUJD\nPHOTO:data:image/gif;base64,AAAA\n",
       "PHOTO;TYPE=JPEG;ENCODING=BASE64:QUJD\r\n\r\n", "3 PHOTO dropped replaced\n"},
      {"PHOTO;BASE64;GIF:QU!\nJDR\n", "PHOTO;TYPE=GIF;ENCODING=BASE64:QUJD\r\n\r\n",
       "2 PHOTO changed bad-base64\n"},
      {"PHOTO;VALUE=uri:http://x/y.jpg\n", "", "2 PHOTO dropped no-picture\n"},
      // What 2.1 has no place for.
      {"UID:u\nREV:2020\nPRODID:p\n", "UID:u\r\nREV:2020\r\nPRODID:p\r\n"},
      {"X-ABC.GEO;TYPE=x:1;2\n", "GEO;x:1;2\r\n", "2 GEO dropped no-property\n"},
      {"LABEL;TYPE=\"home,a b\";INTL;QUOTED-PRINTABLE:a\\, b=3D\\n=\n\\;\n",
       "LABEL;home;INTL;CHARSET=utf-8;ENCODING=QUOTED-PRINTABLE:a, b=3D=0D=0A;\r\n",
       "2 LABEL dropped no-property\n"},
      {"KEY;ENCODING=b:AAAA\nLOGO:data:,x\n", "",
       "2 KEY dropped no-property\n3 LOGO dropped no-property\n"},
      {"junk\n:x\nA B:x\n", "",
       "2  dropped bad-value\n3  dropped bad-value\n4 A B dropped bad-value\n"},
      {"BEGIN:VCARD\nFN:other\nEND:VCARD\nFN:own\n", "FN:own\r\n", "2 BEGIN dropped no-property\n"},
      {"KIND:individual\nKIND:org\n", "KIND:org\r\n", "3 KIND dropped no-property\n"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.lines);
    const Formed formed = Down(Card(row.lines));
    EXPECT_EQ(Inside(formed.text), row.expected);
    EXPECT_EQ(formed.losses, row.losses);
  }
}

// A group is no contact.
TEST(VCardDown, Groups) {
  for (const std::string_view line : {"KIND:group\n", "X-ADDRESSBOOKSERVER-KIND:group\n"}) {
    const Formed formed = Down(Card("FN:Friends\nMEMBER:urn:uuid:1\nNOTE:\n" + std::string(line)));
    EXPECT_EQ(formed.text, "");
    EXPECT_EQ(formed.losses, "2 FN dropped no-property\n3 MEMBER dropped no-property\n5 " +
                                 std::string(line.substr(0, line.find(':'))) +
                                 " dropped no-property\n");
  }
}

// Where the groups of the text are known its contacts have their names, and all else is told.
TEST(VCardDown, KnownGroups) {
  const struct {
    std::string card;
    std::string_view expected;  // without the frame
    std::string_view losses = "";
  } kRows[] = {
      {Card("UID:URN:UUID:A-1\nCATEGORIES:Fun\\, here\n"),
       "UID:URN:UUID:A-1\r\nX-GROUP:Fun, here\r\nX-GROUP:Work\r\n"},
      {Card("FN:b\nUID:b\n"), "FN:b\r\nUID:b\r\nX-GROUP:Work\r\n"},
      {Card("UID:b\n"), "UID:b\r\n"},
      {Card("FN:c\nMEMBER:a-1\n"), "FN:c\r\nMEMBER:a-1\r\n", "3 MEMBER dropped no-property\n"},
      {Card("N:Fun\\, here;;;;\nFN:Fun\\, here\nKIND:group\nUID:g\nMEMBER:urn:uuid:a-1\n"
            "MEMBER:a-1\nMEMBER:mailto:x\n"),
       "", "5 UID dropped no-property\n8 MEMBER dropped no-property\n"},
      {Card("N;ENCODING=QUOTED-PRINTABLE:W=6Frk;\nKIND:group\nMEMBER:B\nMEMBER:a-1\nPRODID:x\n"),
       ""},
      {Card("N:Work;x\nKIND:group\nMEMBER:B\n"), "", "2 N dropped no-property\n"},
      {Card("FN:Nobody\nKIND:group\nMEMBER:z\n"), "",
       "2 FN dropped no-property\n3 KIND dropped no-property\n4 MEMBER dropped no-property\n"},
      {Card("KIND:group\nMEMBER:b\n"), "",
       "2 KIND dropped no-property\n3 MEMBER dropped no-property\n"},
  };
  GroupBook groups;
  for (; !groups.IsComplete(); groups.EndLook())
    for (const auto& row : kRows) groups.Take(row.card);
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.card);
    Formed formed;
    VCardDown(row.card, Note(formed.losses), formed.text, &groups);
    EXPECT_EQ(formed.text.empty() ? "" : Inside(formed.text), row.expected);
    EXPECT_EQ(formed.losses, row.losses);
  }
}

// A picture's lines stand behind a blank, as many as they are, with an empty one behind.
TEST(VCardDown, LongPicture) {
  const std::string digits(100, 'A');
  EXPECT_EQ(Inside(Down(Card("PHOTO:data:image/bmp;base64," + digits + "\n")).text),
            "PHOTO;TYPE=BMP;ENCODING=BASE64:\r\n " + digits.substr(28) + "\r\n " +
                digits.substr(72) + "\r\n\r\n");
}

// Whatever the bytes: a card comes out whose every line is a property of 2.1 or the further line of
// one.
TEST(VCardDown, AnyBytes) {
  static constexpr std::string_view kParts[] = {"\n",
                                                "\r",
                                                " ",
                                                ":",
                                                ";",
                                                ",",
                                                "=",
                                                "\"",
                                                "\\",
                                                ".",
                                                "BEGIN:VCARD",
                                                "END:VCARD",
                                                "TEL",
                                                "N",
                                                "PHOTO",
                                                "TYPE=",
                                                "ENCODING=b",
                                                "ENCODING=QUOTED-PRINTABLE",
                                                "data:image/png;base64,",
                                                "item1",
                                                "X-ABLabel",
                                                "BDAY",
                                                "--",
                                                "1",
                                                "\xE3\x81",
                                                "\xFF",
                                                "IMPP",
                                                "%4",
                                                "xmpp:",
                                                "^n"};
  std::mt19937 random(17);
  for (int round = 0; round < 3000; ++round) {
    std::string card;
    for (auto left = random() % 40; left > 0; --left) card += kParts[random() % std::size(kParts)];
    const std::string text = Down(card).text;
    if (text.empty()) continue;
    const std::string inside = Inside(text);
    bool isSoftBreak = false;
    for (std::string_view rest = inside; !rest.empty();) {
      const std::size_t end = rest.find("\r\n");
      ASSERT_NE(end, std::string_view::npos) << text;
      const std::string_view line = rest.substr(0, end);
      ASSERT_EQ(line.find('\n'), std::string_view::npos) << text;
      const std::string_view header = line.substr(0, line.find(':'));
      if (header != line && !isSoftBreak) {
        ASSERT_EQ(header.find_first_of(".,\""), std::string_view::npos) << text;
        ASSERT_FALSE(line.starts_with("BEGIN") || line.starts_with("END:VCARD")) << text;
      }
      isSoftBreak = line.ends_with('=');
      rest.remove_prefix(end + 2);
    }
  }
}

}  // namespace
}  // namespace pim
