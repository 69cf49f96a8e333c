// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace pim::testing {

// Texts of all that an account tells, put together from lines by a generator of its own: always the
// same for a seed.
class MadeLines {
 public:
  explicit MadeLines(std::uint32_t seed) : state_(seed * 2654435761U + 1) {}

  std::string Cards() { return Text(kCards, "VCARD"); }
  std::string Items() {
    static constexpr std::array<std::string_view, 3> kWords = {"VEVENT", "VTODO", "VMEMO"};
    std::string text = Number(3) == 0 ? "" : "BEGIN:VCALENDAR\nVERSION:1.0\nTZ:+09:00\n";
    return text + Text(kItems, kWords[Number(kWords.size())]) + "END:VCALENDAR\n";
  }
  std::size_t Number(std::size_t below) {
    state_ = state_ * 1664525 + 1013904223;  // Numerical Recipes' generator
    return (state_ >> 8) % below;
  }

 private:
  using Lines = std::string_view;  // one a line; a tilde is a line end within one

  template <std::size_t Count>
  std::string Text(const std::array<Lines, Count>& lines, std::string_view object) {
    std::string text = Number(8) == 0 ? "FN:stray\nJUNK\n" : "";
    for (std::size_t records = 1 + Number(3); records > 0; --records) {
      text.append("BEGIN:").append(object).append("\n");
      std::size_t favourite = Number(Count);  // some meet more often than by chance
      for (std::size_t left = Number(9); left > 0; --left) {
        if (Number(3) == 0) favourite = Number(Count);
        AppendLine(text, lines[Number(2) == 0 ? favourite : Number(Count)]);
      }
      if (Number(8) != 0) text.append("END:").append(object).append("\n");
      if (Number(6) == 0) AppendLine(text, lines[Number(Count)]);
      if (Number(30) == 0) AppendLine(text, "TEL;:1");
    }
    if (Number(20) == 0) text += "NOTE;QUOTED-PRINTABLE:cut=";
    if (Number(4) == 0) text.pop_back();
    if (Number(4) == 0) text = WithReturns(text);
    return text;
  }

  void AppendLine(std::string& text, std::string_view line) {
    // One of the values that a line gives to choose from.
    const std::size_t colon = line.find('|');
    if (colon != std::string_view::npos) {
      std::string_view rest = line.substr(colon + 1);
      std::size_t count = 1;
      for (const char c : rest) count += c == '|' ? 1 : 0;
      for (std::size_t skip = Number(count); skip > 0; --skip)
        rest.remove_prefix(rest.find('|') + 1);
      text += line.substr(0, colon);
      line = rest.substr(0, rest.find('|'));
    }
    for (const char c : line) text += c == '~' ? '\n' : c;
    text += '\n';
    static constexpr std::array<std::string_view, 6> kBehind = {"\n",   "\r\n", " \r\n",
                                                                "  \n", " \n",  "\t \r\n"};
    if (Number(10) == 0) text += kBehind[Number(kBehind.size())];
  }

  static std::string WithReturns(std::string_view text) {
    std::string with;
    for (const char c : text) {
      if (c == '\n' && !with.ends_with('\r')) with += '\r';
      with += c;
    }
    return with;
  }

