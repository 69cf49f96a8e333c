// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <chrono>

#include "tests/icalendar/Forms.h"

namespace pim {
namespace {

constexpr const char* kBerlin =
    "BEGIN:VTIMEZONE\nTZID:Home\n"
    "BEGIN:DAYLIGHT\nTZOFFSETFROM:+0100\nTZOFFSETTO:+0200\nTZNAME:CEST\n"
    "DTSTART:19700329T020000\nRRULE:FREQ=YEARLY;BYMONTH=3;BYDAY=-1SU\nEND:DAYLIGHT\n"
    "BEGIN:STANDARD\nTZOFFSETFROM:+0200\nTZOFFSETTO:+0100\nTZNAME:CET\n"
    "DTSTART:19701025T030000\nRRULE:FREQ=YEARLY;BYMONTH=10;BYDAY=-1SU\nEND:STANDARD\n"
    "END:VTIMEZONE\n";

struct DownRow {
  const char* kind;
  const char* lines;  // between BEGIN and END
  const char* down;   // the same of what comes of it
  std::vector<std::string> told;
};

void ExpectDown(const DownRow& row) {
  const std::string kind = row.kind;
  SCOPED_TRACE(row.lines);
  Told told;
  const std::string text = "BEGIN:VCALENDAR\n" + std::string(kBerlin) + "BEGIN:" + kind + "\n" +
                           row.lines + "END:" + kind + "\nEND:VCALENDAR\n";
  std::string down = DownOf(text, told);
  std::erase(down, '\r');
  const std::string block = kind == "VJOURNAL" ? "VMEMO" : kind;
  EXPECT_EQ(down, "BEGIN:" + block + "\n" + row.down + "END:" + block + "\n");
  EXPECT_EQ(told.lines, row.told);
}

TEST(ICalendarDown, Times) {
  const DownRow kRows[] = {
      {"VEVENT",
       "DTSTART:20200101T100000Z\nDTEND:20200101T113000Z\n",
       "DTSTART:20200101T100000Z\nDTEND:20200101T113000Z\n",
       {}},
      // By the text's own zone, in winter and summer and long behind its years.
      {"VEVENT",
       "DTSTART;TZID=Home:20200101T100000\nDTEND;TZID=\"Home\":20200701T100000\n",
       "DTSTART:20200101T090000Z\nDTEND:20200701T080000Z\n"
       "TZ:+01:00\nDAYLIGHT:TRUE;+02:00;20200329T010000Z;20201025T010000Z\n",
       {}},
      {"VEVENT",
       "DTSTART;TZID=Home:20600701T100000\n",
       "DTSTART:20600701T080000Z\n"
       "TZ:+01:00\nDAYLIGHT:TRUE;+02:00;20600328T010000Z;20601031T010000Z\n",
       {}},
      // By the system's zones, under the names that programs give them.
      {"VEVENT",
       "DTSTART;TZID=Asia/Tokyo:20200101T100000\n",
       "DTSTART:20200101T010000Z\nTZ:+09:00\n",
       {}},
      {"VEVENT",
       "DTSTART;TZID=Australia/Sydney:20200101T100000\nRRULE:FREQ=WEEKLY;BYDAY=WE\n",
       "DTSTART:20191231T230000Z\nRRULE:W1 WE #0\n"
       "TZ:+10:00\nDAYLIGHT:TRUE;+11:00;20191005T160000Z;20200404T160000Z\n",
       {}},
      {"VEVENT",
       "DTSTART;TZID=/example.org/2020/Europe/Berlin:20200701T100000\n",
       "DTSTART:20200701T080000Z\n"
       "TZ:+01:00\nDAYLIGHT:TRUE;+02:00;20200329T010000Z;20201025T010000Z\n",
       {}},
      {"VEVENT",
       "DTSTART;TZID=Eastern Standard Time:20200701T100000\n",
       "DTSTART:20200701T140000Z\n"
       "TZ:-05:00\nDAYLIGHT:TRUE;-04:00;20200308T070000Z;20201101T060000Z\n",
       {}},
      // Right behind the end of a summer, which is earlier than that of the next.
      {"VEVENT",
       "DTSTART;TZID=America/New_York:20151102T230000\n",
       "DTSTART:20151103T040000Z\n"
       "TZ:-05:00\nDAYLIGHT:TRUE;-04:00;20160313T070000Z;20161106T060000Z\n",
       {}},
      // Local where nothing tells more, with all that goes by them.
      {"VEVENT",
       "DTSTART:20200101T100000\nDURATION:P1DT90M\nBEGIN:VALARM\nACTION:AUDIO\n"
       "TRIGGER:-PT15M\nEND:VALARM\n",
       "DTSTART:20200101T100000\nDTEND:20200102T113000\nAALARM:20200101T094500;;;\n",
       {}},
      {"VEVENT",
       "DTSTART;TZID=../../passwd:20200101T100000\n",
       "DTSTART:20200101T100000\n",
       {"1: DTSTART changed unknown-zone"}},
      // A repeat needs a clock, and the day's first minute would make a day of it.
      {"VEVENT",
       "DTSTART:20200101T030000\nDTEND:20200101T040000\n"
       "RRULE:FREQ=WEEKLY;BYDAY=WE,TH;UNTIL=20200109T030000\n",
       "DTSTART:20191231T180000Z\nDTEND:20191231T190000Z\nRRULE:W1 WE TH  20200108T180000Z\n"
       "TZ:+09:00\n",
       {"1: DTSTART changed unknown-zone"}},
      {"VEVENT",
       "DTSTART:20200101T000000\nDTEND:20200102T000000\n",
       "DTSTART:20191231T150000Z\nDTEND:20200101T150000Z\n",
       {"1: DTSTART changed unknown-zone"}},
      // Days end with their last one.
      {"VEVENT",
       "DTSTART;VALUE=DATE:20200228\nDTEND;VALUE=DATE:20200301\n",
       "DTSTART:20200228T000000\nDTEND:20200229T240000\n",
       {}},
      {"VEVENT",
       "DTSTART;VALUE=DATE:20200228\n",
       "DTSTART:20200228T000000\nDTEND:20200228T240000\n",
       {}},
      {"VEVENT",
       "DTSTART;VALUE=DATE:20200228\nDURATION:P3D\n",
       "DTSTART:20200228T000000\nDTEND:20200301T240000\n",
       {}},
      // A day of 23 hours, and as many hours.
      {"VEVENT",
       "DTSTART;TZID=Home:20200328T100000\nDURATION:P1D\n",
       "DTSTART:20200328T090000Z\nDTEND:20200329T080000Z\n"
       "TZ:+01:00\nDAYLIGHT:TRUE;+02:00;20200329T010000Z;20201025T010000Z\n",
       {}},
      {"VEVENT",
       "DTSTART;TZID=Home:20200328T100000\nDURATION:PT23H\n",
       "DTSTART:20200328T090000Z\nDTEND:20200329T080000Z\n"
       "TZ:+01:00\nDAYLIGHT:TRUE;+02:00;20200329T010000Z;20201025T010000Z\n",
       {}},
      {"VTODO",
       "DTSTART:20200101T100000Z\nDUE;VALUE=DATE:20200103\nDURATION:PT1H\n",
       "DTSTART:20200101T100000Z\nDUE:20200103T000000\n",
       {"3: DURATION dropped replaced"}},
      {"VTODO",
       "DTSTART:20200101T100000Z\nDURATION:PT1H\n",
       "DTSTART:20200101T100000Z\nDUE:20200101T110000Z\n",
       {}},
      {"VEVENT",
       "DTSTART:20200101T100059Z\nDTEND:20200230T100000Z\nCREATED:now\n",
       "DTSTART:20200101T100059Z\n",
       {"3: CREATED dropped bad-value", "1: DTSTART changed seconds-dropped",
        "2: DTEND dropped bad-value"}},
  };
  const ScopedZone zone("JST-9");
  for (const DownRow& row : kRows) ExpectDown(row);
}

// Their zone may be told for the whole text.
TEST(ICalendarDown, TimesWithoutZone) {
  const ScopedZone zone("JST-9");
  const std::string event = "BEGIN:VEVENT\nDTSTART:20200101T000000\nEND:VEVENT\n";
  ICalendarDown down;
  EXPECT_FALSE(down.TakeFloatingZone("Europe/Nowhere"));
  std::string out;
  down.Convert("BEGIN:VTODO\nDUE:20200101T100000\nEND:VTODO\n", {}, out);
  EXPECT_EQ(out, "BEGIN:VTODO\r\nDUE:20200101T100000\r\nEND:VTODO\r\n");
  down.KeepNoLocalTimes();
  down.Convert("BEGIN:VTODO\nDUE:20200101T100000\nEND:VTODO\n", {}, out);
  EXPECT_EQ(out, "BEGIN:VTODO\r\nDUE:20200101T010000Z\r\nEND:VTODO\r\n");
  EXPECT_TRUE(down.TakeFloatingZone("Asia/Karachi"));
  Told told;
  down.Convert(event, told.Tell(), out);
  EXPECT_EQ(out, "BEGIN:VEVENT\r\nDTSTART:20191231T190000Z\r\nTZ:+05:00\r\nEND:VEVENT\r\n");
  EXPECT_EQ(told.lines, std::vector<std::string>());
}

TEST(ICalendarDown, OtherComponents) {
  ICalendarDown down;
  Told told;
  std::string out;
  for (const char* const component :
       {"BEGIN:VFREEBUSY\nFREEBUSY:x\nEND:VFREEBUSY\n", "BEGIN: X-any \n", kBerlin, "no\n"}) {
    down.Convert(component, told.Tell(), out);
    EXPECT_EQ(out, "");
  }
  EXPECT_EQ(told.lines, (std::vector<std::string>{"0: VFREEBUSY dropped no-property",
                                                  "0: X-any dropped no-property"}));
}

TEST(ICalendarDown, OtherProperties) {
  const DownRow kRows[] = {
      {"VEVENT",
       "UID:x\nDTSTAMP:20200101T100000Z\nSUMMARY:a\\, b\\; c\\nd\nDESCRIPTION:\n"
       "LOCATION;LANGUAGE=de:f\n  ew\ncreated:20200101T100000Z\nLAST-MODIFIED:20200102T100000Z\n",
       "SUMMARY;CHARSET=utf-8;ENCODING=QUOTED-PRINTABLE:a, b; c=0Ad\nLOCATION:f ew\n"
       "DTCREATE:20200101T100000Z\nLAST-MODIFIED:20200102T100000Z\n",
       {"5: LOCATION changed type-ignored"}},
      // Lines count as they stand in the text.
      {"VEVENT",
       "SUMMARY:a\n b\n c\nURL:http://x\nSUMMARY:d\nSEQUENCE:0\nSEQUENCE:3\n",
       "SUMMARY:abc\n",
       {"4: URL dropped no-property", "5: SUMMARY dropped replaced",
        "7: SEQUENCE dropped no-property"}},
      {"VEVENT",
       "CATEGORIES:Work,Travel,BIRTHDAY\nCATEGORIES:appointment,Memo\nCLASS:SECRET\nPRIORITY:"
       "high\n",
       "CATEGORIES:TRAVEL;BIRTHDAY\nCATEGORIES:APPOINTMENT\nCLASS:PRIVATE\n",
       {"1: CATEGORIES changed other-parts", "2: CATEGORIES changed other-parts",
        "3: CLASS changed bad-value", "4: PRIORITY dropped bad-value"}},
      {"VTODO",
       "STATUS:IN-PROCESS\nPERCENT-COMPLETE:50\nPRIORITY:5\nCOMPLETED:20200101T100000Z\n",
       "COMPLETED:20200101T100000Z\nPRIORITY:5\nSTATUS:NEEDS ACTION\n",
       {"2: PERCENT-COMPLETE dropped no-property", "1: STATUS changed bad-value"}},
      {"VJOURNAL",
       "DESCRIPTION:a\nDESCRIPTION:b\nSTATUS:FINAL\nCOLOR:Red\n",
       "DESCRIPTION;CHARSET=utf-8;ENCODING=QUOTED-PRINTABLE:a=0Ab\nX-COLOR:Red\n",
       {"3: STATUS dropped bad-value"}},
      {"VEVENT",
       "DTSTART:20200101T100000Z\nRRULE:FREQ=MONTHLY;BYDAY=FR;BYMONTHDAY=13\n"
       "EXDATE:20200102T100000Z\nRDATE:20200102T100000Z\n",
       "DTSTART:20200101T100000Z\n",
       {"4: RDATE dropped no-property", "2: RRULE dropped rule-too-rich",
        "3: EXDATE dropped no-property"}},
      // This program's own rules count only while the others say the same.
      {"VEVENT",
       "DTSTART:20200106T100000Z\nX-PIMVOBJ-RRULE:W1 MO #2 20300101T000000Z\n"
       "RRULE:FREQ=WEEKLY;BYDAY=MO;COUNT=2\nX-PIMVOBJ-XRULE:D7 #1\nEXDATE:20200106T100000Z\n",
       "DTSTART:20200106T100000Z\nRRULE:W1 MO #2 20300101T000000Z\nXRULE:D7 #1\n",
       {}},
      {"VEVENT",
       "DTSTART:20200106T100000Z\nX-PIMVOBJ-RRULE:W1 MO #2 20300101T000000Z\n"
       "RRULE:FREQ=WEEKLY;BYDAY=MO;COUNT=3\nX-PIMVOBJ-XRULE:D7 #1\nEXDATE:20200113T100000Z\n",
       "DTSTART:20200106T100000Z\nRRULE:W1 MO #3\n",
       {"2: X-PIMVOBJ-RRULE dropped replaced", "4: X-PIMVOBJ-XRULE dropped replaced",
        "5: EXDATE dropped no-property"}},
  };
  const ScopedZone zone("UTC");
  for (const DownRow& row : kRows) ExpectDown(row);
}

TEST(ICalendarDown, Alarms) {
  const DownRow kRows[] = {
      {"VEVENT",
       "DTSTART:20200101T100000Z\nDTEND:20200101T120000Z\nBEGIN:VALARM\nACTION:DISPLAY\n"
       "TRIGGER;RELATED=END;VALUE=DURATION:-PT15M\nDESCRIPTION:Go\\; now\nREPEAT:2\n"
       "DURATION:PT1W\nDURATION:PT5M\nEND:VALARM\nBEGIN:VALARM\nACTION:AUDIO\nTRIGGER:PT0S\n"
       "END:VALARM\n",
       "DTSTART:20200101T100000Z\nDTEND:20200101T120000Z\n"
       "AALARM;CHARSET=utf-8;ENCODING=QUOTED-PRINTABLE:20200101T114500Z;;2;Go=3B now\n",
       {"9: DURATION dropped no-property", "8: DURATION dropped bad-value",
        "11: VALARM dropped replaced"}},
      {"VTODO",
       "DUE:20200101T100000Z\nBEGIN:VALARM\nACTION:AUDIO\nTRIGGER;RELATED=END:-P1W\n"
       "ATTACH:x\nEND:VALARM\n",
       "DUE:20200101T100000Z\nAALARM:20191225T100000Z;;;\n",
       {"5: ATTACH dropped no-property"}},
      {"VTODO",
       "BEGIN:VALARM\nACTION:EMAIL\nTRIGGER:-PT5M\nEND:VALARM\nBEGIN:VALARM\nACTION:AUDIO\n"
       "TRIGGER:-PT5M\nEND:VALARM\nBEGIN:VLOCATION\nNAME:x\nEND:VLOCATION\n",
       "",
       {"9: VLOCATION dropped no-property", "1: VALARM dropped type-ignored",
        "5: VALARM dropped bad-value"}},
      {"VEVENT",
       "BEGIN:VALARM\nACTION:audio\nTRIGGER;VALUE=DATE-TIME:20200101T100030Z\nDURATION:P2DT3H\n"
       "REPEAT:4\nEND:VALARM\n",
       "AALARM:20200101T100030Z;P2DT3H;4;\n",
       {"3: TRIGGER changed seconds-dropped"}},
  };
  const ScopedZone zone("UTC");
  for (const DownRow& row : kRows) ExpectDown(row);
}

TEST(ICalendarDown, ZonesThatAreAwaited) {
  ICalendarDown down;
  const std::string event =
      "BEGIN:VEVENT\r\nDTSTART;TZID=Home:20200101T100000\r\nDTEND;TZID=Europe/\r\n Berlin:"
      "20200101T110000\r\nEXDATE;TZID=\"Away, too\":20200101T100000\r\nEND:VEVENT\r\n";
  EXPECT_EQ(down.UnknownZones(event), (std::vector<std::string>{"Away, too", "Home"}));
  down.TakeZone(kBerlin);
  EXPECT_EQ(down.UnknownZones(event), (std::vector<std::string>{"Away, too"}));
}

// Whatever the bytes, there is a text, and soon.
TEST(ICalendarDown, TakesAnyBytes) {
  const auto times = [](const std::string& text, std::size_t count) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i) all += text;
    return all;
  };
  constexpr std::size_t kMany = 20'000;
  const std::string zone = "BEGIN:STANDARD\nDTSTART:16010101T000000\nTZOFFSETFROM:+0100\n";
  const std::string zones[] = {
      "",
      "BEGIN:VTIMEZONE\nTZID:Z\nEND:VTIMEZONE\n",
      // Changes without number, or by more than a day has.
      "BEGIN:VTIMEZONE\nTZID:Z\n" + zone +
          "TZOFFSETTO:+0100\nRRULE:FREQ=SECONDLY\nEND:STANDARD\nEND:VTIMEZONE\n",
      "BEGIN:VTIMEZONE\nTZID:Z\n" +
          times(zone + "TZOFFSETTO:+0200\nRRULE:FREQ=YEARLY;BYDAY=SU,MO,TU\nEND:STANDARD\n", 300) +
          "END:VTIMEZONE\n",
      "BEGIN:VTIMEZONE\nTZID:Z\n" + zone + "TZOFFSETTO:-999999\nEND:STANDARD\nEND:VTIMEZONE\n",
  };
  const std::string head = "BEGIN:VEVENT\nDTSTART;TZID=Z:20200101T100000\n";
  const std::string texts[] = {
      std::string(kMany, '\0'),
      times("BEGIN:VEVENT\n", kMany),
      head + times("BEGIN:VALARM\n", kMany),
      head + "DTEND" + times(";TZID=Z", kMany) + ":20200101T100000\n",
      head + "DTEND;TZID=" + std::string(kMany, '"') + ":20200101T100000\n",
      head + "EXDATE;TZID=Z:" + times("20200101T100000,", kMany) + "\n",
      head + "CATEGORIES:" + times("\xFF\\,,", kMany) + "\n",
      head + "RRULE:FREQ=YEARLY;INTERVAL=-32768;COUNT=-1;BYYEARDAY=" + times("-366,", kMany) + "\n",
      head + "X-PIMVOBJ-RRULE:MD1 " + times("1 ", kMany) + "\nX-PIMVOBJ-XRULE:D0\n",
      head + "RRULE:FREQ=DAILY;COUNT=2000000000\nX-PIMVOBJ-XRULE:D1 #0\n",
      head + "X-PIMVOBJ-AALARM:\rBEGIN:VEVENT;;;\nDURATION:P99999999999D\nPRIORITY:99999999999\n",
      head + "SUMMARY:\xC3\xED\xA0\x80\n \xA9\nSUMMARY\n:\n;\nEND:VEVENT\nSUMMARY:behind\n",
  };
  for (const std::string& each : zones) {
    for (const std::string& text : texts) {
      ICalendarDown down;
      down.TakeZone(each);
      std::string out = "left";
      EXPECT_NO_THROW(down.Convert(
          text, [](const FormatLoss&) {}, out));
      EXPECT_EQ(out.find("left"), std::string::npos);
      const ShownMessages messages;
      CCalendars items;
      EXPECT_EQ(ReadCalendars(out, items).outcome,
                out.empty() ? TextOutcome::NothingBegins : TextOutcome::Read);
      EXPECT_EQ(messages.texts, std::vector<std::u16string>());
    }
  }
}

}  // namespace
}  // namespace pim
