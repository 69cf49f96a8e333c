// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "app/output/ExportLimits.h"
#include "app/output/Output.h"
#include "app/output/RecordDiff.h"
#include "app/output/ReportFile.h"
#include "pim/stream/TextRejects.h"
#include "tests/store/TemporaryFolder.h"

namespace pim::app {
namespace {

TEST(RecordDiff, TellsEachFieldAndLeavesOutNoEntry) {
  static constexpr struct {
    const char* before;
    const char* after;
    const char* told;
  } kRows[] = {
      {R"({"a":1})", R"({"a":1})", ""},
      {R"({"a":1,"b":"x"})", R"({"a":2,"b":"x"})", "a: 1 2; "},
      {R"({"a":{"b":1,"c":null}})", R"({"a":{"b":1,"c":0}})", "a.c: null 0; "},
      {R"({"a":[1,2,3]})", R"({"a":[1,3]})", "a[1]: 2 ; "},
      {R"({"a":[1,2]})", R"({"a":[]})", "a[0]: 1 ; a[1]: 2 ; "},
      {R"({"a":[1]})", R"({"a":[1,2]})", "a[1]:  2; "},
      {R"({"a":[1,2]})", R"({"a":[3]})", "a[0]: 1 3; a[1]: 2 ; "},
      {R"({"a":[{"b":1},{"b":2}]})", R"({"a":[{"b":1},{"b":3}]})", "a[1].b: 2 3; "},
      {R"({"a":{"b":1}})", R"({"a":null})", "a: {\"b\":1} null; "},
      {R"({"a":1})", "{}", "a: 1 ; "},
  };
  for (const auto& row : kRows) {
    std::string told;
    for (const Difference& difference : DifferencesOf(row.before, row.after))
      told += difference.field + ": " + difference.before + " " + difference.after + "; ";
    EXPECT_EQ(told, row.told) << row.before;
  }
}

TEST(ExportLimits, EachDifferenceHasItsReason) {
  static constexpr struct {
    TextForm form;
    const char* field;
    const char* before;
    const char* after;
    std::string_view reason;
  } kRows[] = {
      {TextForm::VCard, "telephones[0].number", R"("1\n2")", R"("1 2")", "line breaks in a number"},
      {TextForm::VCard, "telephones[0].number", R"("1\n2")", R"("1")",
       "written to the letter, a number"},
      {TextForm::VCard, "telephones[0].number", R"("1\n2")", R"("3")", ""},
      {TextForm::VCard, "telephones[12].number", R"(" 1")", R"("1")", "blanks at the head"},
      {TextForm::VCard, "telephones[0].number", R"("\u20ac")", R"("?")", "a number is written in"},
      {TextForm::VCard, "telephones[0]", R"({"number":""})", "", "an entry with nothing"},
      {TextForm::VCard, "events[0]", "{}", "", "an event without a date"},
      {TextForm::VCard, "comments[0]", R"("\ta")", R"("a")", "written to the letter"},
      {TextForm::VCard, "comments[0]", R"("a\u0000b")", R"("a")", "a text ends at a NUL"},
      {TextForm::VCard, "comments[0]", R"("a")", R"("b")", ""},
      {TextForm::VCard, "name.given_name", R"("")", R"("a")", "a formatted name without"},
      {TextForm::VCard, "name.given_name", R"("b")", R"("a")", ""},
      {TextForm::VCalendar, "reminder.snooze", "300", "0", "of an alarm nothing but"},
      {TextForm::VCalendar, "reminder.alarm_date", R"("2010-01-05T12:00:01")",
       R"("2010-01-05T12:00:00")", "the seconds of times"},
      {TextForm::VCalendar, "completed", R"("2010-01-05T12:00:01")", R"("2010-01-05T12:00:00")",
       "the seconds of times"},
      {TextForm::VCalendar, "completed", R"("2010-01-05T12:00:01")", R"("2010-01-06T12:00:00")",
       ""},
      {TextForm::VCalendar, "due", R"("invalid")", "null", "a date that doesn't exist"},
      {TextForm::VCalendar, "start_time", "null", R"("invalid")", "an all-day item needs"},
      {TextForm::VCalendar, "recurrence.endDate", R"("invalid")", "null", "a rule's end"},
      {TextForm::VCalendar, "recurrence.count", "1", "2", ""},
      {TextForm::VCalendar, "summary", R"("a\r\nb")", R"("a\nb")", "a CR LF in a text"},
  };
  for (const auto& row : kRows) {
    const std::string_view reason = ReasonOf(row.form, {row.field, row.before, row.after});
    EXPECT_EQ(reason.substr(0, row.reason.size()), row.reason) << row.field;
    EXPECT_EQ(reason.empty(), row.reason.empty()) << row.field << ": " << reason;
  }
}

std::string BytesOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

TEST(ReportFile, IsThereAsAWholeOrNotAtAll) {
  const testing::TemporaryFolder folder;
  const std::string path = folder.File("report");
  const auto files = [&folder] {
    return std::distance(std::filesystem::directory_iterator(folder.path()), {});
  };
  {
    ReportFile report(path, false);
    report.Append("lost");
    EXPECT_FALSE(std::filesystem::exists(path));
  }
  EXPECT_EQ(files(), 0);
  {
    ReportFile report(path, false);
    report.Append("one false;");
    report.Append("two");
    report.Truncate(10);
    report.Overwrite(4, "true ");
    report.Append("three");
    EXPECT_EQ(report.size(), 15);
    report.Publish();
  }
  EXPECT_EQ(BytesOf(path), "one true ;three");
  EXPECT_EQ(files(), 1);
  EXPECT_THROW(ReportFile(path, false), Failure);
  EXPECT_THROW(ReportFile(folder.path(), true), Failure);
  std::filesystem::create_symlink(path, folder.File("link"));
  EXPECT_THROW(ReportFile(folder.File("link"), true), Failure);
  std::filesystem::remove(folder.File("link"));
  EXPECT_THROW(ReportFile(folder.File("no/such"), true), Failure);
  {
    ReportFile report(path, true);
    report.Append("new");
    EXPECT_EQ(BytesOf(path), "one true ;three");
    report.Publish();
  }
  EXPECT_EQ(BytesOf(path), "new");
  // Another one may have come meanwhile.
  const std::string other = folder.File("other");
  ReportFile late(other, false);
  std::ofstream(other) << "mine";
  EXPECT_THROW(late.Publish(), Failure);
  EXPECT_EQ(BytesOf(other), "mine");
}

// Each part by its offset, size, first and last line, the line that is rejected, and its property.
TEST(TextRejects, TakesRecordsAndLinesOutsideThem) {
  static constexpr struct {
    TextForm form;
    std::string_view text;
    const char* parts;
    int records;
  } kRows[] = {
      {TextForm::VCard, "", "", 0},
      {TextForm::VCard, "BEGIN:VCARD\nTEL:1\nEND:VCARD\n", "", 1},
      {TextForm::VCard, "BEGIN:VCARD\nTEL;:1\nEND:VCARD\n", "0+29 1-3 at 2 TEL; ", 1},
      {TextForm::VCard, "BEGIN:VCARD\nTEL;:1\nEND:VCARD", "0+28 1-3 at 2 TEL; ", 1},
      {TextForm::VCard, "BEGIN:VCARD\nTEL;:1\nEND:VCARD\n\nBEGIN:VCARD\n", "0+29 1-3 at 2 TEL; ",
       2},
      // What stands behind its END and would land on the record ahead goes with it.
      {TextForm::VCard, "BEGIN:VCARD\nTEL;:1\nEND:VCARD\nTEL:2\nJUNK\n", "0+35 1-4 at 2 TEL; ", 1},
      // Without an END it goes as far as the next one begins.
      {TextForm::VCard, "BEGIN:VCARD\nA;=\n;B=:1\nX:1\n\nBEGIN:VCARD\n", "0+27 1-5 at 3 A; ", 2},
      // Two faults in one record, and base64 that goes on in folds.
      {TextForm::VCard, "BEGIN:VCARD\nP;BASE64:\n *AAA\n AAA\nTEL;:1\nFN:a\nEND:VCARD\n",
       "0+55 1-7 at 3 P; ", 1},
      // Outside all records only the line itself.
      {TextForm::VCard, "TEL;:1\n x\n\n y\nFN:a\nBEGIN:VCARD\n", "0+14 1-4 at 1 TEL; ", 1},
      {TextForm::VCard, "BEGIN:VCARD\nEND:VCARD\nTEL;:1\nBEGIN:VCARD\n", "22+7 3-3 at 3 TEL; ", 2},
      {TextForm::VCard, "BEGIN:VCARD\nTEL;:1\nBEGIN:VCARD\nTEL;:2\n",
       "0+19 1-2 at 2 TEL; 19+19 3-4 at 4 TEL; ", 2},
      // Calendars keep their frames.
      {TextForm::VCalendar, "BEGIN:VCALENDAR\nBEGIN:VTODO\nDUE;:1\nEND:VTODO\nEND:VCALENDAR\n",
       "16+29 2-4 at 3 DUE; ", 1},
      {TextForm::VCalendar, "BEGIN:VTODO\nDUE;:1\nEND:VCALENDAR\nBEGIN:VCALENDAR\nBEGIN:VMEMO\n",
       "0+19 1-2 at 2 DUE; ", 2},
      {TextForm::VCalendar, "BEGIN:VCARD\nTEL;:1\nEND:VCARD\n", "12+7 2-2 at 2 TEL; ", 0},
  };
  for (const auto& row : kRows) {
    const RejectedParts rejected = RejectedPartsOf(row.text, row.form);
    std::string told;
    for (const RejectedPart& part : rejected.parts) {
      told += std::to_string(part.offset) + "+" + std::to_string(part.size) + " " +
              std::to_string(part.firstLine) + "-" + std::to_string(part.lastLine) + " at " +
              std::to_string(part.line) + " " + part.property + "; ";
    }
    EXPECT_EQ(told, row.parts) << row.text;
    EXPECT_EQ(rejected.records, row.records) << row.text;
  }
}

}  // namespace
}  // namespace pim::app
