// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/Texts.h"

#include "support/Base64.h"
#include "support/TextCodec.h"

namespace pim::bench {
namespace {

constexpr const char* kFamilies[] = {"Martin", "O'Brien", "Fitzgerald", "Lee", "Nakamura-Jones"};
constexpr const char* kGivens[] = {"Alice", "Bob", "Christopher", "Dana", "Jo"};
constexpr const char* kTowns[] = {"Springfield", "Reading", "Dublin", "Port Charlotte", "Ames"};

std::string Number(std::int64_t i, int salt) {
  std::string digits = std::to_string(1000000 + (i * 7919 + salt * 104729) % 9000000);
  return "+1 555 " + digits.substr(0, 3) + " " + digits.substr(3);
}

void AddPlainCard(std::int64_t i, std::string& text) {
  const auto n = static_cast<std::size_t>(i);
  const std::string family = kFamilies[n % 5];
  const std::string given = kGivens[n / 5 % 5];
  const std::string mail = given + "." + std::to_string(i) + "@example.org";
  text += "BEGIN:VCARD\r\nVERSION:2.1\r\nN:" + family + ";" + given + ";;;\r\nFN:" + given + " " +
          family + "\r\nTEL;CELL;PREF:" + Number(i, 1) + "\r\nTEL;HOME;VOICE:" + Number(i, 2) +
          "\r\n";
  if (i % 2 == 0) {
    text += "TEL;WORK;FAX:" + Number(i, 3) + "\r\nORG;Work:Example Trading Company;Purchasing\r\n";
  }
  text += "EMAIL;PREF;INTERNET:" + mail + "\r\nADR;HOME:;;" + std::to_string(1 + i % 200) +
          " Orchard Lane;" + kTowns[n % 5] + ";IL;" + std::to_string(10000 + i % 80000) +
          ";United States\r\nURL:http://www.example.org/~" + given + "\r\nBDAY:19" +
          std::to_string(10 + i % 90) +
          "0417\r\nNOTE:Met at the spring fair\\, likes chess and long "
          "walks by the river; calls back in the evening.\r\nX-GROUP:" +
          (i % 3 == 0 ? "Work" : "Friends") + "\r\nEND:VCARD\r\n";
}

void AddEncodedCard(std::int64_t i, std::string& text) {
  const std::string id = std::to_string(i);
  text +=
      "BEGIN:VCARD\r\nVERSION:2.1\r\n"
      "N;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:M=C3=BCller;J=C3=BCrgen;;;\r\n"
      "FN;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:J=C3=BCrgen M=C3=BCller\r\nTEL;CELL:" +
      Number(i, 1) + "\r\nTEL;WORK:" + Number(i, 2) + "\r\nEMAIL;Work:mueller" + id +
      "@example.com\r\n"
      "NOTE;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:Trifft sich gern zum Schach=2E=0D=0A=\r\n"
      "Nicht vor zehn Uhr anrufen, au=C3=9Fer montags=\r\n und mittwochs=2E\r\n"
      "ADR;WORK;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:;;Stra=C3=9Fe " +
      id + ";K=C3=B6ln;;50667;Deutschland\r\nEND:VCARD\r\n";
}

void AddCard(std::int64_t i, std::string& text) {
  i % 4 == 3 ? AddEncodedCard(i, text) : AddPlainCard(i, text);
}

}  // namespace

std::string MakeCards(std::int64_t count) {
  std::string text;
  for (std::int64_t i = 0; i < count; ++i) AddCard(i, text);
  return text;
}

std::string MakeCardsWithPictures(std::int64_t count) {
  constexpr std::size_t kPictureBytes = 15 * 1024;
  std::string picture;
  std::uint32_t state = 1;
  for (std::size_t i = 0; i < kPictureBytes; ++i)
    picture += static_cast<char>((state = state * 1664525 + 1013904223) >> 24);
  std::string photo;
  AppendProperty(photo, "PHOTO", ";TYPE=JPEG;ENCODING=BASE64",
                 FoldBase64(Base64Encode(picture.data(), picture.size()), 72));
  std::string text;
  for (std::int64_t i = 0; i < count; ++i) {
    AddCard(i, text);
    text.insert(text.size() - std::string_view("END:VCARD\r\n").size(), photo);
  }
  return text;
}

std::string MakeEvents(std::int64_t count) {
  std::string text = "BEGIN:VCALENDAR\r\nVERSION:1.0\r\n";
  for (std::int64_t i = 0; i < count; ++i) {
    const std::string day = std::to_string(20100101 + i % 28 + i / 28 % 12 * 100);
    text += i % 4 == 3 ? "BEGIN:VEVENT\r\nSUMMARY;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:"
                         "Besprechung im gro=C3=9Fen B=C3=BCro "
                       : "BEGIN:VEVENT\r\nSUMMARY:Budget review with the whole team ";
    text += std::to_string(i) +
            "\r\nDESCRIPTION:Bring the figures of the last quarter, and the plan "
            "for the next one; lunch is served.\r\nLOCATION:Room 4\r\nDCREATED:20100301T090500Z\r\n"
            "LAST-MODIFIED:20100302T101500Z\r\nDTSTART:" +
            day + "T113000Z\r\nDTEND:" + day + "T123000Z\r\nAALARM:" + day + "T111500Z;;;\r\n" +
            (i % 3 == 0 ? "RRULE:W1 FR #4\r\n" : "") +
            "CATEGORIES:APPOINTMENT\r\nCLASS:PUBLIC\r\nEND:VEVENT\r\n";
  }
  return text + "END:VCALENDAR\r\n";
}

}  // namespace pim::bench
