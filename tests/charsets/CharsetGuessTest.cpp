// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>

#include "formats/charsets/CharsetGuess.h"
#include "formats/charsets/CharsetLines.h"

namespace pim {
namespace {

std::string InCharset(std::string_view text, const char* charset) {
  Iconv converter(charset, "UTF-8");
  std::string bytes(4 * text.size() + 8, '\0');
  const char* from = text.data();
  std::size_t fromSize = text.size();
  char* to = bytes.data();
  std::size_t room = bytes.size();
  EXPECT_EQ(converter.Convert(from, fromSize, to, room), Iconv::Outcome::Done) << text << charset;
  bytes.resize(bytes.size() - room);
  return bytes;
}

// Names and texts as people keep them. Each row is a file of its own.
const struct {
  const char* charset;
  std::vector<std::string_view> texts;
} kRows[] = {
    {"CP1252", {"Müller;Jörg", "Françoise Lefèvre", "José Muñoz", "Straße 5"}},
    {"CP1252", {"Søren Ångström", "Bjørk Guðmundsdóttir", "Århus"}},
    {"CP1252", {"Rufen Sie mich bitte vor zwölf Uhr zurück, es wäre dringend"}},
    {"CP1252", {"à bientôt, j’espère – le café “Zoé” est fermé"}},
    {"ISO-8859-2", {"Wałęsa;Lech", "Małgorzata Śliwińska", "Łódź"}},
    {"ISO-8859-2", {"Dvořák;Antonín", "Jiří Novotný", "Plzeň, Náměstí Míru 5"}},
    {"ISO-8859-2", {"Proszę zadzwonić później, będę w domu dopiero wieczorem"}},
    {"ISO-8859-2", {"Erdős;Pál", "Szűcs Gergő", "Győr"}},
    {"CP1251", {"Иванов;Пётр", "Наталья Соколова", "Москва, ул. Ленина 5"}},
    {"CP1251", {"Позвоните мне завтра утром, пожалуйста"}},
    {"KOI8-R", {"Иванов;Пётр", "Наталья Соколова", "Москва, ул. Ленина 5"}},
    {"KOI8-R", {"Позвоните мне завтра утром, пожалуйста"}},
    {"CP932", {"山田;太郎", "やまだ;たろう", "東京都千代田区"}},
    {"CP932", {"来週の会議は三時からです。よろしくお願いします。"}},
    {"CP932", {"ヤマダ;タロウ", "鈴木 一郎"}},
    {"EUC-JP", {"山田;太郎", "やまだ;たろう", "東京都千代田区"}},
    {"EUC-JP", {"来週の会議は三時からです。よろしくお願いします。"}},
    {"EUC-KR", {"김;철수", "이영희", "서울특별시 강남구"}},
    {"EUC-KR", {"내일 아침에 전화해 주세요. 감사합니다."}},
    {"GB18030", {"王;小明", "李华", "北京市海淀区中关村"}},
    {"GB18030", {"请明天早上给我打电话，谢谢你的帮助。"}},
    {"BIG5", {"王;小明", "陳美玲", "台北市中正區"}},
    {"BIG5", {"請明天早上打電話給我，謝謝你的幫忙。"}},
};

TEST(CharsetGuess, LikeliestStandsFirst) {
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.texts.front());
    CharsetGuess guess;
    for (const std::string_view text : row.texts) {
      const std::string bytes = InCharset(text, row.charset);
      const CharsetGuess::Readings readings = guess.Take(bytes, true);
      const auto at = static_cast<std::size_t>(
          std::ranges::find(kLikelyCharsets, std::string_view(row.charset)) - kLikelyCharsets);
      EXPECT_EQ(readings[at], text);
    }
    const std::vector<std::size_t> ranks = guess.Ranks();
    EXPECT_STREQ(kLikelyCharsets[ranks.front()], row.charset);
    EXPECT_EQ(ranks.size(), kLikelyCount);
  }
}

TEST(CharsetGuess, WhatIsNoTextComesLast) {
  CharsetGuess guess;
  EXPECT_FALSE(guess.Take("\xFF\xFF", true)[4].has_value());
  EXPECT_TRUE(guess.Take(std::string(1000, '\xFF'), false)[0].has_value());  // isn't counted
  const std::vector<std::size_t> ranks = guess.Ranks();
  EXPECT_LT(ranks.front(), 4U);
  EXPECT_GE(ranks.back(), 4U);
}

TEST(CharsetLines, FindsThem) {
  const struct {
    std::string_view text;
    std::string_view expected;  // "first-last name bytes", with ! where the line names its charset
  } kTexts[] = {
      {"BEGIN:VCARD\r\nN:M\xFCller;a\r\nFN:\xC3\xBC\r\nNOTE: \xE9 \r\n",
       "2-2 N M\xFCller;a\n4-4 NOTE \xE9\n"},
      {"NOTE:a\r\n \xFC\r\n b\r\nN:c\r\n",
       "1-3 NOTE a\xFC"
       "b\n"},
      {"N;ENCODING=QUOTED-PRINTABLE:=FC=\n=FC=\n", "1-2 N \xFC\xFC\n"},
      {"NOTE;QUOTED-PRINTABLE:=C3=\r\n=BC\r\n", ""},
      {"N;CHARSET=utf-8:\xFC\nN;CHARSET=SHIFT_JIS:\xFF\nN;CHARSET=SHIFT_JIS:\x8E\x52\n",
       "1-1 N! \xFC\n2-2 N! \xFF\n"},
      {"N;CHARSET=ISO-8859-1:\xFC\n", "1-1 N \xFC\n"},  // the readers don't know it
      // A number is read as what --code-page says, whatever its line does.
      {"TEL;CHARSET=SHIFT_JIS:\x8E\x52\ntel;CHARSET=UTF-8:\xFC\nTEL:\xC3\xBC\n",
       "1-1 TEL \x8E\x52\n2-2 tel \xFC\n"},
      {"PHOTO;BASE64:\xFC\r\n\r\nno colon \xFC\n\xFC:a\n", ""},
  };
  for (const auto& row : kTexts) {
    for (const std::size_t size : {1U, 3U, 1000U}) {
      std::string found;
      CharsetLines lines([&found](const DamagedLine& line) {
        found += std::to_string(line.first) + "-" + std::to_string(line.last) + " " + line.name +
                 (line.isFixed ? "! " : " ") + line.bytes + "\n";
      });
      for (std::size_t at = 0; at < row.text.size(); at += size)
        lines.Append(row.text.substr(at, size));
      lines.Finish();
      EXPECT_EQ(found, row.expected);
    }
  }
}

}  // namespace
}  // namespace pim
