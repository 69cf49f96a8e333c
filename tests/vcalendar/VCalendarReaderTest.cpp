// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <vector>

#include "pim/platform/Host.h"
#include "tests/platform/Scoped.h"
#include "tests/vcalendar/VCalendars.h"
#include "vcalendar/VCalendarForms.h"
#include "vcalendar/VCalendarReader.h"
#include "vcalendar/VCalendarValues.h"

namespace pim {
namespace {

TEST(VCalendarReader, Frame) {
  static constexpr struct {
    const char* text;
    std::vector<int> (*kinds)();
  } kRows[] = {
      {"BEGIN:VCALENDAR\nTZ:+09:00\nSUMMARY:x", [] { return std::vector<int>{}; }},
      {"BEGIN:vevent\nBEGIN:VTODO\nBEGIN:VMEMO",
       [] {
         return std::vector<int>{1, 2, 3};
       }},
      {"BEGIN:V\nBEGIN:VE\nBEGIN:VM\nBEGIN:VEVENTS\nBEGIN:VALARM\nBEGIN:",
       [] {
         return std::vector<int>{2, 1, 3};
       }},
      {"BEGIN:VEVENT\nCATEGORIES:MEMO", [] { return std::vector<int>{3}; }},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.text);
    const CCalendars items = ReadItems(row.text);
    std::vector<int> kinds;
    for (std::int32_t i = 0; i < items.GetCount(); ++i) kinds.push_back(items[i].calendar_type);
    EXPECT_EQ(kinds, row.kinds());
  }
  EXPECT_EQ(ReadItems("BEGIN:VEVENT\nSUMMARY:a\nEND:VEVENT\nSUMMARY:b")[0].summary, u"b");

