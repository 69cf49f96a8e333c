// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/vcard4/Forms.h"

namespace pim {
namespace {

void Fill(CContact& contact) {
  contact.name.given_name = u"J\"o\"";
  contact.NewTelephone(u"1", TEL_CELL, false, -1);
  contact.NewTelephone(u"2", TEL_PREFERRED | TEL_WORK | TEL_FAX, false, -1);
  contact.NewTelephone(u"3", TEL_WORK | TEL_VOICE, false, -1);
  contact.NewComment(u"a\r\nb");
  contact.NewComment(u" c");
  contact.blood_type = BLOOD_AB;
  contact.favorite = 1;
}

TEST(Csv, Columns) {
  const struct {
    std::string_view columns;
    std::string_view text;
  } kRows[] = {
      {"A = name.given_name", "A\r\n\"J\"\"o\"\"\"\r\n"},
      {"# no column\n\n  A,B = telephones[1].number \r\nC=telephones[7].number",
       "\"A,B\",C\r\n2,\r\n"},
      {"A = telephones.number_type\nB = telephones.number",
       "A,B\r\nMobile ::: * Work Fax ::: Work,1 ::: 2 ::: 3\r\n"},
      {"A = telephones[1..].number\nB = telephones.work[0].number\nC = telephones.Work[1..].number",
       "A,B,C\r\n2 ::: 3,2,3\r\n"},
      {"A = comments\nB = comments[1]", "A,B\r\n\"a\r\nb :::  c\",\" c\"\r\n"},
      {"A = \"Blood\" blood_type + \"Hobby\" hobby + favorite", "A\r\nBlood ::: YES\r\n"},
      {"A = emails.email_type + hobby", "A\r\n\r\n"},
  };
  CContact contact;
  Fill(contact);
  for (const auto& row : kRows) EXPECT_EQ(Form(MakeCsvForm(row.columns), contact).text, row.text);
}

TEST(Csv, ColumnsThatAreNone) {
  const struct {
    std::string_view columns;
    std::string_view problem;
  } kRows[] = {
      {"#", "no column"},
      {"A = hobby\nB", "line 2: no '='"},
      {"A = ", "line 1: no such field: "},
      {"A = telephones", "line 1: no such field: telephones"},
      {"A = telephones.nothing", "line 1: no such field: telephones.nothing"},
      {"A = name.work.given_name", "line 1: no such field: name.work.given_name"},
      {"A = comments[x]", "line 1: no number: x]"},
      {"A = comments[1", "line 1: no ']': "},
      {"A = \"x hobby", "line 1: a quote isn't closed: x hobby"},
      {"A = hobby hobby", "line 1: there is more than a field: hobby"},
  };
  for (const auto& row : kRows) {
    try {
      MakeCsvForm(row.columns);
      ADD_FAILURE() << row.columns;
    } catch (const std::invalid_argument& error) {
      EXPECT_EQ(error.what(), row.problem);
    }
  }
}

// What has no column is told, and what beyond the last of a kind stands in it.
TEST(Csv, Rest) {
  CContact contact;
  Fill(contact);
  const Formed some =
      Form(MakeCsvForm("A = telephones.work.number\nB = comments[0]\nC = favorite"), contact);
  EXPECT_EQ(some.losses,
            "0 name.given_name dropped no-property\n0 blood_type dropped no-property\n"
            "0 telephones[0].number_type changed type-ignored\n"
            "0 telephones[0].number dropped no-property\n"
            "0 telephones[1].number_type changed type-ignored\n"
            "0 comments[1] dropped no-property\n");
  for (char16_t digit = u'4'; digit < u'8'; ++digit)
    contact.NewTelephone(WideString(1, digit), TEL_HOME, false, -1);
  COleDateTime day;
  day.SetDateTime(2001, 2, 3, 0, 0, 0);
  for (const std::uint32_t type : {EVENT_BIRTHDAY, EVENT_BIRTHDAY, EVENT_ANNIVERSARY})
    contact.NewContactEvent(day, type);
  contact.NewContactEvent({}, EVENT_OTHER);
  contact.NewOrganization(ORG_WORK).org_name = u"Acme";
  contact.photo = u"p.jpg";
  const Formed usual = Form(MakeCsvForm({}), contact);
  EXPECT_EQ(usual.losses,
            "0 events[3].event_date dropped bad-value\n0 photo dropped no-property\n"
            "0 organizations[0].org_type changed type-ignored\n");
  EXPECT_NE(usual.text.find(",Home ::: Home ::: Home,5 ::: 6 ::: 7,"), std::string::npos);
  const std::size_t header = usual.text.find("\r\n");
  const auto commas = [](std::string_view text) { return std::ranges::count(text, ','); };
  EXPECT_EQ(commas(usual.text.substr(0, header)), commas(usual.text.substr(header)));
}

}  // namespace
}  // namespace pim
