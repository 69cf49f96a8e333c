// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>

#include "formats/vcard4/ContactNaming.h"
#include "pim/platform/Encoding.h"
#include "tests/vcard/VCards.h"
#include "tests/vcard4/Forms.h"

namespace pim {
namespace {

// What stands behind the UID of a card that was written alone.
std::string BehindUid(const std::string& text) {
  const std::size_t uid = text.find("\r\nUID:urn:uuid:");
  EXPECT_NE(uid, std::string::npos) << text;
  std::string lines = text.substr(text.find("\r\n", uid + 2) + 2);
  EXPECT_TRUE(lines.ends_with("END:VCARD\r\n"));
  return lines.substr(0, lines.size() - 11);
}

COleDateTime Day(std::int32_t year, std::int32_t hour = 0) {
  COleDateTime day;
  day.SetDateTime(year, 1, 31, hour, 0, 0);
  return day;
}

TEST(VCardForm, Lines) {
  const struct {
    void (*make)(CContact& contact);
    std::string_view v4;
    std::string_view v3;
    std::string_view losses = "";
  } kRows[] = {
      {[](CContact& contact) {
         contact.NewTelephone(u"1", TEL_PREFERRED | TEL_CELL | TEL_MMS, false, -1);
       },
       "TEL;PREF=1;TYPE=cell,x-mms:1\r\n", "TEL;TYPE=PREF,CELL,X-MMS:1\r\n"},
      {[](CContact& contact) { contact.NewTelephone(u"1", 0x40000000, false, -1); }, "TEL:1\r\n",
       "TEL:1\r\n", "0 telephones[0].number_type changed type-ignored\n"},
      {[](CContact& contact) {
         contact.NewOrganization(ORG_WORK);
         contact.NewAddress(nullptr, ADR_POSTAL, -1);
         contact.NewURL(u"", URL_UNKNOWN, -1);
       },
       "", "", "0 addresses[0] dropped no-property\n0 organizations[0] dropped no-property\n"},
      {[](CContact& contact) { contact.NewEmail(u"1", 99, -1); }, "EMAIL:1\r\n", "EMAIL:1\r\n",
       "0 emails[0].email_type changed type-ignored\n"},
      {[](CContact& contact) { contact.NewComment(u"a,b;c\\d\r\ne\n\u0001\x7F"); },
       "NOTE:a\\,b\\;c\\\\d\\ne\\n\r\n", "NOTE:a\\,b\\;c\\\\d\\ne\\n\r\n",
       "0 comments[0] changed bad-character\n0 comments[0] changed line-end\n"},
      {[](CContact& contact) { contact.NewComment(WideString(1, 0xD800) + u"\U0001F600"); },
       "NOTE:\xEF\xBF\xBD\xF0\x9F\x98\x80\r\n", "NOTE:\xEF\xBF\xBD\xF0\x9F\x98\x80\r\n",
       "0 comments[0] changed bad-character\n"},
      {[](CContact& contact) { contact.NewURL(u"http://a/b,c;d", URL_WORK, -1); },
       "URL;TYPE=work:http://a/b,c;d\r\n", "URL;TYPE=WORK:http://a/b,c;d\r\n"},
      {[](CContact& contact) { contact.NewMessenger(u"a b/\u00E9", MESSENGER_WINDOW); },
       "IMPP;X-SERVICE-TYPE=MSN:msnim:a%20b%2F%C3%A9\r\n",
       "IMPP;X-SERVICE-TYPE=MSN:msnim:a%20b%2F%C3%A9\r\n"},
      {[](CContact& contact) {
         for (const std::uint32_t type : {1U, 1U, 2U, 2U, 3U, 44U})
           contact.NewContactEvent(Day(987), type);
       },
       "BDAY:09870131\r\nX-BDAY:09870131\r\nANNIVERSARY:09870131\r\nX-ANNIVERSARY:09870131\r\n"
       "X-EVENTDAY:09870131\r\nX-EVENTDAY:09870131\r\n",
       "BDAY:0987-01-31\r\nX-BDAY:0987-01-31\r\nX-ANNIVERSARY:0987-01-31\r\n"
       "X-ANNIVERSARY:0987-01-31\r\nX-EVENTDAY:0987-01-31\r\nX-EVENTDAY:0987-01-31\r\n",
       "0 events[5].event_type changed type-ignored\n"},
      {[](CContact& contact) {
         contact.NewContactEvent({}, EVENT_BIRTHDAY);
         contact.NewContactEvent(Day(2000, 9), EVENT_BIRTHDAY);
       },
       "BDAY:20000131\r\n", "BDAY:2000-01-31\r\n",
       "0 events[0].event_date dropped bad-value\n0 events[1].event_date changed time-dropped\n"},
      {[](CContact& contact) {
         contact.NewGroup(u"a,b");
         contact.NewGroup(u"");
         contact.NewGroup(u"c");
         contact.favorite = 1;
       },
       "CATEGORIES:a\\,b,c\r\nX-FAVORITE:YES\r\n", "CATEGORIES:a\\,b,c\r\nX-FAVORITE:YES\r\n"},
      {[](CContact& contact) {
         contact.blood_type = BLOOD_UNNAMED;
         contact.photo = u"none.jpg";
         contact.hobby = u"go";
       },
       "HOBBY:go\r\n", "X-HOBBY:go\r\n",
       "0 blood_type dropped bad-value\n0 photo dropped no-picture\n"},
      {[](CContact& contact) {
         COrganization& organization = contact.NewOrganization(ORG_WORK);
         organization.org_additional.emplace_back(u"");
         organization.org_additional.emplace_back(u"b");
       },
       "ORG;TYPE=work:;;b\r\n", "ORG;TYPE=WORK:;;b\r\n"},
  };
  const PicturesFolder folder;
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.v4);
    CContact contact;
    contact.formatted_name = u"x";
    row.make(contact);
    for (const bool isV4 : {true, false}) {
      const Formed formed =
          Form(MakeVCardForm(isV4 ? VCardVersion::V4 : VCardVersion::V3, false), contact);
      std::string expected = "FN:x\r\nN:;;;;\r\n";
      EXPECT_EQ(BehindUid(formed.text), expected.append(isV4 ? row.v4 : row.v3));
      EXPECT_EQ(formed.losses, row.losses);
    }
  }
}

