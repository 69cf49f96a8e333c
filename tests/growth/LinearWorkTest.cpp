// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>

#include "pim/manager/TextReading.h"
#include "pim/manager/TextWriting.h"
#include "pim/platform/Host.h"
#include "pim/stream/TextRejects.h"
#include "tests/growth/CountedWork.h"

namespace pim {
namespace {

std::string Repeated(std::string_view part, std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) text += part;
  return text;
}

// A text with `count` of something, which would show work that grows faster than the text.
struct Shape {
  const char* name;
  bool isCard;
  std::string_view head;
  std::string_view part;
  std::string_view tail;

  std::string Text(std::size_t count) const {
    const std::string begin = isCard ? "BEGIN:VCARD\r\n" : "BEGIN:VEVENT\r\n";
    return begin + std::string(head) + Repeated(part, count) + std::string(tail) + "\r\n";
  }
};

constexpr Shape kShapes[] = {
    {"cards", true, "", "BEGIN:VCARD\r\nN:a;b\r\nTEL;CELL:1\r\n", ""},
    {"rejected cards", true, "", "END:VCARD\r\nBEGIN:VCARD\r\nTEL;:1\r\nFN:a\r\n", ""},
    {"rejected lines", true, "", "TEL;:1\r\n", ""},
    {"replaced names", true, "", "N:a;b\r\nFN:c\r\nN:\\0\r\n", ""},
    {"replaced titles", true, "", "TITLE:a\r\nTITLE:b\r\n", ""},
    {"the same title", true, "", "TITLE:a\r\n", ""},
    {"dates of a span", false, "", "DTSTART:20100105\r\nDTEND:20100105T240000\r\n", ""},
    {"folds of a value", true, "NOTE:", "\r\n a", ""},
    {"folds of blank lines", true, "NOTE:", "\r\n \r\n", ""},
    {"folds of a header", true, "NOTE;", "\r\n A", ":x"},
    {"parameters", true, "TEL", ";CELL", ":1"},
    {"parameters with values", true, "TEL", ";TYPE=CELL", ":1"},
    {"escapes in a parameter", true, "TEL;A=", "\\;", ":1"},
    {"parts of a name", true, "N:", "a;", ""},
    {"units of an organisation", true, "ORG:", "unit;", ""},
    {"escaped separators", true, "ADR:", "\\;", ""},
    {"backslashes", true, "ORG:", "\\\\", ";"},
    {"soft breaks", true, "NOTE;ENCODING=QUOTED-PRINTABLE:", "=\r\na", ""},
    {"escapes", true, "NOTE;CHARSET=utf-8;ENCODING=QUOTED-PRINTABLE:", "=E3=81=82", ""},
    {"blanks to escape", true, "NOTE:", "   \t", ""},
    {"telephones", true, "", "TEL;CELL:+1 555 0100\r\n", ""},
    {"groups", true, "", "X-GROUP:a\r\n", ""},
    {"base64", true, "PHOTO;BASE64:", "\r\n QUJD", "\r\n"},
    {"lines without a colon", true, "", "junk\r\n", ""},
    {"blank lines", true, "", "\r\n", ""},
    {"items", false, "", "BEGIN:VTODO\r\nSUMMARY:a\r\n", ""},
    {"categories", false, "CATEGORIES:", "MEETING;", ""},
    {"weekdays of a rule", false, "RRULE:W1 ", "MO TU ", ""},
    {"days of a rule", false, "RRULE:YD1 ", "1 366 ", ""},
    {"positions of a rule", false, "RRULE:MP1 ", "1+ 2- ", "MO"},
    {"blanks of a rule", false, "RRULE:D1", " ", "#1"},
    {"fields of an alarm", false, "AALARM:", ";", ""},
    {"fields of daylight", false, "DAYLIGHT:TRUE", ";", ""},
    {"line ends in a text", false, "SUMMARY;ENCODING=QUOTED-PRINTABLE:", "=0D=0A", ""},
};

// Reads the text, with its account and without what is rejected of it, and writes what came of it.
std::uint64_t WorkOf(const Shape& shape, std::size_t count) {
  const std::string text = shape.Text(count);
  AccountTotals totals;
  const TextObserver observer{{}, [&totals](const AccountEntry& entry) { totals.Add(entry); }};
  const std::uint64_t before = WorkSoFar();
  const TextForm form = shape.isCard ? TextForm::VCard : TextForm::VCalendar;
  EXPECT_NE(RejectedPartsOf(text, form).records, 0);
  if (shape.isCard) {
    EXPECT_NE(ReadContacts(
                  text,
                  [](CContact& contact) {
                    WriteContact(contact);
                    return true;
                  },
                  observer)
                  .records,
              0);
  } else {
    CCalendars items;
    EXPECT_NE(ReadCalendars(text, items, observer).records, 0);
    WriteCalendars(items);
  }
  return WorkSoFar() - before;
}

// Ten times the text is ten times the work, and little more where memory grows by doubling.
TEST(LinearWork, ReadingAndWriting) {
  SetAppDataFolder("/nonexistent");
  SetMessageSink([](std::u16string_view) {});
  for (const Shape& shape : kShapes) {
    SCOPED_TRACE(shape.name);
    const std::uint64_t once = WorkOf(shape, 3'000);
    const std::uint64_t tenfold = WorkOf(shape, 30'000);
    EXPECT_GT(once, 3'000U);
    EXPECT_LT(tenfold, once * 11);
  }
  SetMessageSink({});
  SetAppDataFolder({});
}

}  // namespace
}  // namespace pim
