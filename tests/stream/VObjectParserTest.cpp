// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/stream/EventsOf.h"

namespace pim {
namespace {

struct Row {
  std::string_view text;
  std::string_view events;
};

constexpr std::string_view kNul("\0", 1);

constexpr Row kRows[] = {
    // lines and folds
    {"", ""},
    {"FN:abc", "FN\n[abc]\n.\n"},
    {"\r\n\n \nFN:abc\r\n def\r\n", "FN\n[abcdef]\n.\n"},
    {"FN:abc\n  def\n\n\tg", "FN\n[abc defg]\n.\n"},
    // a line of one blank leaves the line before open for whatever comes next
    {"FN:abc\n \nX:1\n", "FN\n[abcX:1]\n.\n"},
    {"FN:abc\n \n def\n", "FN\n[abc def]\n.\n"},
    {"FN:abc\r\n \r\nX:1\r\n", "FN\n[abc]\n.\nX\n[1]\n.\n"},
    {"FN:abc\n\r\n def\n", "FN\n[abc]\n.\n"},  // an empty CR LF line does end it
    {"FN:   abc  \n", "FN\n[abc  ]\n.\n"},
    {"FN: \n  \t abc\n", "FN\n[abc]\n.\n"},
    {"FN:a\rb\r\nX:\r\n", "FN\n[ab]\n.\nX\n.\n"},
    {"JUNK\nX:1", "X\n[1]\n.\n"},
    {":abc", "\n[abc]\n.\n"},
    {"item1. TEL\t:1", "item1.TEL\n[1]\n.\n"},
    {"X\v:\v1\f\n", "X\v\n[\v1\f]\n.\n"},
    {"\xFF\x80:\xE9\xA0", "\xFF\x80\n[\xE9\xA0]\n.\n"},
    // headers
    {"TEL;HOME\r\nX:1\r\n", "TEL;HOMEX\n[1]\n.\n"},
    {"TEL;\r\n\v\f HOME = \r\nX ;A\fB:1", "TEL;HOME=X;AB\n[1]\n.\n"},
    {"TEL;;HOME:1", "TEL;;HOME\n[1]\n.\n"},
    {"TEL;=A:1", "TEL;=A\n[1]\n.\n"},
    {"X;P=a\\;b:1", "X;P=a;b\n[1]\n.\n"},
    {"X;P=a\\\\b:1", "X;P=a\\b\n[1]\n.\n"},
    {"X;P=\\:a", "X;P=\\\n[a]\n.\n"},
    {"X;P=\\a:1", "X;P=\\a\n[1]\n.\n"},
    {"X;P=a\\b;c:1", "X;P=ab;c\n[1]\n.\n"},
    {"X;P=a\\:1", "X;P=a\n[1]\n.\n"},
    {"X;P=a\\ ;b=c;Q:1", "X;P=a;b=c;Q\n[1]\n.\n"},
    {"A:1\nTEL; :1\nB:2", "A\n[1]\n.\nrejected\n"},
    {"TEL;TYPE=:1", "rejected\n"},
    {"TEL;TYPE= ;HOME:1", "rejected\n"},
    // quoted-printable
    {"N;QUOTED-PRINTABLE:a=\r\nb=3D", "N;QUOTED-PRINTABLE\n[ab=3D]\n.\n"},
    {"N;ENCODING=quoted-printable:a=\n b==\nc", "N;ENCODING=quoted-printable\n[abc]\n.\n"},
    {"N;ENCODING=QUOTED-PRINTABLE:a=4\n b=ZZ\n", "N;ENCODING=QUOTED-PRINTABLE\n[ab=ZZ]\n.\n"},
    {"N;QUOTED-PRINTABLE:=\r4\r1\n", "N;QUOTED-PRINTABLE\n[=41]\n.\n"},
    {"N;QUOTED-PRINTABLE:a=", "N;QUOTED-PRINTABLE\n"},
    {"N;QUOTED-PRINTABLE;ENCODING=8BIT:a=\n", "N;QUOTED-PRINTABLE;ENCODING=8BIT\n[a=]\n.\n"},
    {"N;ENCODING=BASE64;ENCODING=7BIT:QQ==", "N;ENCODING=BASE64;ENCODING=7BIT\n[A]\n.\n"},
    {"N;ENCODING=B:QQ==", "N;ENCODING=B\n[QQ==]\n.\n"},
    {"N;X=BASE64:QQ==", "N;X=BASE64\n[QQ==]\n.\n"},
    // base64
    {"P;BASE64:QUJD", "P;BASE64\n[ABC]\n.\n"},
    {"P;BASE64:Q\r\n U I\v=\n", "P;BASE64\n[AB]\n.\n"},
    {"P;BASE64:QQ==QQ=!\r\n\r\n", "P;BASE64\n[AA]\n.\n"},  // behind =, the last is not looked at
    {"P;BASE64:QUI\nX:1", "P;BASE64\n[AB]\n.\nX\n[1]\n.\n"},
    {"P;BASE64:\r\n QUJD\r\n QUJDR\r\n EVG\r\n\r\n", "P;BASE64\n[ABCABCDEF]\n.\n"},
    {"P;BASE64:\nQUJD\nX:1", "P;BASE64\n.\nX\n[1]\n.\n"},
    {"P;BASE64:QUJDQ\nX:1", "P;BASE64\n[ABC]\n.\nX\n[1]\n.\n"},  // no padding helps: not for ever
    {"P;BASE64:QUJDQU\xFF=\nX:1", "P;BASE64\nrejected\n"},
    {"P;BASE64:=QUJ", "P;BASE64\nrejected\n"},
};

TEST(VObjectParser, Events) {
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(EventsOf({row.text}), row.events);
  }
}

// The same events wherever a text is cut, an empty piece included.
TEST(VObjectParser, CutAnywhere) {
  for (const Row& row : kRows) {
    for (std::size_t cut = 0; cut <= row.text.size(); ++cut) {
      SCOPED_TRACE(std::string(row.text) + " cut at " + std::to_string(cut));
      EXPECT_EQ(EventsOf({row.text.substr(0, cut), {}, row.text.substr(cut)}), row.events);
    }
  }
}

// Lines that stand whole between others are taken a shorter way than the same bytes one by one.
TEST(VObjectParser, WholeLinesOrBytes) {
  constexpr std::string_view kMore[] = {
      "sixteen-letters-:1\nsixteen;letters=:2\nfifteen;letter;:3\nA=B;C=D=E;F:4\n",
      "N;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:a=C3=BC=\n=3D\nN;QUOTED-PRINTABLE:=3D==4\n",
      "A:1\r\r\n\r\nB:2\n\n C:3\nD: \r\nE:\r 5\n\x01"
      "F:6\n",
  };
  std::vector<std::string> texts(std::begin(kMore), std::end(kMore));
  for (const Row& row : kRows) texts.emplace_back(row.text);
  texts.push_back("X:" + std::string(127, 'a') + "\nX:" + std::string(129, 'b') + "\nY:1\n");
  for (const std::string& text : texts) {
    SCOPED_TRACE(text);
    const std::string lines =
        "VERSION;OF=LINES:2.1\n" + text + "\nREMARK;BEHIND=IT:long enough\nZ:";
    std::vector<std::string_view> bytes;
    for (std::size_t i = 0; i < lines.size(); ++i)
      bytes.push_back(std::string_view(lines).substr(i, 1));
    EXPECT_EQ(EventsOf({lines}), EventsOf(bytes));
  }
}

// A zero byte ends what a name's reader sees of it; in a value it is a byte like any other. As the
// first digit of an escape it leaves the place open.
TEST(VObjectParser, ZeroBytes) {
  const std::string nul(kNul);
  EXPECT_EQ(EventsOf({"A" + nul + "B:c" + nul + "d"}), "A\n[c" + nul + "d]\n.\n");
  EXPECT_EQ(EventsOf({"N;QUOTED-PRINTABLE:=" + nul + "41"}), "N;QUOTED-PRINTABLE\n[=41]\n.\n");
}

// What hosts may watch: the buffer's steps, and that only a long value's buffer is given back.
TEST(VObjectParser, BufferSteps) {
  static constexpr struct {
    std::size_t length;
    std::int32_t open;
    std::int32_t closed;
  } kLengths[] = {
      {100, 128, 128}, {900, 1024, 1024}, {1024, 1024, 1024}, {1025, 1152, 0}, {2000, 2048, 0}};
  for (const auto& row : kLengths) {
    SCOPED_TRACE(row.length);
    const auto parser = VObjectParser::Create();
    parser->SetDataHandler([](void*, const char*, std::int32_t) {});
    const std::string text = "X:" + std::string(row.length, 'a') + "\n";
    EXPECT_TRUE(parser->Parse(text.data(), static_cast<std::int32_t>(text.size()), false));
    EXPECT_EQ(parser->capacity, row.open);
    EXPECT_TRUE(parser->Parse(nullptr, 0, true));
    EXPECT_EQ(parser->capacity, row.closed);
    EXPECT_EQ(parser->state, ParserState::StateName);
  }
  const auto parser = VObjectParser::Create();  // what isn't decoded needs no room
  parser->SetPropertyHandler([](void*, const char*, const ParserParam*) {});
  parser->SetDataHandler([](void*, const char*, std::int32_t) {});
  const std::string text = "X;BASE64:QUJD" + std::string(2000, ' ') + "QQ==\n\n";
  EXPECT_TRUE(parser->Parse(text.data(), static_cast<std::int32_t>(text.size()), false));
  EXPECT_EQ(parser->capacity, 128);
}

}  // namespace
}  // namespace pim