  static constexpr std::array<Lines, 36> kCards = {
      "FN:|Ann|Bo|Ann|=C4|",
      "N:|Berg;Ann|;Ann|;Ann;;;|Berg;|;|Berg|;;x|Berg;Ann;;Dr;Jr;more|;;;;;;y|Bo\\;b;A|;;;;",
      "N;ENCODING=QUOTED-PRINTABLE:|=00|=42;=41|;=41=|A=3BB;C",
      "SOUND;X-IRMC-N:|a;b|a|;;;;|x;y;z",
      "NICKNAME:|Nick|Nick|\xFF",
      "BDAY:|19700131|1970-01-31|1970-1-1|00000000|19700101T000000|soon",
      "X-BLOOD:|A|AB|Z|A",
      "TEL;|HOME:1|TYPE=CELL,VOICE:2|CELL;WORK:3|CHARSET=SHIFT_JIS:\x83\x41|VOICE:\xFF",
      "TEL;ENCODING=QUOTED-PRINTABLE:|=31|1",
      "EMAIL;|INTERNET:a@b|Work;Mobile:a@b|ENCODING=8BIT:a@b|ENCODING=X:a@b|LANGUAGE=de:a@b",
      "URL:|http://a|http://a",
      "ADR;|HOME:;;1 Main St;Town|TYPE=HOME:;;;|WORK:1;2;3;4;5;6;7;8|DOM:;;;;;;;;;",
      "NOTE;ENCODING=QUOTED-PRINTABLE:|a=~b|a=4~b|=E9|a=G|a=00b|a=ZZ|x=|a=~ b|a=3",
      "NOTE;CHARSET=|ISO-8859-1:caf\xE9|ISO-8859-1:cafe|utf-8:\xC3\xA9|SHIFT_JIS:\x83\x41",
      "NOTE:|folded~ on|  blanks|a~  ~ b|a\rb|\x01|",
      "TITLE:|boss|boss|chief|boss~ on|",
      "ROLE:|one|one|two",
      "ORG;|Work:Acme;Sales;;x|Unknown:Acme|Work;Other:A|X:;|:A",
      "X-HOBBY:|chess|chess|go",
      "PHOTO;|BASE64:~ QUJD~|BASE64:QUJD~QUJD|BASE64:~ QU~|TYPE=PNG;BASE64:QUJD~|BASE64:~ Q~",
      "PHOTO;ENCODING=|BASE64:~ QUJD~ QUJE~|b:QUJD|BASE64;WEBP:QUJD~|QUOTED-PRINTABLE:a=41",
      "PHOTO;BASE64:|QQ=x~|*~|QU=~ *AAA~",
      "X-GROUP:|Family|Family",
      "X-CHATID;|ICQ:1|ICQ;QQ:1|Foo:1",
      "X-ANNI:|20000101|never",
      "X-EVENTDAY:|20000101|",
      "X-FAVORITE:|YES|Y|NO|maybe|YES",
      "item1.TEL:|1|2",
      "X-FOO;A=1:|x|",
      "AGENT:|~BEGIN:VCARD~FN:agent~END:VCARD|x",
      "JUNK|~ more| and more|~  ~",
      "TEL;HOME~|X:1|;CELL:1|JUNK",
      "END:VCARD|BEGIN:VCARD| |X",
      "BEGIN:|VCARD|V|VEVENT|VCARD ",
      "VERSION:|2.1|3.0",
      "|:nameless|;a:b| : ",
  };
  static constexpr std::array<Lines, 33> kItems = {
      "SUMMARY:|Lunch|Lunch|Dinner|\xFF|",
      "SUMMARY;ENCODING=QUOTED-PRINTABLE:|a=0D=0Ab|a=~b|a=|=00|a=G",
      "DESCRIPTION;CHARSET=|X:\xE9|X:e|utf-8:e",
      "LOCATION;LANGUAGE=de:|here|here|",
      "DTSTART:|20100105|20100105T000000|20100105T120000Z|20100105T120000|20100106",
      "DTSTART:|20100105T000000|20100105T240000|20100105T240000Z|abc|0|20100230",
      "DTEND:|20100105|20100105T240000|20100105T130000Z|20100105T1230|20100105T120059Z",
      "DTEND;TZID=Berlin:|20100105|2010-01-05|20100106",
      "DUE:|20100105T120000Z|20100105T240000|abc|0|20100230",
      "DUE;ENCODING=QUOTED-PRINTABLE:|20100105|=32010",
      "COMPLETED:|20100105T120000Z|20100105T120000Z|20100105T1200",
      "DTCREATE:|20100105T120000Z|20100105T120000Z|x",
      "LAST-MODIFIED:|20100105T120000Z|20100105T120030Z",
      "X-MODIFIED:|20100105T120000Z|20100105T120000Z+2",
      "TZ:|+09|-05:30|-0530|-00:30|+00|x",
      "DAYLIGHT:|FALSE|TRUE;-04;20100314T020000;20101107T020000;EST;EDT|TRUE;;-04|true",
      "DAYLIGHT:|TRUE;-04;x;20101107T020000;EST;EDT;more|FALSE;1|TRUE|;;",
      "CATEGORIES:|APPOINTMENT|MEMO|MEETING;BIRTHDAY|MEETING|MEMO;APPOINTMENT|;;|Business",
      "CLASS:|PUBLIC|PRIVATE|P|X|PUBLIC",
      "STATUS:|SENT|NEEDS ACTION|NEEDS-ACTION|C|SENT",
      "PRIORITY:|1|2|0|HIGH|2 x|99999999999",
      "X-HOLIDAY:|YES|NO|maybe|YES",
      "X-COLOR:|red|red|blue",
      "AALARM;|TYPE=WAVE;VALUE=CONTENT-ID:20100105T110000Z;PT5M;3;Meet|X=1:x;P1W;a;b;c|:;;;",
      "AALARM:|20100105T110000Z|20100105T110000Z;;;|20100105T110000Z;;;|20100105T110030Z;1;;",
      "DALARM:|20100105T110000Z|x",
      "RRULE:|D1 #5|D1 MO TU|W1 MO|W1 MO|FOO|D1 20100230T000000|D1 20100230T000000",
      "XRULE:|D1|W1|FOO|D1",
      "ATTENDEE;ROLE=X:|a|b",
      "item1.SUMMARY:|x|y",
      "JUNK|~ more|",
      "END:|VEVENT|VTODO|VALARM|VEVENTBEGIN:VEVENT",
      "BEGIN:|VALARM|VEVENT|VE|VTODO|VCALENDAR",
  };

  std::uint32_t state_;
};

}  // namespace pim::testing