  std::vector<std::u16string> messages;
  SetMessageSink([&](std::u16string_view text) { messages.emplace_back(text); });
  CCalendars items;
  VObjectBuffer data;
  data.tag = 7;
  constexpr NarrowStringView kText = "BEGIN:VEVENT\nRRULE:FOO\nSUMMARY:a\nX;:1\nBEGIN:VEVENT";
  data.bytes.Assign(kText.data(), kText.size());
  EXPECT_THROW(ParseVCalendar(items, data), unsigned short);
  SetMessageSink({});
  ASSERT_EQ(items.GetCount(), 1);
  EXPECT_EQ(items[0].tag, 7);
  EXPECT_EQ(messages, (std::vector<std::u16string>{u"Invalid recurrence.\n\nFOO",
                                                   u"Error parsing vCalendar"}));
}

// Local texts become UTC by the zone, which counts times that a change of the clock skips or
// repeats as daylight time.
TEST(VCalendarReader, DateTimes) {
  static constexpr const char* kNewYork = "EST5EDT,M3.2.0,M11.1.0";
  static constexpr const char* kSydney = "AEST-10AEDT,M10.1.0,M4.1.0/3";
  static constexpr struct {
    const char* zone;
    const char* text;
    const char* utc;
  } kRows[] = {
      {"JST-9", "20100105T120059Z", "2010-01-05 12:00:00"},
      {"JST-9", "20100105T120000", "2010-01-05 03:00:00"},
      {"JST-9", "20100105", "2010-01-04 15:00:00"},
      {"UTC", "20100105T240000Z", "2010-01-05 00:00:00"},
      {"UTC", "20100105T245959", "2010-01-05 00:00:00"},
      {"UTC", "20100105T1230", "2010-01-05 00:12:00"},
      {"UTC", " +20100105T 120000", "2010-01-05 12:00:00"},
      {"UTC", "20100230T120000Z", "invalid"},
      {"UTC", "20100230T120000", "invalid"},
      {"UTC", "2010-01-05", "invalid"},
      {"UTC", "99999999999999999999T99999999999999", "invalid"},
      {"UTC", "-20100105", "invalid"},
      {"UTC", "abc", "null"},
      {"UTC", "0", "null"},
      {kNewYork, "20100314T015900", "2010-03-14 06:59:00"},
      {kNewYork, "20100314T023000", "2010-03-14 06:30:00"},
      {kNewYork, "20101107T013000", "2010-11-07 05:30:00"},
      {kNewYork, "20101107T020000", "2010-11-07 07:00:00"},
      {kSydney, "20100105T120000", "2010-01-05 01:00:00"},
      {kSydney, "20100705T120000", "2010-07-05 02:00:00"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(std::string(row.zone) + " " + row.text);
    const test::ScopedVariable zone("TZ", row.zone);
    COleDateTimeNull value;
    ParseDateTime(row.text, value);
    EXPECT_EQ(TextOf(value), row.utc);
  }
}

TEST(VCalendarReader, AllDay) {
  const test::ScopedVariable zone("TZ", "JST-9");
  static constexpr struct {
    const char* lines;
    std::int32_t allday;
  } kRows[] = {
      {"DTSTART:20100105\nDTEND:20100105", 1},
      {"DTEND:20100105T240000\nDTSTART:20100105T000059", 1},
      {"DTSTART:20100105T000000Z\nDTEND:20100106T000000Z", 0},
      {"DTSTART:20100105", 0},
      {"DTSTART:20100105\nDUE:20100105\nDTEND:20100105", 1},
      {"DTSTART:20100105\nDTEND:20100105\nDTEND:20100105T100000", 0},
      {"DTSTART:20100105\nBEGIN:VEVENT\nDTEND:20100105", 0},
      {"DTSTART:20100105\nDTEND:20100105T001000", 0},
      {"DTSTART:0\nDTEND:20100105", 0},
  };
  for (const auto& row : kRows) EXPECT_EQ(ReadEvent(row.lines)[0].allday, row.allday) << row.lines;
  CCalendars items;  // what is pending outlives the text
  EXPECT_TRUE(VCalendarReader(items).Read("BEGIN:VEVENT\nDTSTART:20100105", true));
  EXPECT_TRUE(VCalendarReader(items).Read("DTEND:20100105", true));
  EXPECT_EQ(items[0].allday, 1);
}

TEST(VCalendarReader, Spans) {
  using Parse = bool (*)(NarrowStringView, COleDateTimeSpan&);
  static constexpr struct {
    Parse parse;
    const char* text;
    double minutes;
    DateTimeStatus status;
  } kRows[] = {
      {ParseUtcOffset, "+09", 540, StatusValid},
      {ParseUtcOffset, "-05:30", -330, StatusValid},
      {ParseUtcOffset, "-00:30", 30, StatusValid},
      {ParseUtcOffset, "-0530", -31800, StatusValid},
      {ParseUtcOffset, "99999999999:99999999999", 2147483647, StatusValid},
      {ParseDuration, "P1Y2M3DT4H5M6S", 428 * 1440 + 245.1, StatusValid},
      {ParseDuration, "PT15M", 15, StatusValid},
      {ParseDuration, "P1M", 43200, StatusValid},
      {ParseDuration, "-PT5M", 0, StatusValid},
      {ParseDuration, "P1W", 0, StatusValid},
      {ParseDuration, "PT5M,", 0, StatusValid},
      {ParseDuration, "P99999999999Y", 2147483647.0 * 1440, StatusInvalid},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.text);
    COleDateTimeSpan span;
    span.value = 77;
    row.parse(row.text, span);
    EXPECT_NEAR(span.value * 1440, row.minutes, 1e-3);
    EXPECT_EQ(span.status, row.status);
  }
}

TEST(VCalendarReader, Words) {
  static constexpr struct {
    const char* line;
    std::int32_t CCalendar::*field;
    std::int32_t value;
  } kRows[] = {
      {"CLASS:P", &CCalendar::class_, 1},
      {"CLASS:PR", &CCalendar::class_, 2},
      {"CLASS:PUBLICX", &CCalendar::class_, 0},
      {"STATUS:C", &CCalendar::status, 4},
      {"STATUS:COM", &CCalendar::status, 6},
      {"STATUS:D", &CCalendar::status, 5},
      {"STATUS:del", &CCalendar::status, 7},
      {"STATUS:NEEDS ACTION", &CCalendar::status, 0},
      {"PRIORITY:2 ", &CCalendar::priority, 2},
      {"PRIORITY:HIGH", &CCalendar::priority, 0},
      {"PRIORITY:-99999999999", &CCalendar::priority, -2147483647 - 1},
  };
  for (const auto& row : kRows) EXPECT_EQ(ReadEvent(row.line)[0].*row.field, row.value) << row.line;
  EXPECT_EQ(ReadEvent("X-HOLIDAY:y")[0].set_holiday, 1);
  EXPECT_EQ(ReadEvent("X-HOLIDAY:NO")[0].set_holiday, 0);
  const CCalendars items = ReadEvent(
      "CATEGORIES: APPOINTMENT ;;Anniversary;BIRTHDAY\nCATEGORIES:SCHEDULE,MEETING\n"
      "CATEGORIES:SCHEDULE\nDTCREATE:20100105T000000Z\nDCREATED:20110105T000000Z\nATTENDEE:x\n"
      "SUMMARY;QUOTED-PRINTABLE:a=0D=0Ab=0Dc=0Ad\n"
      "LOCATION;CHARSET=SHIFT_JIS;CHARSET=utf-8;QUOTED-PRINTABLE:=C3=BC\nDTSTART:20100105T113000Z");
  const CCalendar& item = items[0];
  ASSERT_EQ(item.categories.size(), 3U);
  EXPECT_EQ(item.categories[1].category_name, u"BIRTHDAY");
  EXPECT_EQ(item.categories[2].category_name, u"APPOINTMENT");
  EXPECT_EQ(item.GetCategories(), CATEGORY_APPOINTMENT | CATEGORY_BIRTHDAY);
  EXPECT_EQ(TextOf(item.created_time), "2010-01-05 00:00:00");
  EXPECT_EQ(item.summary, u"a\nb\rc\nd");
  EXPECT_EQ(item.location, u"\u00FC");
}

TEST(VCalendarReader, AlarmsAndDaylight) {
  const test::ScopedVariable zone("TZ", "EST5EDT,M3.2.0,M11.1.0");
  const CCalendars items = ReadEvent(
      "AALARM;TYPE=WAVE;VALUEX= =content-id;TYPES==PCM:20100105T100000Z;PT5M;3; Meet ;x\n"
      "DTSTART:20100105T101559Z\nTZ:-05:30\n"
      "DAYLIGHT:TRUE;;-04;20100314T020000;20101107T020000;EST;EDT\nBEGIN:VEVENT\nAALARM:;;;\n"
      "AALARM:\nDAYLIGHT:TRUE;-04;20100314T020000;20101107T020000;EST;EDT\nDAYLIGHT:true;1");
  const CReminder& reminder = items[0].reminder;
  EXPECT_EQ(reminder.GetType(), REMINDER_WAVE | REMINDER_PCM);
  EXPECT_EQ(reminder.GetValueType(), REMINDER_CONTENT_ID);
  EXPECT_EQ(reminder.GetAlramType(), DESKMATE_IDS::ALARM_AUDIO);
  EXPECT_EQ(TextOf(reminder.alarm_date), "2010-01-05 10:00:00");
  EXPECT_NEAR(reminder.snooze.value * 1440, 5, 1e-9);
  EXPECT_EQ(reminder.repeatCount, 3);
  EXPECT_EQ(reminder.displayText, u"Meet");
  std::int32_t minutes = 0;
  EXPECT_TRUE(items[0].GetAlarmRuntime(minutes));
  EXPECT_EQ(minutes, 15);
  const CCalendarZone& read = items[0].zone;
  EXPECT_NEAR(read.tzOffset.value * 1440, -330, 1e-9);
  EXPECT_NEAR(read.daylightOffset.value * 24, -4, 1e-9);
  EXPECT_EQ(TextOf(read.daylightStart), "2010-03-14 06:00:00");
  EXPECT_EQ(TextOf(read.daylightEnd), "2010-11-07 07:00:00");
  EXPECT_EQ(read.daylightName, u"EDT");
  EXPECT_EQ(items[1].reminder.GetAlramType(), DESKMATE_IDS::ALARM_AUDIO);
  EXPECT_EQ(TextOf(items[1].reminder.alarm_date), "null");
  EXPECT_EQ(items[1].zone.standardName, u"");
  EXPECT_EQ(TextOf(items[1].zone.daylightStart), "null");
}

}  // namespace
}  // namespace pim
