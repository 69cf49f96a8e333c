// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>

#include "formats/charsets/CharsetGuess.h"
#include "formats/charsets/CharsetLines.h"
#include "formats/prepare/Preparer.h"
#include "formats/prepare/TextGroups.h"
#include "formats/redact/Redactor.h"
#include "tests/growth/CountedWork.h"

namespace pim {
namespace {

// What a text has many of; a "#" is the number of the part.
struct FilteredShape {
  const char* name;
  std::string_view head;
  std::string_view part;
  std::string_view tail = {};
  std::string_view further = {};  // parts behind those
  std::size_t fewest = 3'000;

  std::string Text(std::size_t count) const {
    std::string text(head);
    for (const std::string_view one : {part, further}) {
      const std::size_t mark = one.find('#');
      for (std::size_t i = 0; i < count; ++i) {
        text += one.substr(0, mark);
        if (mark == std::string_view::npos) continue;
        text.append(std::to_string(1'000'000 + i)).append(one.substr(mark + 1));
      }
    }
    return text.append(tail);
  }
};

constexpr std::string_view kFrame = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\n";
constexpr std::string_view kOldFrame = "BEGIN:VCALENDAR\r\nVERSION:1.0\r\nTZ:-05\r\n";
constexpr std::string_view kUtf16 =
    "\xFF\xFE"
    "B\0";

constexpr FilteredShape kShapes[] = {
    {"cards without an end", "", "BEGIN:VCARD\r\nN:a\r\n", ""},
    {"items without an end", kFrame, "BEGIN:VEVENT\r\nSUMMARY:a\r\n", ""},
    {"calendars without an end", "", kFrame, ""},
    {"joined frames", "BEGIN:VCARD\r\n", "END:VCARDBEGIN:VCARD\r\n", ""},
    {"one line", "NOTE:", "aaaaaaaaaaaaaaaaaaaaaaaaa", ""},
    {"one line of a record", "BEGIN:VCARD\r\nNOTE:", "aaaaaaaaaaaaaaaaaaaaaaaaa", ""},
    {"one line of joined words", "END:VCARD", "BEGIN:VCARD", ""},
    {"one record", "BEGIN:VCARD\r\n", "NOTE:aaaaaaaaaaaaaaaaaaaa\r\n", ""},
    {"one record behind another", "BEGIN:VCARD\r\nEND:VCARD\r\nBEGIN:VCARD\r\n", "NOTE:a\r\n", ""},
    {"returns", "", "\r\r\r\r\r\r\r\r\r", ""},
    {"returns among line feeds", "a\n", "\r\r\r\r\r\r\r\r\r", "\n"},
    {"returns ahead of letters", "a\n", "\raaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa", "\n"},
    {"nul characters", "", std::string_view("a\0\r", 3), ""},
    {"units of two bytes", kUtf16,
     std::string_view("\0\xD8\0\xDC"
                      "a\0\n\0",
                      8),
     ""},
    {"agents inside one another", "BEGIN:VCARD\r\nVERSION:3.0\r\n", "AGENT:\r\nBEGIN:VCARD\r\n",
     ""},
    {"agents without an end", "BEGIN:VCARD\r\nVERSION:3.0\r\n", "AGENT:\r\nBEGIN:VCARD\r\n",
     "BEGIN:VCARD\r\nEND:VCARD\r\n"},
    {"prefixes", "BEGIN:VCARD\r\n", "i#.TEL:1\r\ni#.X-ABLabel:Home\r\n", ""},
    {"labels of one prefix", "BEGIN:VCARD\r\ni.TEL:1\r\n", "i.X-ABLabel:Home\r\n", ""},
    {"labels of today", "BEGIN:VCARD\r\nVERSION:3.0\r\ni.TEL:1\r\n", "i.X-ABLabel:Home\r\n", ""},
    {"types of one list", "BEGIN:VCARD\r\nTEL;TYPE=A", ",HOME", ":1\r\n"},
    {"parameters", "BEGIN:VCARD\r\nADR", ";TYPE=HOME;X=\"a,b\"", ":1\r\n"},
    {"parameters in lines", "BEGIN:VCARD\r\nTEL;TYPE=\"A\"", ";TYPE=A,\r\n B", ":1\r\n"},
    {"folds of a head", "BEGIN:VCARD\r\nTEL;", "\r\n A;", ":1\r\n"},
    {"charsets of a line", "BEGIN:VCARD\r\nN;CHARSET=BIG5", ";CHARSET=EUC-KR", ":\xB1\xE8\r\n"},
    {"bytes of a charset", "BEGIN:VCARD\r\nN;CHARSET=EUC-KR:", "\xB1\xE8", "\r\n"},
    {"escapes of a charset", "BEGIN:VCARD\r\nN;CHARSET=EUC-KR;QUOTED-PRINTABLE:", "=B1=\r\n=E8",
     ""},
    {"lines of base64", "BEGIN:VCARD\r\nPHOTO;BASE64:\r\n", "QUJD\r\n", ""},
    {"properties of today", "BEGIN:VCARD\r\nVERSION:4.0\r\n", "i#.EMAIL;PREF=1:a\\nb\r\n", ""},
    {"alarms of an item", "BEGIN:VEVENT\r\n", "DALARM:\r\nDALARM:a\r\n", ""},
    {"local times", kOldFrame, "BEGIN:VTODO\r\nDUE:20100105T120000\r\n", ""},
    {"daylight", kOldFrame,
     "DAYLIGHT:TRUE;-04;20100404T020000;20101031T020000\r\n"
     "BEGIN:VTODO\r\nDUE:20200105T120000\r\nEND:VTODO\r\n",
     ""},
    {"items of today", kFrame, "BEGIN:VEVENT\r\nDTSTART:20100105T120000Z\r\nEND:VEVENT\r\n", ""},
    {"items that wait for a zone", kFrame,
     "BEGIN:VEVENT\r\nDTSTART;TZID=Z:20100105T120000\r\nEND:VEVENT\r\n", "", "", 10'000},
    {"items that wait for zones", kFrame,
     "BEGIN:VEVENT\r\nDTSTART;TZID=Z#:20100105T120000\r\nEND:VEVENT\r\n", "",
     "BEGIN:VTIMEZONE\r\nTZID:Z#\r\nEND:VTIMEZONE\r\n"},
    {"groups and cards of one member", "",
     "BEGIN:VCARD\r\nVERSION:4.0\r\nKIND:group\r\nFN:#\r\nMEMBER:a\r\nEND:VCARD\r\n", "",
     "BEGIN:VCARD\r\nVERSION:4.0\r\nUID:a\r\nEND:VCARD\r\n"},
    {"zones that a long item doesn't wait for",
     "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nBEGIN:VEVENT\r\n", "DTSTART;TZID=Z#:20100105T120000\r\n",
     "", "END:VEVENT\r\nBEGIN:VTIMEZONE\r\nTZID:Z\r\nEND:VTIMEZONE\r\n"},
};

// The text in pieces of one size, as a program reads it.
void ForEachPiece(std::string_view text, const std::function<void(std::string_view)>& take) {
  constexpr std::size_t kPiece = 512;
  for (std::size_t at = 0; at < text.size(); at += kPiece) take(text.substr(at, kPiece));
}

void PrepareText(std::string_view text) {
  std::size_t told = 0;
  const PrepareObserver observer = {[&told](const PrepareNote&) { ++told; },
                                    [&told](std::int64_t, const FormatLoss&) { ++told; }};
  GroupBook groups;
  Preparer preparer(
      kAllPrepareSteps, observer, [](const PreparedPiece&) {},
      [&] {
        groups =
            GroupsOfText([text](const auto& take) { ForEachPiece(text, take); }, kAllPrepareSteps);
        return &groups;
      });
  ForEachPiece(text, [&preparer](std::string_view piece) {
    std::ranges::copy(piece, preparer.Room(piece.size()));
    preparer.Took(piece.size());
  });
  preparer.Finish();
}

void RedactText(std::string_view text) {
  Redactor redactor(1, [](std::string_view) {});
  ForEachPiece(text, [&redactor](std::string_view piece) { redactor.Append(piece); });
  redactor.Finish();
}

void GuessCharset(std::string_view text) {
  CharsetGuess guess;
  CharsetLines lines([&guess](const DamagedLine& line) { guess.Take(line.bytes, true); });
  ForEachPiece(text, [&lines](std::string_view piece) { lines.Append(piece); });
  lines.Finish();
}

constexpr struct {
  const char* name;
  void (*run)(std::string_view text);
} kFilters[] = {{"prepare", PrepareText}, {"redact", RedactText}, {"charsets", GuessCharset}};

TEST(LinearWork, Filters) {
  for (const FilteredShape& shape : kShapes) {
    const std::string few = shape.Text(shape.fewest);
    const std::string many = shape.Text(10 * shape.fewest);
    for (const auto& filter : kFilters) {
      SCOPED_TRACE(std::string(filter.name) + ": " + shape.name);
      const std::uint64_t start = WorkSoFar();
      filter.run(few);
      const std::uint64_t once = WorkSoFar() - start;
      filter.run(many);
      const std::uint64_t tenfold = WorkSoFar() - start - once;
      EXPECT_GT(once, few.size() / 2);
      EXPECT_LT(tenfold, once * 11);
    }
  }
}

}  // namespace
}  // namespace pim