// A card without a name says which field it took one from.
TEST(VCardForm, MadeNames) {
  const struct {
    void (*make)(CContact& contact);
    std::string_view name;
  } kRows[] = {
      {[](CContact& contact) {
         contact.name.given_name = u"Jo";
         contact.name.family_name = u"Doe";
         contact.name.prefix_name = u"Dr.";
       },
       "Dr. Jo Doe"},
      {[](CContact& contact) { contact.NewTelephone(u"55", 0, false, -1); }, "55"},
      {[](CContact& contact) {
         contact.NewEmail(u"a@b", 0, -1);
         contact.NewOrganization(0).org_name = u"Acme";
       },
       "Acme"},
      {[](CContact&) {}, "?"},
  };
  for (const auto& row : kRows) {
    CContact contact;
    row.make(contact);
    const std::string name(row.name);
    EXPECT_TRUE(BehindUid(Form(MakeVCardForm(VCardVersion::V4, false), contact).text)
                    .starts_with("FN;DERIVED=TRUE:" + name + "\r\nN:"));
    EXPECT_TRUE(BehindUid(Form(MakeVCardForm(VCardVersion::V3, false), contact).text)
                    .starts_with("FN;X-DERIVED=TRUE:" + name + "\r\nN:"));
  }
}

// No line is longer than 75 bytes, none is cut inside a character, and joined again they are the
// text.
TEST(VCardForm, Folds) {
  for (std::size_t ahead = 0; ahead < 8; ++ahead) {
    WideString note(ahead, u'x');
    for (int i = 0; i < 60; ++i) note += u"\u00E9\u3042\U0001F600";
    CContact contact;
    contact.NewComment(note);
    std::string text = Form(MakeVCardForm(VCardVersion::V4, false), contact).text;
    std::string joined;
    for (std::size_t at = 0; at < text.size();) {
      const std::size_t end = text.find("\r\n", at);
      ASSERT_LE(end - at, 75U);
      const std::string line = text.substr(at, end - at);
      ASSERT_TRUE(Utf8FromWide(WideFromUtf8(line)) == line && line != " ") << line;
      joined += line.starts_with(' ') ? line.substr(1) : "\n" + line;
      at = end + 2;
    }
    EXPECT_NE(joined.find("\nNOTE:" + Utf8FromWide(note) + "\n"), std::string::npos) << text;
  }
}

// A picture's media comes of its name or, where that says none, of its bytes.
TEST(VCardForm, Pictures) {
  const struct {
    std::string name;
    std::string bytes;
    std::string v4;
    std::string v3;
  } kRows[] = {
      {"a.JPG", "ABCD", "image/jpeg;base64,QUJDRA==", "JPEG:QUJDRA=="},
      {"b.", "GIF8", "image/gif;base64,R0lGOA==", "GIF:R0lGOA=="},
      {"c", "x", "application/octet-stream;base64,eA==", "UNKNOWN:eA=="},
  };
  const PicturesFolder folder;
  for (const auto& row : kRows) {
    std::ofstream(PicturesFolder::path() + "/" + row.name) << row.bytes;
    CContact contact;
    contact.photo = WideFromUtf8(row.name);
    EXPECT_TRUE(BehindUid(Form(MakeVCardForm(VCardVersion::V4, false), contact).text)
                    .ends_with("\r\nPHOTO:data:" + row.v4 + "\r\n"));
    EXPECT_TRUE(BehindUid(Form(MakeVCardForm(VCardVersion::V3, false), contact).text)
                    .ends_with("\r\nPHOTO;ENCODING=b;TYPE=" + row.v3 + "\r\n"));
  }
}

