// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/support/MadeTexts.h"
#include "tests/support/ScopedWritingForm.h"
#include "tests/vcalendar/VCalendars.h"

namespace pim {
namespace {

// An item with something in every field, whatever its kind.
CCalendar FullItem(CalendarType kind) {
  CCalendar item;
  item.tag = 0x12345;
  item.calendar_type = static_cast<std::uint8_t>(kind);
  item.summary = u"a;b\\c=\u00E9";
  item.description = u"two\nlines";
  item.location = u"a;b";
  item.color = u"red";
  item.created_time = Moment(2010, 1, 1, 1, 1, 1);
  item.modified_time = Moment(2010, 1, 2, 1, 1, 1);
  item.xmodified_time = Moment(2010, 1, 3, 1, 1, 1);
  item.start_time = Moment(2010, 7, 5, 14, 30, 59);
  item.end_time = Moment(2010, 7, 6, 15, 30, 59);
  item.due = Moment(2010, 1, 6, 1, 1, 1);
  item.completed = Moment(2010, 1, 7, 1, 1, 1);
  item.reminder.alarm_date = Moment(2010, 7, 5, 14, 15, 59);
  item.reminder.displayText = u"not written";
  item.recurrence.data = MakeRecurrenceData(RECUR_DAILY);
  item.exceptionRule.data = MakeRecurrenceData(RECUR_WEEKLY);
  item.class_ = CLASS_PRIVATE;
  item.set_holiday = 1;
  item.priority = -2;
  item.status = STATUS_SENT;
  item.NewCategory(u"BIRTHDAY");
  item.NewCategory(u"MEETING");
  return item;
}

const std::string kTexts =
    "SUMMARY;CHARSET=utf-8;ENCODING=QUOTED-PRINTABLE:a;b\\c=3D=C3=A9\r\n"
    "DESCRIPTION;CHARSET=utf-8;ENCODING=QUOTED-PRINTABLE:two=0Alines\r\nLOCATION:a;b\r\n"
    "DCREATED:20100101T010100Z\r\nLAST-MODIFIED:20100102T010100Z\r\nX-MODIFIED:"
    "20100103T010100Z\r\n";
const std::string kStart = "DTSTART:20100705T143000Z\r\n";
const std::string kDone = "COMPLETED:20100107T010100Z\r\n";
const std::string kRules = "RRULE:D0 #0\r\nXRULE:W0 #0\r\n";

TEST(VCalendarWriter, KindsAndTheirLines) {
  const std::string alarm = "AALARM:20100705T141500Z;;;\r\n";
  const std::string tail = "CLASS:PRIVATE\r\nX-HOLIDAY:YES\r\n";
  EXPECT_EQ(LinesOf(FullItem(CalendarType::Event)), kTexts + kStart + "DTEND:20100706T153000Z\r\n" +
                                                        kDone + alarm + kRules +
                                                        "CATEGORIES:MEETING\r\n" + tail);
  EXPECT_EQ(LinesOf(FullItem(CalendarType::Todo)),
            kTexts + kStart + "DUE:20100106T010100Z\r\n" + kDone + alarm + kRules +
                "CATEGORIES:MEETING\r\n" + tail + "PRIORITY:-2\r\nSTATUS:SENT\r\n");
  EXPECT_EQ(LinesOf(FullItem(CalendarType::Memo)),
            kTexts + kStart + "DTEND:20100706T153000Z\r\n" + kDone + alarm + kRules +
                "CATEGORIES:MEMO\r\n" + tail + "X-COLOR:red\r\n");
  // All-day items are local, in whatever zone, and a to-do has its end then.
  static constexpr const char* kDays[][3] = {{"20100705", "20100706", "AALARM:20100705T141500"},
                                             {"20100705", "20100707", "AALARM:20100705T231500"},
                                             {"20100705", "20100706", "AALARM:20100705T101500"},
                                             {"20100706", "20100707", "AALARM:20100706T001500"}};
  for (std::size_t i = 0; i < std::size(kZones); ++i) {
    SCOPED_TRACE(kZones[i]);
    const ScopedZone zone(kZones[i]);
    CCalendar item = FullItem(CalendarType::Todo);
    item.allday = 1;
    EXPECT_EQ(LinesOf(std::move(item)),
              kTexts + "DTSTART:" + kDays[i][0] + "T000000\r\nDTEND:" + kDays[i][1] +
                  "T240000\r\nDUE:20100106T010100Z\r\n" + kDone + kDays[i][2] + ";;;\r\n" + kRules +
                  "CATEGORIES:MEETING\r\n" + tail + "PRIORITY:-2\r\nSTATUS:SENT\r\n");
  }
}

TEST(VCalendarWriter, FrameAndEmptyItems) {
  VObjectBuffer data;
  data.bytes.Assign("before", 6);
  CCalendars items;
  WriteVCalendar(items, data);
  EXPECT_EQ(data.bytes.view(), "before");
  EXPECT_EQ(data.tag, 0xFFFF);
  for (const int type : {0, 2, 3, 4})
    items.AddNew().calendar_type = static_cast<std::uint8_t>(type);
  items[0].tag = 7;
  items[3].tag = 0x12345;
  items[3].class_ = 4;
  items[1].status = -1;
  WriteVCalendar(items, data);
  EXPECT_EQ(data.tag, 0x2345);
  EXPECT_EQ(
      data.bytes.view(),
      "BEGIN:VCALENDAR\r\nVERSION:1.0\r\nBEGIN:VEVENT\r\nEND:VEVENT\r\nBEGIN:VTODO\r\n"
      "STATUS:\r\nEND:VTODO\r\nBEGIN:VMEMO\r\nCATEGORIES:MEMO\r\nEND:VMEMO\r\nBEGIN:VEVENT\r\n"
      "END:VEVENT\r\nEND:VCALENDAR");
}

TEST(VCalendarWriter, CategoriesAndMarks) {
  static constexpr struct {
    const char16_t* names[2];
    const char* lines;
  } kRows[] = {
      {{u"EDUCATION", u"BUSINESS"}, "CATEGORIES:BUSINESS\r\n"},
      {{u"PERSONAL", u"DATE"}, "CATEGORIES:DATE\r\n"},
      {{u"SICK DAY", u"PERSONAL"}, "CATEGORIES:PERSONAL\r\n"},
      {{u"BIRTHDAY", u"PHONE CALL"}, "CATEGORIES:PHONE CALL\r\n"},
      {{u"SCHEDULE", u"HOLIDAY"}, "CATEGORIES:APPOINTMENT\r\n"},
      {{u"Business", u""}, ""},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.lines);
    CCalendar item;
    for (const char16_t* name : row.names) item.NewCategory(name);
    EXPECT_EQ(LinesOf(std::move(item)), row.lines);
  }
  CCalendar marked;
  marked.set_holiday = 2;
  EXPECT_EQ(LinesOf(std::move(marked)), "X-HOLIDAY:NO\r\n");
}

// A date that isn't one has its line all the same, and reads back as none; an all-day item has its
// two days in any case.
TEST(VCalendarWriter, DatesThatAreNone) {
  static constexpr const char* kLines[] = {
      "DCREATED:-001-1-1T-1-100Z\r\nDTSTART:-001-1-1T-1-100Z\r\nDTEND:-001-1-1T-1-100Z\r\n"
      "AALARM:-001-1-1T-1-100Z;;;\r\n",
      "DCREATED:-001-1-1T-1-100Z\r\nDTSTART:-001-1-1T000000\r\nDTEND:-001-1-1T240000\r\n"
      "AALARM:-001-1-1T-1-100;;;\r\n"};
  for (const std::int32_t allday : {0, 1}) {
    SCOPED_TRACE(allday);
    CCalendar item;
    item.allday = allday;
    item.start_time.status = item.created_time.status = StatusInvalid;
    item.end_time.status = item.reminder.alarm_date.status = StatusValid;
    item.end_time.value = item.reminder.alarm_date.value = 1e300;
    EXPECT_EQ(LinesOf(std::move(item)), kLines[allday]);
    const CCalendar back = ReadItem(kLines[allday]);
    for (const COleDateTimeNull& date : {back.start_time, back.end_time, back.reminder.alarm_date})
      EXPECT_EQ(date.status, StatusInvalid);
  }
  CCalendar unset;
  unset.allday = 1;
  EXPECT_EQ(LinesOf(std::move(unset)), "DTSTART:-001-1-1T000000\r\nDTEND:-001-1-1T240000\r\n");
}

TEST(VCalendarWriter, WritingForms) {
  const std::u16string w68(68, u'x');
  const std::string x68(68, 'x');
  for (const auto form : {WritingForm::ToTheLetter, WritingForm::ReadsBack}) {
    const ScopedWritingForm scope(form);
    CCalendar item;
    item.summary = w68 + u" b";
    const bool readsBack = form == WritingForm::ReadsBack;
    const std::string lines = LinesOf(std::move(item));
    EXPECT_EQ(lines, "SUMMARY;CHARSET=utf-8;ENCODING=QUOTED-PRINTABLE:" + x68 + "=\r\n" +
                         (readsBack ? "=20b\r\n" : " b\r\n"));
    EXPECT_EQ(ReadItem(lines).summary, w68 + (readsBack ? u" b" : u"b"));
  }
}

TEST(VCalendarWriter, MadeTextsReadBack) {
  const ScopedWritingForm scope(WritingForm::ReadsBack);
  MadeTexts made;
  for (int i = 0; i < 500; ++i) {
    CCalendar item;
    item.calendar_type = static_cast<std::uint8_t>(CalendarType::Memo);
    item.summary = made.Next();
    item.color = made.Next();
    const WideText summary = item.summary;
    const WideText color = item.color;
    CCalendars items;
    items.AddNew() = std::move(item);
    const CCalendars back = ReadItems(WriteItems(items));
    ASSERT_EQ(back.GetCount(), 1);
    EXPECT_EQ(back[0].summary, summary);
    EXPECT_EQ(back[0].color, color);
  }
}

}  // namespace
}  // namespace pim
