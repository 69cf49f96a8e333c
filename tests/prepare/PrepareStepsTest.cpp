// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/prepare/PrepareRows.h"
#include "tests/prepare/Prepared.h"
#include "tests/support/TestTexts.h"

namespace pim {
namespace {

using namespace std::string_literals;

TEST(PrepareSteps, DoWhatTheyTell) {
  for (const Row& row : Rows()) {
    SCOPED_TRACE(row.text);
    const Prepared prepared = Prepare(row.text, BitOf(row.step));
    EXPECT_EQ(prepared.text, row.expected);
    EXPECT_EQ(prepared.told, row.told);
    EXPECT_TRUE(prepared.isInOrder);
    EXPECT_EQ(Prepare(row.text, kAllPrepareSteps & ~BitOf(row.step))
                  .told.find(std::string(RowOf(row.step).name) + ":"),
              std::string::npos);
  }
}

TEST(PrepareSteps, PiecesOfAnySizeAreTheSame) {
  for (const Row& row : Rows()) {
    SCOPED_TRACE(row.text);
    for (const PrepareStepMask steps : {BitOf(row.step), kAllPrepareSteps}) {
      const Prepared whole = Prepare(row.text, steps);
      for (const std::size_t size : {1U, 2U, 3U, 7U}) {
        const Prepared cut = Prepare(row.text, steps, size);
        EXPECT_EQ(cut.text, whole.text) << size;
        EXPECT_EQ(cut.told, whole.told) << size;
        EXPECT_TRUE(cut.isInOrder);
      }
    }
  }
}

TEST(PrepareSteps, TwiceIsOnce) {
  std::vector<Row> rows = Rows();
  // What is local for one form may not be for the other.
  rows.push_back({PrepareStep::ICalendar,
                  Calendar("TZ:+03\r\n", "DTSTART:20100105T130000\r\n", "2.0"), "", ""});
  for (const Row& row : rows) {
    SCOPED_TRACE(row.text);
    for (const PrepareStepMask steps : {BitOf(row.step), kAllPrepareSteps}) {
      const std::string once = Prepare(row.text, steps).text;
      EXPECT_EQ(Prepare(once, steps).text, once);
    }
  }
}

// A group's card says which contacts are in it, wherever it stands.
TEST(PrepareSteps, Groups) {
  const std::string group = Card("FN:Friends\r\nKIND:group\r\nMEMBER:urn:uuid:a\r\n", "4.0");
  const std::string text = group + Card("UID:a\r\n", "3.0") + group + Card("UID:a\r\n");
  const std::string older = Card("UID:a\r\n");
  const std::string left = " vcard: the card of a group left out\n";
  const Prepared once = Prepare(text, kAllPrepareSteps);
  EXPECT_EQ(once.text, older + older);
  EXPECT_EQ(once.told, "1-6" + left +
                           "3 FN dropped no-property\n4 KIND dropped no-property\n"
                           "5 MEMBER dropped no-property\n"
                           "7-10 vcard: the card became vCard 2.1\n11-16" +
                           left +
                           "13 FN dropped no-property\n14 KIND dropped no-property\n"
                           "15 MEMBER dropped no-property\n");
  const std::string known = Card("UID:a\r\nX-GROUP:Friends\r\n");
  for (const std::size_t size : {std::size_t{1}, std::size_t{7}, text.size()}) {
    const Prepared all = PrepareWithGroups(text, kAllPrepareSteps, size);
    EXPECT_EQ(all.text, known + older);
    EXPECT_EQ(all.told, "1-6" + left + "7-10 vcard: the card became vCard 2.1\n11-16" + left);
    EXPECT_EQ(PrepareWithGroups(all.text, kAllPrepareSteps, size).text, all.text);
  }
  std::string wide;
  for (const char c : text) wide.append({c, '\0'});
  EXPECT_EQ(PrepareWithGroups("\xFF\xFE" + wide, kAllPrepareSteps, 1 << 20).text, known + older);
}

// All that a text of the old forms may hold, with what looks like work for a step and isn't.
std::vector<std::string> OldTexts() {
  std::vector<std::string> texts = TestTexts();
  texts.insert(
      texts.end(),
      {"", "\n", "\r\n \r\n", "\xEF\xBB\xBF", "\xEF\xBB\xBF" + Card("N:a\r\n"), "no text\n at all",
       Card("N;CHARSET=utf-8;ENCODING=QUOTED-PRINTABLE:=E3=81=\r\n=82;=\r\n\r\nTEL;WORK;FAX:+1,"
            "2\r\n"),
       Card("AGENT:\r\n" + Card("N:b\r\n")),
       Card("PHOTO;TYPE=JPEG;ENCODING=BASE64:\r\n QUJD\r\n\r\n"),
       Card("NOTE;\r\n CHARSET=utf-8:a\r\n b\r\nX-ABLabel:a\r\n\r\nORG:a\\;b;c\r\n"),
       "BEGIN:VCARD\nN:a\n\nEND:VCARD\n\n\njunk\nBEGIN:VCARD\nN:unended",
       Calendar("TZ:+09\r\n",
                "DTSTART:20100105T120000Z\r\nDTEND:20100105T130000Z\r\nRRULE:D1 #0\r\n"
                "AALARM:20100105T120000Z;;;\r\nDALARM:20100105T120000Z;;;\r\n")});
  return texts;
}

TEST(PrepareSteps, LeaveOldTextsAlone) {
  std::vector<PrepareStepMask> masks = {kAllPrepareSteps};
  for (const PrepareStepRow& row : PrepareSteps()) masks.push_back(BitOf(row.step));
  const std::vector<std::string> texts = OldTexts();
  ASSERT_GT(texts.size(), 20U);
  for (const std::string& text : texts) {
    const bool needsTimes = text.find("TZ:-05\r\n") != std::string::npos;
    for (const PrepareStepMask mask : masks) {
      const PrepareStepMask steps = needsTimes ? mask & ~BitOf(PrepareStep::Times) : mask;
      for (const std::size_t size : {std::size_t{3}, std::size_t{1} << 20}) {
        const Prepared prepared = Prepare(text, steps, size);
        EXPECT_EQ(prepared.text, text) << steps;
        EXPECT_EQ(prepared.told, "") << text << steps;
        EXPECT_TRUE(prepared.isSame) << text << steps;
      }
    }
  }
}

// A file that needs nearly every step.
TEST(PrepareSteps, Together) {
  const std::string text =
      "BEGIN:VCARD\rVERSION:3.0\ritem1.TEL;TYPE=\"cell,voice\":1\0\r"
      "N;CHARSET=ISO-8859-1:M\xFCller\\, x;\r"
      "PHOTO;ENCODING=b:\rQUJD\rEND:VCARDBEGIN:VCARD\rTEL;TYPE=HOME,FAX:2\rBEGIN:VCARD\rEND:VCARD\r"s;
  const std::string expected =
      "BEGIN:VCARD\r\nVERSION:2.1\r\nTEL;VOICE;CELL:1\r\n"
      "N;CHARSET=utf-8;ENCODING=QUOTED-PRINTABLE:M=C3=BCller, x;;;;\r\n"
      "PHOTO;TYPE=UNKNOWN;ENCODING=BASE64:QUJD\r\n\r\nEND:VCARD\r\nBEGIN:VCARD\r\n"
      "TEL;HOME;FAX:2\r\nEND:VCARD\r\nBEGIN:VCARD\r\nEND:VCARD\r\n";
  for (const std::size_t size : {1U, 2U, 3U, 7U, 1000U}) {
    const Prepared prepared = Prepare(text, kAllPrepareSteps, size);
    EXPECT_EQ(prepared.text, expected) << size;
    for (const std::string_view told : {"3 nul: ", "4 charsets: ", "5-6 base64: ", "1-7 vcard: ",
                                        "7 joined: ", "8 types: ", "9 missing-end: "})
      EXPECT_NE(("\n" + prepared.told).find("\n" + std::string(told)), std::string::npos) << told;
  }
  EXPECT_EQ(Prepare(expected, kAllPrepareSteps).told, "");
}

}  // namespace
}  // namespace pim
