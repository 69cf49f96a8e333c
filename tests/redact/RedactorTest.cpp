// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

#include "formats/redact/Redactor.h"
#include "pim/manager/TextReading.h"
#include "pim/platform/Host.h"
#include "support/Ascii.h"
#include "tests/support/TestTexts.h"

namespace pim {
namespace {

constexpr std::uint64_t kKeys[] = {0, 1, 0x123456789ABCDEF0};

std::string Redacted(std::string_view text, std::uint64_t key = 7, std::size_t size = 4096) {
  std::string redacted;
  Redactor redactor(key, [&redacted](std::string_view piece) { redacted += piece; });
  for (std::size_t at = 0; at < text.size(); at += size) redactor.Append(text.substr(at, size));
  redactor.Finish();
  return redacted;
}

// What a byte of a shape may have become: "9" a digit, "A" a large letter, "a" a small one, "+" a
// digit of base64, "H" one of a capital hexadecimal, "~" any byte; all others stand for themselves.
bool Fits(char shape, char byte) {
  switch (shape) {
    case '9':
      return IsDigit(byte);
    case 'A':
      return byte >= 'A' && byte <= 'Z';
    case 'a':
      return byte >= 'a' && byte <= 'z';
    case '+':
      return IsLetter(byte) || IsDigit(byte) || byte == '+' || byte == '/';
    case 'H':
      return IsDigit(byte) || (byte >= 'A' && byte <= 'F');
    case '~':
      return true;
    default:
      return byte == shape;
  }
}

const struct {
  std::string_view text;   // the value is told apart by the first colon
  std::string_view shape;  // of the value
} kShapes[] = {
    {"N:Smith;Ann 2\r\n", "Aaaaa;Aaa 9\r\n"},
    {"TEL;CELL:+1 (555) 0100,5#\n", "+9 (999) 9999,9#\n"},
    {"item1.EMAIL:a.b@c.example", "a.a@a.aaaaaaa"},
    // Folds, soft breaks and a continued head.
    {"NOTE:one\r\n two\n\tx\n\n", "aaa\r\n aaa\n\ta\n\n"},
    {"NOTE;QUOTED-PRINTABLE:a=\r\nb=3D1=41=\n\r\n", "a=\r\na=3D9=4H=\n\r\n"},
    {"NOTE;ENCODING=QUOTED-PRINTABLE:=0D=0A=e3=81=82=C3\n", "=0D=0A=e3=8~=~~=C3\n"},
    {"NOTE;QUOTED-PRINTABLE:=GGa=Z\n", "=GGa=Z\n"},
    // Escapes and what no letter is.
    {"NOTE:a\\nb\\,c\\;d: \"e\"\n", "a\\na\\,a\\;a: \"a\"\n"},
    {"NOTE:\xC3\xA9\xE3\x81\x82\xF0\xA0\x80\x80\xF0\x9F\x98\x80\xC2\xA0\n",
     "\xC3~~~~~~~~\xF0\x9F\x98\x80\xC2\xA0\n"},
    {"NOTE:a\xFF\xC3-\xE3\x81\xED\xA0\x80\n", "a\xFF\xC3-\xE3\x81\xED\xA0\x80\n"},  // damaged
    {"NOTE;CHARSET=SHIFT_JIS:\x8E\x52\x81\x40\xB1\n", "~~\x81\x40~\n"},
    // Days, times and rules.
    {"BDAY:1970-01-31\n", "9999-99-99\n"},
    {"BDAY:19700131\n", "99999999\n"},
    {"BDAY:00000000\n", "00000000\n"},
    {"DTSTART:20100105T120000Z\n", "99999999T120000Z\n"},
    {"AALARM:20100105T120000Z;PT5M;2;Wake up\n", "99999999T120000Z;PT5M;2;Aaaa aa\n"},
    {"RRULE:D1 20100110T120000Z\n", "D1 20100110T120000Z\n"},
    {"CATEGORIES:MEETING;SPECIAL OCCASION;My own\n", "MEETING;SPECIAL OCCASION;Aa aaa\n"},
    // Base64 stays as long, with its end.
    {"PHOTO;ENCODING=BASE64:\r\n QUJD\r\n RA==\r\n\r\n", "\r\n ++++\r\n ++==\r\n\r\n"},
    {"KEY;BASE64:QU*JD\n\n", "++*++\n\n"},
    {"NOTE;BASE64:QW4g\n\n", "+++g\n\n"},  // a text: its blank stays
    {"VERSION:2.1\n", "2.1\n"},
    {"TZ:-05\n", "-05\n"},
};

TEST(Redactor, ShapesStay) {
  for (const auto& row : kShapes) {
    SCOPED_TRACE(row.text);
    const std::size_t value = row.text.find(':') + 1;
    for (const std::uint64_t key : kKeys) {
      const std::string redacted = Redacted(row.text, key);
      ASSERT_EQ(redacted.size(), row.text.size());
      EXPECT_EQ(redacted.substr(0, value), row.text.substr(0, value));
      for (std::size_t i = 0; i < row.shape.size(); ++i)
        EXPECT_TRUE(Fits(row.shape[i], redacted[value + i])) << i << " " << redacted;
      for (const std::size_t size : {1U, 2U, 3U, 7U})
        EXPECT_EQ(Redacted(row.text, key, size), redacted);
    }
  }
}

// A sequence of UTF-8 becomes one of the same length and script.
TEST(Redactor, Scripts) {
  const struct {
    std::string_view letter;
    std::string_view first;
    std::string_view last;
  } kRows[] = {{"é", "ß", "ö"},    {"Ł", "Ā", "ſ"},    {"ж", "а", "џ"},
               {"Ω", "Σ", "Ϋ"},    {"あ", "ぁ", "ゖ"}, {"ア", "ァ", "ヺ"},
               {"山", "一", "龥"}, {"한", "가", "힣"}, {"\U00020000", "\U00020000", "\U0002A6D6"}};
  for (const auto& row : kRows) {
    std::string differs;
    for (std::uint64_t key = 0; key < 20; ++key) {
      const std::string redacted = Redacted("N:" + std::string(row.letter), key).substr(2);
      ASSERT_EQ(redacted.size(), row.letter.size());
      EXPECT_GE(redacted, row.first);  // as bytes they are in the order of the characters
      EXPECT_LE(redacted, row.last);
      if (redacted != row.letter) differs = redacted;
    }
    EXPECT_NE(differs, "") << row.letter;
  }
}

TEST(Redactor, NothingPrivateIsLeft) {
  const std::string text =
      "BEGIN:VCARD\r\nN:Featherstonehaugh;Bartholomew\r\nX-OWN;A=b:Featherstonehaugh\r\n"
      "a line without a colon, Bartholomew\r\nADR:;;Elderberry Lane 12345\r\n"
      "NOTE;ENCODING=QUOTED-PRINTABLE:Feather=\r\nstonehaugh\r\nNOTE;BASE64:QmFydGhvbG9tZXc="
      "\r\n\r\n"
      "END:VCARD\r\n";
  for (const std::uint64_t key : kKeys) {
    const std::string redacted = Redacted(text, key);
    for (const char* word : {"Feather", "stonehaugh", "Bartholomew", "Elderberry", "12345",
                             "without", "QmFydGhvbG9tZXc="})
      EXPECT_EQ(redacted.find(word), std::string::npos) << word;
  }
}

TEST(Redactor, EqualFieldsStayEqual) {
  const auto fieldOf = [](std::string_view line) {
    const std::string redacted = Redacted(line);
    const std::size_t begin = redacted.find_last_of(":;") + 1;
    return redacted.substr(begin, redacted.find_last_not_of("\r\n") + 1 - begin);
  };
  EXPECT_EQ(fieldOf("N:Smith\r\n"), fieldOf("ADR;HOME:;;x;Smith\n"));
  EXPECT_EQ(fieldOf("N:Smith"), fieldOf("NOTE:Smi\r\n th").erase(3, 3));
  // Different ones differ, in whatever letter; so do the same ones under another key.
  const std::string field = "Jonathan Q. 1234";
  std::vector<std::string> others = {fieldOf("N:" + field), Redacted("N:" + field, 8).substr(2)};
  for (std::size_t i = 0; i < field.size(); ++i) {
    std::string other = field;
    if (!IsLetter(other[i]) && !IsDigit(other[i])) continue;
    other[i] = other[i] == 'b' ? 'c' : IsDigit(other[i]) ? '9' : other[i] < 'a' ? 'B' : 'b';
    others.push_back(fieldOf("N:" + other));
  }
  std::ranges::sort(others);
  EXPECT_EQ(std::ranges::adjacent_find(others), others.end());
  // Days stay as far from one another.
  EXPECT_EQ(Redacted("DTSTART:20100301T1\nDTEND:20100301T1").substr(8, 8),
            Redacted("DTSTART:20100301T1\nDTEND:20100301T1").substr(25, 8));
}

// All entries of a text's account, but for what the values say.
std::string AccountOf(std::string_view text) {
  std::string account;
  const TextObserver observer{
      {}, [&account](const AccountEntry& entry) {
        account += std::to_string(entry.first) + "-" + std::to_string(entry.last) + " " +
                   std::to_string(entry.record) + " " + std::string(entry.name) + " " +
                   std::string(NameOf(entry.verdict)) + " " + (entry.same ? "same " : "") +
                   std::to_string(entry.why) + " " + std::to_string(entry.into) + " " +
                   std::string(entry.ignored) + std::string(TextOf(entry.fault)) + "\n";
      }};
  CCalendars items;
  const bool isCard = text.find("BEGIN:VCARD") != std::string_view::npos;
  const TextResult result = isCard ? ReadContacts(
                                         text, [](CContact&) { return true; }, observer)
                                   : ReadCalendars(text, items, observer);
  account += std::to_string(result.records);
  return account;
}

TEST(Redactor, AccountsStay) {
  SetAppDataFolder("/nonexistent");
  SetMessageSink([](std::u16string_view) {});
  std::vector<std::string> texts = TestTexts();
  texts.insert(
      texts.end(),
      {"BEGIN:VCARD\nN:A\nFN:A\nTITLE:\nTITLE:a\nTITLE:a\nN:B;;\nEND:VCARD\n",
       "BEGIN:VCARD\nTEL;TYPE=A,B:1\nX-UNKNOWN:a\nBDAY:x\nBDAY:1970\nNOTE;BASE64:QU*D\n",
       "BEGIN:VCARD\nN;CHARSET=GB2312:\xCD\xF5\nNOTE:\xFF\xFE\nX-GROUP:a\nX-GROUP:a\n\0:b",
       "BEGIN:VEVENT\nDTSTART:nonsense\nRRULE:X\nAALARM:;x\nPRIORITY:9\nDUE:2010\nEND:VEVENT\n"});
  for (const std::string& text : texts) {
    const std::string account = AccountOf(text);
    EXPECT_NE(account, "");
    for (const std::uint64_t key : kKeys) {
      const std::string redacted = Redacted(text, key);
      EXPECT_EQ(AccountOf(redacted), account) << redacted;
      EXPECT_NE(redacted, text);
    }
  }
  SetMessageSink({});
  SetAppDataFolder({});
}

}  // namespace
}  // namespace pim