// A contact is the same one in each form, and with other groups, stamps or a star too.
TEST(VCardForm, Uids) {
  CContact contact;
  contact.NewTelephone(u"1", TEL_CELL, false, -1);
  const std::string uuid = UuidOf(contact);
  contact.modified_time = Day(2026, 8);
  contact.NewGroup(u"g");
  contact.favorite = 1;
  EXPECT_EQ(UuidOf(contact), uuid);
  const std::string text = Form(MakeVCardForm(VCardVersion::V3, false), contact).text;
  EXPECT_NE(text.find("UID:urn:uuid:" + uuid + "\r\nREV:2026-01-31T08:00:00Z\r\n"),
            std::string::npos);
  CContact other;
  other.NewTelephone(u"1", TEL_HOME, false, -1);
  EXPECT_NE(UuidOf(other), uuid);
}

// Groups follow all contacts, in the order in which they were met.
TEST(VCardForm, Groups) {
  CContact first;
  first.NewGroup(u"B");
  first.NewGroup(u"B");
  CContact second;
  second.NewEmail(u"e", 0, -1);
  second.NewGroup(u"A");
  second.NewGroup(u"B");
  for (const bool isV4 : {true, false}) {
    const auto form = MakeVCardForm(isV4 ? VCardVersion::V4 : VCardVersion::V3, true);
    std::string text;
    form->Append(first, {}, text);
    form->Append(second, {}, text);
    text.clear();
    form->End(text);
    const std::string x = isV4 ? "" : "X-ADDRESSBOOKSERVER-";
    const auto group = [&](const std::string& name, const std::string& members) {
      return std::string("BEGIN:VCARD\r\nVERSION:") + (isV4 ? "4.0" : "3.0") +
             "\r\nPRODID:-//PimVobjMgr//pimvobj//EN\r\nUID:urn:uuid:" +
             UuidOfGroup(WideString(name.begin(), name.end())) + "\r\n" + x +
             "KIND:group\r\nFN:" + name + "\r\nN:" + name + ";;;;\r\n" + members + "END:VCARD\r\n";
    };
    // Folded as it has more than 75 bytes.
    const auto member = [&](const CContact& contact) {
      std::string line = x + "MEMBER:urn:uuid:" + UuidOf(contact);
      if (line.size() > 75) line.insert(75, "\r\n ");
      return line + "\r\n";
    };
    EXPECT_EQ(text, group("B", member(first) + member(second)) + group("A", member(second)));
  }
}

TEST(JCardForm, Arrays) {
  CContact contact;
  contact.formatted_name = u"\"J\"\r\n\n";
  contact.NewTelephone(u"1", TEL_PREFERRED | TEL_CELL | TEL_WORK, false, -1);
  contact.NewOrganization(ORG_WORK).org_name = u"Acme";
  contact.NewMessenger(u"a", MESSENGER_SKYPE);
  contact.NewContactEvent(Day(1970), EVENT_BIRTHDAY);
  contact.NewNickname(u"a");
  contact.NewNickname(u"b");
  const Formed formed = Form(MakeJCardForm(false), contact);
  EXPECT_EQ(formed.losses, "0 formatted_name changed line-end\n");
  EXPECT_EQ(
      formed.text,
      "[\n[\"vcard\",[[\"version\",{},\"text\",\"4.0\"],"
      "[\"prodid\",{},\"text\",\"-//PimVobjMgr//pimvobj//EN\"],"
      "[\"uid\",{},\"uri\",\"urn:uuid:" +
          UuidOf(contact) +
          "\"],"
          "[\"fn\",{},\"text\",\"\\\"J\\\"\\n\\n\"],[\"n\",{},\"text\",[\"\",\"\",\"\",\"\",\"\"]],"
          "[\"nickname\",{},\"text\",\"a\",\"b\"],"
          "[\"bday\",{},\"date-and-or-time\",\"1970-01-31\"],"
          "[\"tel\",{\"pref\":\"1\",\"type\":[\"work\",\"cell\"]},\"text\",\"1\"],"
          "[\"impp\",{\"x-service-type\":\"Skype\"},\"uri\",\"skype:a\"],"
          "[\"org\",{\"type\":\"work\"},\"text\",\"Acme\"]]]\n]\n");
}

}  // namespace
}  // namespace pim
