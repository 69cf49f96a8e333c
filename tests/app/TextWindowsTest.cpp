// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>

#include "app/input/PreparedText.h"
#include "app/input/TextReading.h"
#include "app/input/TextWindows.h"
#include "app/output/RecordDump.h"

namespace pim::app {
namespace {

// Gives a text in pieces of that size.
class PieceSource final : public ByteSource {
 public:
  PieceSource(std::string_view text, std::size_t size) : text_(text), size_(size) {}
  std::size_t Read(char* to, std::size_t room) override {
    const std::size_t count = std::min({room, size_, text_.size()});
    std::ranges::copy(text_.substr(0, count), to);
    text_.remove_prefix(count);
    return count;
  }

 private:
  std::string_view text_;
  std::size_t size_;
};

template <class Record>
std::vector<std::string> Dumps(NarrowStringView text) {
  std::vector<std::string> dumps;
  RecordJson dump;
  const std::function<void(Record&)> take = [&](const Record& record) {
    dumps.emplace_back(dump.Text(record));
  };
  static_cast<void>(ReadText(text, take));
  return dumps;
}

// The stretches of a text are the text, tell where they stand, and read as it does.
template <class Record>
void ExpectSame(const std::string& text, TextForm form, std::size_t atLeast) {
  PieceSource source(text, 70001);
  TextWindows windows(source, form);
  std::string joined;
  std::vector<std::string> dumps;
  std::size_t count = 0;
  for (; windows.Next(); ++count) {
    EXPECT_EQ(windows.isFirst(), count == 0);
    EXPECT_EQ(windows.linesAhead(), std::ranges::count(joined, '\n'));
    joined += windows.text();
    EXPECT_EQ(windows.isLast(), joined.size() == text.size());
    std::ranges::move(Dumps<Record>(windows.text()), std::back_inserter(dumps));
  }
  EXPECT_GE(count, atLeast);
  EXPECT_TRUE(joined == text);
  EXPECT_TRUE(dumps == Dumps<Record>(text));
}

std::string Repeated(const std::string& text, std::size_t size) {
  std::string all;
  while (all.size() < size) all += text;
  return all;
}

constexpr std::size_t kLong = std::size_t{5} << 19;  // two and a half stretches

TEST(TextWindows, ReadAsTheWhole) {
  const std::string card = "BEGIN:VCARD\r\nN:Lee;Ann\r\nTEL:1\r\nEND:VCARD\r\n";
  const std::string long64 =
      "BEGIN:VCARD\r\nNOTE;ENCODING=QUOTED-PRINTABLE:" + Repeated("=41", kLong) +
      "\r\nEND:VCARD\r\n";
  // What begins a record in the readers' eyes, and what only looks so.
  const std::string odd =
      "BEGIN:VC\nN:B\nNOTE;QUOTED-PRINTABLE:x=\nBEGIN:VCARD\nTEL;TYPE=\nBEGIN:VCARD\nFN:c\n"
      "END:VCARD\nTITLE:behind\n\n";
  ExpectSame<CContact>("", TextForm::VCard, 1);
  ExpectSame<CContact>("no card\n", TextForm::VCard, 1);
  ExpectSame<CContact>("\xEF\xBB\xBF" + Repeated(card, kLong), TextForm::VCard, 3);
  ExpectSame<CContact>(Repeated(odd, kLong), TextForm::VCard, 3);
  ExpectSame<CContact>(card + long64 + card + card, TextForm::VCard, 2);
  ExpectSame<CCalendar>("BEGIN:VCALENDAR\r\nVERSION:1.0\r\n" +
                            Repeated("BEGIN:VEVENT\r\nDTSTART:20100105\r\nDTEND:20100105\r\n"
                                     "END:VEVENT\r\nBEGIN:VTODO\r\nDUE:20100105T120000Z\r\n"
                                     "END:VTODO\r\n",
                                     kLong) +
                            "END:VCALENDAR\r\n",
                        TextForm::VCalendar, 3);
}

// A text that is rejected is so in the stretch that holds the line, whatever stands behind.
TEST(TextWindows, RejectedWhereTheWholeIs) {
  const std::string card = "BEGIN:VCARD\r\nN:Lee;Ann\r\nEND:VCARD\r\n";
  const std::string ahead = Repeated(card, kLong);
  const std::string text = ahead + "BEGIN:VCARD\r\nTEL;:1\r\nEND:VCARD\r\n" + card;
  PieceSource source(text, 4096);
  TextWindows windows(source, TextForm::VCard);
  const std::function<void(CContact&)> take = [](CContact&) {};
  Outcome outcome;
  while (outcome.result.outcome != TextOutcome::Rejected && windows.Next())
    outcome = ReadText(windows.text(), take);
  EXPECT_EQ(outcome.result.outcome, TextOutcome::Rejected);
  EXPECT_EQ(windows.linesAhead() + outcome.result.line, std::ranges::count(ahead, '\n') + 2);
}

// Lines of a prepared text, by those of the file.
TEST(PreparedText, KnowsTheLinesOfTheFile) {
  const std::string text =
      "BEGIN:VCARD\r\nN:a\r\nEND:VCARD\r\n"                                        // 1 to 3
      "BEGIN:VCARD\r\nVERSION:3.0\r\nFN:b\r\nX-A:b\r\n c\r\nN:b\r\nEND:VCARD\r\n"  // to 10
      "BEGIN:VCARD\r\nN:c\r\nBEGIN:VCARD\r\nN:d\r\nEND:VCARD\r\n";                 // to 15
  const PreparedText prepared(text, kAllPrepareSteps, {});
  std::vector<std::int64_t> origins;
  const auto lines = std::ranges::count(prepared.text(), '\n');
  for (std::int64_t line = 1; line <= lines; ++line) origins.push_back(prepared.Original(line));
  ASSERT_EQ(lines, 15) << prepared.text();
  EXPECT_EQ(origins.front(), 1);
  EXPECT_EQ(origins[2], 3);
  EXPECT_EQ(origins[3], 4);                                     // of the card that was made anew
  EXPECT_EQ(origins[static_cast<std::size_t>(lines) - 7], 10);  // its last one
  EXPECT_EQ(origins[static_cast<std::size_t>(lines) - 6], 11);
  EXPECT_EQ(origins.back(), 15);
  EXPECT_TRUE(std::ranges::is_sorted(origins));
}

}  // namespace
}  // namespace pim::app
