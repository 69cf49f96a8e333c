// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "formats/icalendar/Ical.h"
#include "tests/icalendar/Forms.h"
#include "tests/icalendar/OddItems.h"

namespace pim {
namespace {

// The unfolded lines of the item alone, without those that are the same for all.
std::string ItemLinesOf(const std::string& text) {
  std::string lines = ComponentsOf(text).back();
  for (std::size_t at = 0; (at = lines.find("\r\n ")) != std::string::npos;) lines.erase(at, 3);
  std::erase(lines, '\r');
  for (const char* name : {"UID:", "DTSTAMP:"}) {
    const std::size_t at = lines.find(name);
    lines.erase(at, lines.find('\n', at) + 1 - at);
  }
  return lines.substr(lines.find('\n') + 1, lines.rfind("END:") - lines.find('\n') - 1);
}

struct FormRow {
  const char* kind;
  const char* lines;  // of vCalendar 1.0
  const char* form;   // of iCalendar 2.0
  std::vector<std::string> told;
};

void ExpectForm(const FormRow& row) {
  SCOPED_TRACE(row.lines);
  const CCalendars items = ReadAll("BEGIN:" + std::string(row.kind) + "\r\n" + row.lines);
  Told told;
  EXPECT_EQ(ItemLinesOf(ICalendarOf(items[0], told)), row.form);
  EXPECT_EQ(told.lines, row.told);
}

TEST(ICalendarForm, Spans) {
  const FormRow kRows[] = {
      {"VEVENT",
       "DTSTART:20200101T100000Z\nDTEND:20200101T113000Z\nDUE:20200101T113000Z\n",
       "DTSTART:20200101T100000Z\nX-PIMVOBJ-DUE:20200101T113000Z\nDTEND:20200101T113000Z\n",
       {}},
      // DTEND has to be later.
      {"VEVENT",
       "DTSTART:20200101T100000Z\nDTEND:20200101T100000Z\n",
       "DTSTART:20200101T100000Z\nX-PIMVOBJ-DTEND:20200101T100000Z\n",
       {}},
      {"VEVENT",
       "DTSTART:20200101\nDTEND:20200229T240000\n",
       "DTSTART;VALUE=DATE:20200101\nDTEND;VALUE=DATE:20200301\n",
       {}},
      {"VEVENT",
       "DTSTART:20200102\nDTEND:20200101T240000\n",
       "DTSTART;VALUE=DATE:20200102\nX-PIMVOBJ-DTEND:20200101\n",
       {}},
      {"VEVENT",
       "DTSTART:20200230T100000Z\nDTEND:20200101T100000Z\nLAST-MODIFIED:20200230Z\n",
       "DTSTART:20200101T100000Z\nX-PIMVOBJ-DTEND:20200101T100000Z\n",
       {"0: modified_time dropped bad-value", "0: start_time dropped bad-value",
        "0: start_time changed bad-value"}},
      // DUE has to be later than DTSTART, and a day where that is one.
      {"VTODO",
       "DTSTART:20200101T100000Z\nDUE:20200101T110000Z\nDTEND:20200101T120000Z\n",
       "DTSTART:20200101T100000Z\nDUE:20200101T110000Z\nX-PIMVOBJ-DTEND:20200101T120000Z\n"
       "STATUS:NEEDS-ACTION\n",
       {}},
      {"VTODO",
       "DTSTART:20200101T100000Z\nDUE:20200101T100000Z\n",
       "X-PIMVOBJ-DTSTART:20200101T100000Z\nDUE:20200101T100000Z\nSTATUS:NEEDS-ACTION\n",
       {}},
      {"VTODO",
       "DTSTART:20200101T100000Z\nDUE:20200101T100000Z\nRRULE:D1 #0\n",
       "DTSTART:20200101T100000Z\nX-PIMVOBJ-DUE:20200101T100000Z\nRRULE:FREQ=DAILY\n"
       "STATUS:NEEDS-ACTION\n",
       {}},
      {"VTODO",
       "DTSTART:20200101\nDTEND:20200101\nDUE:20200102T150000Z\n",
       "DTSTART;VALUE=DATE:20200101\nDUE;VALUE=DATE:20200103\nX-PIMVOBJ-DTEND:20200101\n"
       "STATUS:NEEDS-ACTION\n",
       {}},
      {"VTODO",
       "DTSTART:20200101\nDTEND:20200101\nDUE:20200102T160000Z\nRRULE:D1 #0\n",
       "DTSTART;VALUE=DATE:20200101\nX-PIMVOBJ-DUE:20200102T160000Z\nX-PIMVOBJ-DTEND:20200101\n"
       "RRULE:FREQ=DAILY\nSTATUS:NEEDS-ACTION\n",
       {}},
      {"VTODO",
       "RRULE:D1 #0\nCOMPLETED:20200101T100000Z\n",
       "COMPLETED:20200101T100000Z\nX-PIMVOBJ-RRULE:D1 #0\nSTATUS:NEEDS-ACTION\n",
       {"0: recurrence changed rule-too-rich"}},
      {"VMEMO",
       "DTSTART:20200101T100000Z\nDTEND:20200101T120000Z\nLOCATION:a,b\nPRIORITY:2\n",
       "DTSTART:20200101T100000Z\nX-PIMVOBJ-DTEND:20200101T120000Z\nX-PIMVOBJ-LOCATION:a,b\n"
       "X-PIMVOBJ-PRIORITY:2\n",
       {}},
      // Days end by the local day.
      {"VEVENT",
       "DTSTART:20200101\nDTEND:20200101\nRRULE:D1 20200105T120000Z\nXRULE:D2 #0\n",
       "DTSTART;VALUE=DATE:20200101\nDTEND;VALUE=DATE:20200102\n"
       "X-PIMVOBJ-RRULE:D1 20200105T120000Z\nRRULE:FREQ=DAILY;UNTIL=20200105\n"
       "X-PIMVOBJ-XRULE:D2 #0\nEXDATE;VALUE=DATE:20200101\nEXDATE;VALUE=DATE:20200103\n"
       "EXDATE;VALUE=DATE:20200105\n",
       {}},
  };
  const ScopedZone zone("JST-9");
  for (const FormRow& row : kRows) ExpectForm(row);
}

TEST(ICalendarForm, Alarms) {
  const std::string start = "DTSTART:20200101T100000Z\n";
  const FormRow kRows[] = {
      {"VEVENT",
       "DTSTART:20200101T100000Z\nAALARM:20191231T100000Z;PT5M;3;Go\\, now\n",
       "DTSTART:20200101T100000Z\nBEGIN:VALARM\nACTION:DISPLAY\nTRIGGER:-P1D\n"
       "DESCRIPTION:Go\\\\\\, now\nDURATION:PT5M\nREPEAT:3\nEND:VALARM\n",
       {}},
      // A snooze without repeats has no place in VALARM.
      {"VEVENT",
       "DTSTART:20200101T100000Z\nAALARM;TYPE=PCM:20150101T100000Z;PT5M\n",
       "DTSTART:20200101T100000Z\nX-PIMVOBJ-AALARM:20150101T100000Z;PT5M;;\n"
       "X-PIMVOBJ-AALARM-FORMAT:TYPE=PCM\nBEGIN:VALARM\nACTION:AUDIO\n"
       "TRIGGER;VALUE=DATE-TIME:20150101T100000Z\nEND:VALARM\n",
       {}},
      {"VTODO",
       "DUE:20200101T100000Z\nAALARM:20200101T100000Z\n",
       "DUE:20200101T100000Z\nSTATUS:NEEDS-ACTION\nBEGIN:VALARM\nACTION:AUDIO\n"
       "TRIGGER;RELATED=END:PT0S\nEND:VALARM\n",
       {}},
      {"VMEMO", "AALARM:20200101T100000Z;;2;a;b\n", "X-PIMVOBJ-AALARM:20200101T100000Z;;2;a\n", {}},
      {"VEVENT",
       "DTSTART:20200101T100000Z\nAALARM:20200230T100000Z;;-1\n",
       "DTSTART:20200101T100000Z\nX-PIMVOBJ-AALARM:;;;\n",
       {"0: reminder.alarm_date dropped bad-value", "0: reminder.repeatCount changed bad-value"}},
  };
  for (const FormRow& row : kRows) ExpectForm(row);
}

// Records of applications hold what no text brings in.
TEST(ICalendarForm, TellsWhatItCantHold) {
  CCalendar item;
  item.calendar_type = 9;
  item.allday = 7;
  item.set_holiday = 2;
  item.class_ = 4;
  item.status = 8;
  item.start_time = Moment(2020, 1, 1, 10, 0, 30);
  item.summary = std::u16string(u"a\0b\rc\xD800", 6);
  item.description = u"x\ry\r\nz";
  item.NewCategory(u"BUSINESS, TRAVEL");
  item.NewCategory(u"MEMO");
  item.zone.tzOffset.SetDateTimeSpan(2, 0, 0, 0);
  item.reminder.alarm_date = Moment(2020, 1, 1, 9, 0, 0);
  item.reminder.alarmType = DESKMATE_IDS::ALARM_OTHER;
  item.reminder.reminderType = 1;
  item.recurrence.data = MakeRecurrenceData(RECUR_WEEKLY);
  item.recurrence.data->interval = 1;
  item.recurrence.data->count = -1;
  static_cast<DaysData&>(*item.recurrence.data).days = {1, 9};
  item.exceptionRule.data = MakeRecurrenceData(RECUR_DAILY);
  item.exceptionRule.data->interval = 40'000;
  Told told;
  EXPECT_EQ(ItemLinesOf(ICalendarOf(item, told)),
            "DTSTART:20200101T100030Z\nX-PIMVOBJ-RRULE:W1 MO #-1\nRRULE:FREQ=WEEKLY;BYDAY=MO\n"
            "X-PIMVOBJ-XRULE:D40000 #0\nSUMMARY:a\xEF\xBF\xBD"
            "b\\nc\xEF\xBF\xBD\n"
            "DESCRIPTION:x\\ny\\n\\nz\nCATEGORIES:BUSINESS  TRAVEL\n"
            "BEGIN:VALARM\nACTION:AUDIO\nTRIGGER:-PT1H30S\nEND:VALARM\n");
  EXPECT_EQ(told.lines,
            (std::vector<std::string>{
                "0: calendar_type changed bad-value", "0: allday changed bad-value",
                "0: recurrence changed bad-value", "0: exceptionRule dropped rule-too-rich",
                "0: summary changed bad-character", "0: description changed line-end",
                "0: categories[0] changed bad-character", "0: categories[1] dropped bad-value",
                "0: class dropped bad-value", "0: status dropped bad-value",
                "0: set_holiday dropped bad-value", "0: zone changed bad-value",
                "0: reminder.reminderType changed type-ignored",
                "0: reminder.alarmType changed type-ignored"}));
}

// A zone stands once, ahead of the first item that has times in it; a repeat keeps to the clock.
TEST(ICalendarForm, Zones) {
  const CCalendars items = ReadAll(
      "BEGIN:VEVENT\nDTSTART:20200101T100000Z\nTZ:+09:00\n"
      "BEGIN:VEVENT\nDTSTART:20200101T100000Z\n"
      "BEGIN:VEVENT\nTZ:-05:00\nDAYLIGHT:TRUE;-04;20200308T070000Z;20201101T060000Z;EST;EDT\n"
      "DTSTART:20200303T010000Z\nDTEND:20200701T010000Z\nRRULE:W1 MO #0\n"
      "BEGIN:VEVENT\nDTSTART:20200101T160000Z\nTZ:+09:00\n");
  const auto form = MakeICalendarForm();
  std::string text;
  Told told;
  form->Begin(text);
  for (std::int32_t i = 0; i < items.GetCount(); ++i) form->Append(items[i], told.Tell(), text);
  form->End(text);
  EXPECT_EQ(told.lines, std::vector<std::string>());
  const std::vector<std::string> parts = ComponentsOf(text);
  ASSERT_EQ(parts.size(), 6U);
  EXPECT_NE(parts[0].find("TZID:UTC+0900\r\n"), std::string::npos) << parts[0];
  EXPECT_NE(parts[1].find("DTSTART;TZID=UTC+0900:20200101T190000\r\n"), std::string::npos)
      << parts[1];
  EXPECT_NE(parts[2].find("DTSTART:20200101T100000Z\r\n"), std::string::npos) << parts[2];
  EXPECT_NE(parts[3].find("BEGIN:DAYLIGHT\r\nRRULE:FREQ=YEARLY;BYDAY=2SU;BYMONTH=3\r\n"
                          "DTSTART:20200308T020000\r\nTZOFFSETFROM:-0500\r\nTZOFFSETTO:-0400\r\n"
                          "TZNAME:EDT\r\nEND:DAYLIGHT\r\n"),
            std::string::npos)
      << parts[3];
  EXPECT_NE(parts[4].find(":20200302T200000\r\n"), std::string::npos) << parts[4];
  EXPECT_NE(parts[4].find(":20200630T210000\r\n"), std::string::npos) << parts[4];
  EXPECT_NE(parts[5].find(":20200102T010000\r\n"), std::string::npos) << parts[5];
}

// A text without zones has rules by the machine's clock, whose days are others in UTC.
TEST(ICalendarForm, LocalRules) {
  static constexpr struct {
    const char* zone;
    const char* lines;
    const char* start;
  } kRows[] = {
      {"JST-9", "DTSTART:20200106T080000\nRRULE:W1 MO #0",
       "DTSTART;TZID=UTC+0900:20200106T080000\r\n"},
      {"JST-9", "DTSTART:20200106T120000\nRRULE:W1 MO #0", "DTSTART:20200106T030000Z\r\n"},
      {"JST-9", "DTSTART:20200106T080000\nRRULE:W1 FR #0", "DTSTART:20200105T230000Z\r\n"},
      {"JST-9", "DTSTART:20200106T080000", "DTSTART:20200105T230000Z\r\n"},
      {"UTC", "DTSTART:20200106T080000\nRRULE:W1 MO #0", "DTSTART:20200106T080000Z\r\n"},
      // A day that begins at one o'clock.
      {"<-04>4<-03>,M9.1.6/24,M4.1.6/24", "DTSTART:20260906T000000\nDTEND:20260906T240000",
       "DTSTART;VALUE=DATE:20260906\r\nDTEND;VALUE=DATE:20260907\r\n"},
      {"EST5EDT,M3.2.0,M11.1.0", "DTSTART:20200706T220000\nRRULE:MD1 6 #0",
       "DTSTART;TZID=UTC-0500-0400:20200706T220000\r\n"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.lines);
    const ScopedZone zone(row.zone);
    Told told;
    EXPECT_NE(ICalendarOf(ReadItem(row.lines), told).find(row.start), std::string::npos)
        << ICalendarOf(ReadItem(row.lines), told);
  }
}

// libical finds no fault with any text, no line is too long, and the same items give it again.
TEST(ICalendarForm, IsGoodText) {
  const ScopedZone zone("EST5EDT,M3.2.0,M11.1.0");
  const CCalendars items = ReadAll(OddCalendar(11, 200));
  for (std::int32_t i = 0; i < items.GetCount(); ++i) {
    Told told;
    const std::string text = ICalendarOf(items[i], told);
    SCOPED_TRACE(text);
    EXPECT_EQ(text, ICalendarOf(items[i], told));
    const IcalOwner<icalcomponent> frame(icalcomponent_new_from_string(text.c_str()));
    ASSERT_NE(frame, nullptr);
    EXPECT_EQ(icalcomponent_count_errors(frame.get()), 0);
    EXPECT_NE(icalrestriction_check(frame.get()), 0);
    EXPECT_EQ(icalcomponent_count_errors(frame.get()), 0);
    for (std::string_view rest = text; !rest.empty();) {
      const std::size_t size = rest.find("\r\n");
      ASSERT_LE(size, 75U);
      rest.remove_prefix(size + 2);
    }
  }
}

}  // namespace
}  // namespace pim
