// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "pim/manager/LabelKeys.h"
#include "pim/manager/VObjectMgr.h"
#include "pim/platform/Host.h"
#include "platform/CodePages.h"

namespace pim {
namespace {

// A manager whose word for each key is the key without its prefix.
VObjectMgr& Fed() {
  static VObjectMgr* const manager = [] {
    auto* fed = new VObjectMgr;
    for (const LabelKey& row : kLabelKeys) {
      const WideStringView key = row.key;
      fed->MakeMapString(WideString(key), WideString(key.substr(key.find(u'_') + 1)));
    }
    return fed;
  }();
  return *manager;
}

std::string Rendered(const std::string& text) {
  return Utf8FromWide(Fed().VObjectToString(WideFromUtf8(text)));
}

std::string Event(const std::string& lines) {
  return Rendered("BEGIN:VCALENDAR\nBEGIN:VEVENT\n" + lines + "\nEND:VEVENT\nEND:VCALENDAR");
}

// The line behind a label.
std::string ValueOf(const std::string& rendering, const std::string& label) {
  const std::size_t at = rendering.find("\n" + label + ":\n");
  if (at == std::string::npos) return "no " + label;
  const std::size_t from = at + label.size() + 3;
  return rendering.substr(from, rendering.find('\n', from) - from);
}

TEST(Rendering, LabelMap) {
  VObjectMgr manager;
  EXPECT_EQ(manager.GetString(u"a"), u"");
  manager.MakeMapString(u"a", u"first");
  manager.MakeMapString(u"a", u"second");
  manager.MakeMapString(u"A", u"other");
  EXPECT_EQ(manager.GetString(u"a"), u"first");
  EXPECT_EQ(manager.GetString(u"A"), u"other");
}

TEST(Rendering, Dispatch) {
  static constexpr struct {
    const char* text;
    const char* rendering;
  } kRows[] = {
      {"", ""},
      {"BEGIN:VCAR", "BEGIN:VCAR"},
      {" BEGIN:VCARD", " BEGIN:VCARD"},
      {"BEGIN:VEVENT\nSUMMARY:a", "BEGIN:VEVENT\nSUMMARY:a"},
      {"begin:vcard\nN:Lee;Ann", "vCard\n\nName:\nAnn Lee\n"},
      {"BEGIN:VCARD ", ""},
      {"BEGIN:VCALENDAR\nEND:VCALENDAR", ""},
      {"Begin:vTodo", "vTodo\n\nDate\n\nPriority:\n\nNotes:\n\n"},
  };
  for (const auto& row : kRows) EXPECT_EQ(Rendered(row.text), row.rendering) << row.text;
  SetMessageSink([](std::u16string_view) {});
  EXPECT_THROW(Rendered("BEGIN:VCARD\nTEL;:1"), ParseFailure);
  EXPECT_THROW(Rendered("BEGIN:VCALENDAR\nX;=1;Y=:1"), ParseFailure);
  SetMessageSink({});
}

TEST(Rendering, Cards) {
  EXPECT_EQ(
      Rendered("BEGIN:VCARD\nN:Lee;Ann\nTEL:555-0100\nTEL;HOME:555-0123\nEMAIL:a@b\n"
               "BEGIN:VCARD\nN:Other"),
      "vCard\n\nName:\nAnn Lee\nNumber #0:\n555-0100\nNumber #1:\n555-0123\nEmail #0:\na@b\n");
  EXPECT_EQ(Rendered("BEGIN:VCARD\n"), "vCard\n\nName:\n \n");
  EXPECT_EQ(VObjectMgr().VCardToString(u"BEGIN:VCARD\nEMAIL:a@b\n"), u"\n\n:\n \n #0:\na@b\n");
  EXPECT_EQ(ValueOf(Rendered("BEGIN:VCARD\nN:\xE8\x97\xA4"), "Name"), " \xE8\x97\xA4");
}

TEST(Rendering, Events) {
  EXPECT_EQ(Event("SUMMARY:Budget review\nLOCATION:Room 4\nDTSTART:20100305T113000Z\n"
                  "DTEND:20100305T123000Z\nAALARM:20100305T111500Z;;;\nCATEGORIES:APPOINTMENT\n"
                  "RRULE:W1 FR 20100326T113000Z\nDESCRIPTION:not shown"),
            "vCalendar\n\nStart_date:\n05/03/2010\nEnd_date:\n05/03/2010\nCategory:\nAppointment\n"
            "Time:\n11:30 ~ 12:30\nSubject:\nBudget review\nLocation:\nRoom 4\nAlarm:\n"
            "15 mins_before\nRepeat:\nWeekly\nExpiration:\n26/03/2010\n");
  EXPECT_EQ(Event(""),
            "vCalendar\n\nStart_date:\n\nEnd_date:\n\nCategory:\n\nTime:\n ~ \nSubject:\n\n"
            "Location:\n\nAlarm:\nNo_alarm\nRepeat:\nOnce\nExpiration:\nNo_expiration\n");
  static constexpr struct {
    const char* line;
    const char* label;
    const char* value;
  } kRows[] = {
      {"CATEGORIES:ANNIVERSARY", "Category", "Anniversary"},
      {"CATEGORIES:BIRTHDAY", "Category", "Birthday"},
      {"CATEGORIES:APPOINTMENT;ANNIVERSARY", "Category", ""},
      {"RRULE:D1 #0", "Repeat", "Daily"},
      {"RRULE:MP1 1+ MO #0", "Repeat", "Monthly"},
      {"RRULE:MD1 1 #0", "Repeat", "Monthly"},
      {"RRULE:YM1 1 #0", "Repeat", "Yearly"},
      {"RRULE:YD1 1 #5", "Repeat", "Yearly"},
      {"RRULE:YD1 1 #5", "Expiration", "No_expiration"},
      {"DTSTART:20100230T000000Z", "Start_date", ""},
      {"AALARM:20100305T111500Z;;;", "Alarm", "0 mins_before"},
  };
  for (const auto& row : kRows)
    EXPECT_EQ(ValueOf(Event(row.line), row.label), row.value) << row.line;
}

TEST(Rendering, Todos) {
  static constexpr struct {
    const char* lines;
    const char* date;
    const char* priority;
  } kRows[] = {{"DUE:20100305T113000Z\nPRIORITY:1", "05/03/2010", "High"},
               {"PRIORITY:2", "", "Medium"},
               {"PRIORITY:3", "", "Low"},
               {"PRIORITY:4\nDTSTART:20100305T113000Z", "", ""}};
  for (const auto& row : kRows)
    EXPECT_EQ(Rendered(std::string("BEGIN:VTODO\nSUMMARY:s\n") + row.lines),
              std::string("vTodo\n\nDate\n") + row.date + "\nPriority:\n" + row.priority +
                  "\nNotes:\n\n");
  EXPECT_EQ(ValueOf(Rendered("BEGIN:VCALENDAR\nBEGIN:VTODO\nDUE:20100305T113000Z"), "Start_date"),
            "");
}

}  // namespace
}  // namespace pim
