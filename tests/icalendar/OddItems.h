// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <random>
#include <span>
#include <string>

namespace pim {

// Makes vCalendar 1.0 texts of odd items, the same for the same seed on any machine.
class OddItems {
 public:
  explicit OddItems(std::uint32_t seed) : random_(seed) {}

  // One item, from its BEGIN to its END.
  std::string Item() {
    const char* const kind = Pick({"VEVENT", "VEVENT", "VTODO", "VMEMO"});
    text_ = Line("BEGIN", kind);
    for (const char* name : {"SUMMARY", "DESCRIPTION", "LOCATION", "X-COLOR"})
      if (Chance(2)) AddText(name);
    for (const char* name : {"DTCREATE", "LAST-MODIFIED", "X-MODIFIED", "COMPLETED", "DUE"})
      if (Chance(3)) Add(name, Moment());
    AddSpan();
    if (Chance(2)) Add("RRULE", Rule());
    if (Chance(3)) Add("XRULE", Rule());
    if (Chance(2)) AddAlarm();
    if (Chance(3)) AddZone();
    if (Chance(3)) Add("CLASS", Pick({"PUBLIC", "PRIVATE", "CONFIDENTIAL"}));
    if (Chance(2)) {
      Add("STATUS", Pick({"ACCEPTED", "SENT", "TENTATIVE", "CONFIRMED", "DECLINED", "COMPLETED",
                          "DELEGATED", "NEEDS ACTION"}));
    }
    if (Chance(3)) Add("PRIORITY", std::to_string(Number(-1, 11)));
    if (Chance(4)) Add("X-HOLIDAY", "YES");
    while (Chance(2))
      Add("CATEGORIES", Pick({"APPOINTMENT", "BIRTHDAY;ANNIVERSARY", "ANNIVERSARY", "TRAVEL"}));
    return text_ + Line("END", kind);
  }

  // A rule in the form that the writer gives it.
  std::string Rule() {
    const char* const kind = Pick({"D", "W", "MP", "MD", "YM", "YD"});
    const std::string name = kind;
    std::string rule = name + std::to_string(Number(1, 4)) + " ";
    if (name == "W") rule += List({"SU", "MO", "TU", "WE", "TH", "FR", "SA"}, 3);
    if (name == "MP") {
      rule += List({"1+", "2+", "3+", "4+", "5+", "1-", "2-", "5-"}, 3);
      rule += List({"SU", "MO", "TU", "WE", "TH", "FR", "SA"}, 3);
    }
    if (name == "MD") rule += List({"1", "5", "15", "29", "30", "31", "LD", "2-", "31-"}, 4);
    if (name == "YM") rule += List({"1", "2", "3", "6", "11", "12"}, 4);
    if (name == "YD") rule += List({"1", "59", "60", "200", "365", "366"}, 3);
    if (Chance(2)) rule += "#" + std::to_string(Number(0, 30)) + " ";
    if (Chance(3)) rule += Moment();
    return rule;
  }

  std::string Moment() { return Day() + "T" + Two(Number(0, 23)) + Two(Number(0, 59)) + "00Z"; }
  std::string Day() {
    return std::to_string(Number(2009, 2011)) + Two(Number(1, 12)) + Two(Number(1, 28));
  }

 private:
  using Words = std::initializer_list<const char*>;

  int Number(int least, int most) {
    return least + static_cast<int>(random_() % static_cast<std::uint32_t>(most - least + 1));
  }
  // True once in so many times.
  bool Chance(int times) { return Number(1, times) == 1; }
  const char* Pick(Words words) {
    return words.begin()[Number(0, static_cast<int>(words.size()) - 1)];
  }
  std::string List(Words words, int most) {
    std::string list;
    for (int count = Number(0, most); count > 0; --count) list += Pick(words) + std::string(" ");
    return list;
  }
  static std::string Two(int number) { return (number < 10 ? "0" : "") + std::to_string(number); }
  static std::string Line(const std::string& name, const std::string& value) {
    return name + ":" + value + "\r\n";
  }
  void Add(const char* name, const std::string& value) { text_ += Line(name, value); }

  // Under quoted-printable, of pieces that forms escape, fold or mistake.
  std::string Text() {
    std::string text;
    for (int count = Number(1, 12); count > 0; --count) {
      text += Pick({"word",
                    " ",
                    ",",
                    ";",
                    ":",
                    "\\",
                    "\"",
                    "=0A",
                    "=09",
                    "\\n",
                    "=E6=97=A5=E6=9C=AC",
                    "=F0=9F=8E=82",
                    "=C3=BC",
                    "=3D",
                    "a long run of plain words that wants folding ",
                    "=0A=0A",
                    "\\;",
                    "'",
                    "=C2=85",
                    "=E2=80=A8"});
    }
    return text;
  }
  void AddText(const char* name) {
    text_ += std::string(name) + ";CHARSET=utf-8;ENCODING=QUOTED-PRINTABLE:x" + Text() + "\r\n";
  }

  void AddSpan() {
    if (Chance(4)) {
      Add("DTSTART", Day() + "T000000");
      Add("DTEND", Day() + "T240000");
      return;
    }
    if (!Chance(8)) Add("DTSTART", Moment());
    if (!Chance(3)) Add("DTEND", Moment());
  }

  void AddAlarm() {
    std::string value = Chance(8) ? "" : Moment();
    value += Pick({";", ";PT5M", ";P1DT2H", ";P14D", ";PT45S"});
    value += Pick({";", ";3", ";0"});
    value += ";";
    if (Chance(2)) {
      for (const char c : Text()) value += c == ';' ? std::string("=3B") : std::string(1, c);
      text_ += "AALARM;TYPE=WAVE;CHARSET=utf-8;ENCODING=QUOTED-PRINTABLE:" + value + "\r\n";
    } else {
      Add(Pick({"AALARM", "AALARM;TYPE=PCM", "AALARM;TYPE=AIFF;VALUE=CONTENT-ID"}), value);
    }
  }

  void AddZone() {
    Add("TZ", Pick({"+09:00", "-05:00", "+05:30", "-03:30", "+00:00"}));
    if (Chance(2)) return;
    Add("DAYLIGHT", Pick({"TRUE;-04:00;20100314T070000Z;20101107T060000Z;EST;EDT",
                          "TRUE;+02:00;20100328T010000Z;20101031T010000Z;MEZ;MESZ",
                          "TRUE;+11;20101003T160000Z;20110403T160000Z;AEST", "FALSE"}));
  }

  std::mt19937 random_;
  std::string text_;
};

// A whole text of so many.
inline std::string OddCalendar(std::uint32_t seed, int count) {
  OddItems items(seed);
  std::string text = "BEGIN:VCALENDAR\r\nVERSION:1.0\r\n";
  for (int i = 0; i < count; ++i) text += items.Item();
  return text + "END:VCALENDAR\r\n";
}

}  // namespace pim
