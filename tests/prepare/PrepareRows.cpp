// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/prepare/PrepareRows.h"

namespace pim {
namespace {

using namespace std::string_literals;

// The characters of a text in units of two or four bytes.
std::string InUnits(std::u32string_view text, std::size_t size, bool isBig) {
  std::string bytes;
  const auto add = [&](char32_t unit) {
    for (std::size_t i = 0; i < size; ++i)
      bytes += static_cast<char>(unit >> (8 * (isBig ? size - 1 - i : i)));
  };
  for (const char32_t c : text) {
    const bool isPair = size == 2 && c > 0xFFFF;
    if (isPair) add(0xD7C0 + (c >> 10));
    add(isPair ? 0xDC00 + (c & 0x3FF) : c);
  }
  return bytes;
}

Row Same(PrepareStep step, const std::string& text) { return {step, text, text, ""}; }
Row CardRow(PrepareStep step, const std::string& lines, const std::string& expected,
            const std::string& told) {
  return {step, Card(lines), Card(expected), told};
}
Row SameCard(PrepareStep step, const std::string& lines) { return Same(step, Card(lines)); }

std::vector<Row> UnicodeRows() {
  constexpr auto kStep = PrepareStep::Unicode;
  constexpr std::u32string_view kText = U"BEGIN:VCARD\r\nN:\u00E9\U0001F600;\u3042\r\nEND:VCARD";
  const std::string text = "BEGIN:VCARD\r\nN:\u00E9\U0001F600;\u3042\r\nEND:VCARD";
  std::vector<Row> rows;
  for (const std::size_t size : {2U, 4U}) {
    const std::string told = "1 unicode: the text was UTF-"s + (size == 2 ? "16\n" : "32\n");
    for (const bool isBig : {false, true}) {
      rows.push_back({kStep, InUnits(kText, size, isBig), text, told});
      rows.push_back({kStep, InUnits(U"\uFEFF" + std::u32string(kText), size, isBig), text, told});
      // One that lacks its other half, a second mark, and a unit that isn't whole.
      rows.push_back(
          {kStep,
           InUnits(U"BEG", size, isBig) + InUnits({U"\xD800x\xFEFF\xDC00", 4}, 2, isBig) + "x",
           "BEG\uFFFDx\uFEFF\uFFFD\uFFFD", told});
      if (size == 4) rows.pop_back();
    }
  }
  rows.push_back({kStep, InUnits(U"A\x110000\xD800", 4, true) + "\0\0"s, "A\uFFFD\uFFFD\uFFFD",
                  "1 unicode: the text was UTF-32\n"});
  for (const std::string& same : {""s, "\xFF\xFE"s, "\xFF\xFE\0"s, "\xFF\xFEx"s,
                                  "\xEF\xBB\xBFN:\0a"s, "\0\0\0"s, "1\0002\0"s})
    rows.push_back(Same(kStep, same));
  return rows;
}

std::vector<Row> ByteRows() {
  constexpr auto kNul = PrepareStep::Nul;
  constexpr auto kEnds = PrepareStep::LineEnds;
  const std::string gone = ": NUL characters taken out\n";
  const auto ends = [](const std::string& lines) {
    return lines + " line-ends: a carriage return alone became a line end\n";
  };
  return {
      {kNul, "A:\0b\r\n\0\0c:d\n\0"s, "A:b\r\nc:d\n", "1-3 nul" + gone},
      {kNul, "a\0\nb\nc\0\0\0d\0"s, "a\nb\ncd", "1 nul" + gone + "3 nul" + gone},
      {kNul, "\0\r\0\n\0"s, "\r\n", "1-2 nul" + gone},
      Same(kNul, "no zero \\0\r\r\n"),
      {kEnds, "BEGIN:VCARD\rN:a\rEND:VCARD\r", "BEGIN:VCARD\r\nN:a\r\nEND:VCARD\r\n", ends("1-3")},
      {kEnds, "a:b\r\rc", "a:b\r\n\r\nc", ends("1-2")},
      // Several of them ahead of a line feed are the end of one line.
      Same(kEnds, "a:b\r\r\r\nc:d\r\r\n"),
      // Where line feeds end the lines, only a property's beginning makes one an end.
      {kEnds, "a:b\nc:d\re:f\n", "a:b\nc:d\r\ne:f\n", ends("2")},
      {kEnds, "a:b\r\nNOTE:c\rX-D.E1;F:g\r\n", "a:b\r\nNOTE:c\r\nX-D.E1;F:g\r\n", ends("2")},
      Same(kEnds, "a:b\nNOTE:c\rd\n"),
      Same(kEnds, "a:b\nNOTE:c\r d:e\n"),
      Same(kEnds, "a:b\nNOTE:c\r1:e\n"),
      Same(kEnds, "a:b\nNOTE:c\r" + std::string(70, 'x') + ":e\n"),
      Same(kEnds, "a:b\nNOTE:c\rword"),
      Same(kEnds, "a:b\nNOTE:c\r"),
  };
}

std::vector<Row> FrameRows() {
  constexpr auto kJoined = PrepareStep::Joined;
  constexpr auto kEnd = PrepareStep::MissingEnd;
  const std::string parted = " joined: END and BEGIN parted\n";
  return {
      {kJoined, "BEGIN:VCARD\nN:a\nEND:VCARDBEGIN:VCARD\nN:b\nEND:VCARD\n",
       "BEGIN:VCARD\nN:a\nEND:VCARD\nBEGIN:VCARD\nN:b\nEND:VCARD\n", "3" + parted},
      {kJoined, "begin:vcard\r\nend:vcard Begin:vCard\r\nEND:VCARD BEGIN:VCARD",
       "begin:vcard\r\nEND:VCARD\r\nBegin:vCard\r\nEND:VCARD\nBEGIN:VCARD", "2-3" + parted},
      {kJoined,
       "BEGIN:VCALENDAR\nBEGIN:VTODO\nEND:VTODOBEGIN:VEVENT\nEND:VEVENT\n"
       "END:VCALENDARBEGIN:VCALENDAR\nEND:VCALENDAR\n",
       "BEGIN:VCALENDAR\nBEGIN:VTODO\nEND:VTODO\nBEGIN:VEVENT\nEND:VEVENT\n"
       "END:VCALENDAR\nBEGIN:VCALENDAR\nEND:VCALENDAR\n",
       "3" + parted + "5" + parted},
      Same(kJoined, "END:VCARDBEGIN:VCARD\n"),  // of none that is open
      Same(kJoined, "BEGIN:VCARD\nNOTE:END:VCARDBEGIN:VCARD\nEND:VCARDBEGIN:VNOTE\nEND:VCARD\n"),
      Same(kJoined, "BEGIN:VCARD\nNOTE;QUOTED-PRINTABLE:a=\nEND:VCARDBEGIN:VCARD\nEND:VCARD\n"),

      {kEnd, "BEGIN:VCARD\nN:a\nBEGIN:VCARD\nN:b\nEND:VCARD\n",
       "BEGIN:VCARD\nN:a\nEND:VCARD\nBEGIN:VCARD\nN:b\nEND:VCARD\n",
       "3 missing-end: END:VCARD put in ahead\n"},
      {kEnd, "BEGIN:VEVENT\r\nBEGIN:VTODO\r\nBEGIN:VTODO\r\n",
       "BEGIN:VEVENT\r\nBEGIN:VTODO\r\nEND:VTODO\r\nBEGIN:VTODO\r\n",
       "3 missing-end: END:VTODO put in ahead\n"},
      {kEnd, "BEGIN:VCALENDAR\r\nVERSION:1.0\r\nBEGIN:VCALENDAR\r\nEND:VCALENDAR\r\n",
       "BEGIN:VCALENDAR\r\nVERSION:1.0\r\nEND:VCALENDAR\r\nBEGIN:VCALENDAR\r\nEND:VCALENDAR\r\n",
       "3 missing-end: END:VCALENDAR put in ahead\n"},
      // An agent's card belongs inside.
      Same(kEnd, "BEGIN:VCARD\nAGENT:\nBEGIN:VCARD\nN:b\nEND:VCARD\nN:a\nEND:VCARD\n"),
      {kEnd, "BEGIN:VCARD\nAGENT:\nBEGIN:VCARD\nN:b\nBEGIN:VCARD\nEND:VCARD\n",
       "BEGIN:VCARD\nAGENT:\nBEGIN:VCARD\nN:b\nEND:VCARD\nEND:VCARD\nBEGIN:VCARD\nEND:VCARD\n",
       "5 missing-end: END:VCARD put in ahead\n"},
      Same(kEnd, "BEGIN:VCARD\nN:the last one\n"),
      Same(kEnd, "BEGIN:VCARD\nNOTE;QUOTED-PRINTABLE:a=\nBEGIN:VCARD\nEND:VCARD\n"),
  };
}

std::vector<Row> ValueRows() {
  constexpr auto k64 = PrepareStep::Base64;
  constexpr auto kCharsets = PrepareStep::Charsets;
  const auto charset = [](const std::string& name) {
    return "3 charsets: " + name + " became UTF-8\n";
  };
  return {
      CardRow(k64, "PHOTO;ENCODING=BASE64:\r\nQUJD\r\n+/==\r\n\r\nN:a\r\n",
              "PHOTO;ENCODING=BASE64:\r\n QUJD\r\n +/==\r\n\r\nN:a\r\n",
              "3-5 base64: lines of base64 indented\n"),
      CardRow(k64, "PHOTO;BASE64:QUJD\r\n REVG\r\nR0hJ\r\nTEL:1\r\n",
              "PHOTO;BASE64:QUJD\r\n REVG\r\n R0hJ\r\nTEL:1\r\n",
              "3-5 base64: lines of base64 indented\n"),
      SameCard(k64, "PHOTO;BASE64:\r\n QUJD\r\n\r\nN:a\r\n"),
      SameCard(k64, "NOTE:\r\nQUJD\r\n"),  // no base64
      SameCard(k64, "PHOTO;BASE64:QUJD\r\nno base64\r\n"),
      SameCard(k64, "PHOTO;BASE64:QUJD\r\n\r\nQUJD\r\n"),  // behind the end of the value
      CardRow(kCharsets, "N;CHARSET=ISO-8859-1:M\xFCller;J\xF6rg\r\n",
              "N;CHARSET=UTF-8:Müller;Jörg\r\n", charset("ISO-8859-1")),
      CardRow(kCharsets,
              "NOTE;CHARSET=windows-1251;ENCODING=QUOTED-PRINTABLE:=C8=3B=\r\n=E2=E0\r\n",
              "NOTE;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:=D0=98=3B=D0=B2=D0=B0\r\n",
              "3-4 charsets: windows-1251 became UTF-8\n"),
      CardRow(kCharsets, "N;CHARSET=KOI8-R:\xE9\xD7\xC1\xCE\r\n", "N;CHARSET=UTF-8:Иван\r\n",
              charset("KOI8-R")),
      CardRow(kCharsets, "N;CHARSET=GB2312:\xCD\xF5\r\n", "N;CHARSET=UTF-8:王\r\n",
              charset("GB2312")),
      CardRow(kCharsets, "N;CHARSET=EUC-KR:\xB1\xE8\r\n", "N;CHARSET=UTF-8:김\r\n",
              charset("EUC-KR")),
      // The second byte of the character is a backslash.
      CardRow(kCharsets, "N;CHARSET=BIG5:\xB3\x5C;\xA4\xFD\r\n", "N;CHARSET=UTF-8:許;王\r\n",
              charset("BIG5")),
      CardRow(kCharsets, "N;CHARSET=ISO-2022-JP:\x1B$B;3\x1B(B;a\r\n", "N;CHARSET=UTF-8:山;a\r\n",
              charset("ISO-2022-JP")),
      // The converter keeps a letter back in case that an accent follows it.
      CardRow(kCharsets, "N;CHARSET=WINDOWS-1258:Nguy\xEA\xDEn\r\n", "N;CHARSET=UTF-8:Nguyễn\r\n",
              charset("WINDOWS-1258")),
      SameCard(kCharsets, "N;CHARSET=SHIFT_JIS:\x8E\x52\r\nN;CHARSET=utf-8:\xC3\xA9\r\n"),
      SameCard(kCharsets, "N;CHARSET=ISO-8859-1:plain\r\nN;CHARSET=NONSENSE:\xFC\r\n"),
      SameCard(kCharsets, "N;CHARSET=GB2312:\xCD\xF5\xFF\r\n"),  // damaged
      SameCard(kCharsets, "N;CHARSET=EUC-KR;QUOTED-PRINTABLE:=B1=E8=GG\r\n"),
      SameCard(kCharsets, "PHOTO;CHARSET=ISO-8859-1;BASE64:QUJD\r\n\r\n"),
  };
}

std::vector<Row> CardRows() {
  constexpr auto kPrefixes = PrepareStep::Prefixes;
  constexpr auto kTypes = PrepareStep::Types;
  const std::string parted = " types: types became words of their own\n";
  return {
      CardRow(kPrefixes, "item1.TEL:1\r\nitem1.X-ABLabel:_$!<Mobile>!$_\r\nA-2.NOTE:x\r\n",
              "TEL;CELL:1\r\nNOTE:x\r\n",
              "4 prefixes: the label became a type\n3 prefixes: \"item1.\" taken off\n"
              "5 prefixes: \"A-2.\" taken off\n"),
      CardRow(kPrefixes, "i.X-ABLABEL:HomeFAX\r\ni.TEL;PREF:1\r\nj.TEL:2\r\n",
              "TEL;PREF;HOME;FAX:1\r\nTEL:2\r\n",
              "3 prefixes: the label became a type\n4 prefixes: \"i.\" taken off\n"
              "5 prefixes: \"j.\" taken off\n"),
      CardRow(kPrefixes, "i.TEL:1\r\ni.X-ABLabel:Boat\r\n", "TEL:1\r\nX-ABLabel:Boat\r\n",
              "3 prefixes: \"i.\" taken off\n4 X-ABLabel dropped type-ignored\n"
              "4 prefixes: \"i.\" taken off\n"),
      SameCard(kPrefixes, "X.Y:1\r\n.TEL:1\r\na b.TEL:1\r\nNOTE:item1.TEL\r\n"),
      Same(kPrefixes, Calendar("", "a.SUMMARY:x\r\n")),

      CardRow(kTypes, "TEL;TYPE=HOME,FAX:1\r\nTEL;type=\"cell,voice\";PREF:2\r\n",
              "TEL;HOME;FAX:1\r\nTEL;cell;voice;PREF:2\r\n", "3-4" + parted),
      CardRow(kTypes, "ADR;TYPE=home:;;a\r\nEMAIL;TYPE=Private:a@b\r\n",
              "ADR;home:;;a\r\nEMAIL;Private:a@b\r\n", "3-4" + parted),
      CardRow(kTypes, "TEL;TYPE= HOME , ,\"x=y\",BASE64:1\r\n",
              "TEL;HOME;TYPE=x=y;TYPE=BASE64:1\r\n", "3" + parted),
      CardRow(kTypes, "TEL;TYPE=HOME,\r\n FAX:1\r\n", "TEL;HOME;FAX:1\r\n", "3-4" + parted),
      SameCard(kTypes, "TEL;TYPE=HOME:1\r\nTEL;X=a,b:1\r\nEMAIL;TYPE=Boat:a\r\n"),
      SameCard(kTypes, "TEL;HOME;FAX:TYPE=A,B\r\n"),
  };
}

std::vector<Row> ItemRows() {
  constexpr auto kAlarms = PrepareStep::Alarms;
  constexpr auto kTimes = PrepareStep::Times;
  const std::string zone = "TZ:-05\r\nDAYLIGHT:TRUE;-04;20100404T020000;20101031T020000;E;D\r\n";
  const auto times = [&](const std::string& lines, const std::string& expected,
                         const std::string& told) -> Row {
    return {kTimes, Calendar(zone, lines), Calendar(zone, expected), told};
  };
  const auto one = [](int line, const std::string& name) {
    return std::to_string(line) + " times: " + name + ": local time brought to UTC\n";
  };
  return {
      {kAlarms, Calendar("", "DALARM:20100105T120000Z;;;\r\n"),
       Calendar("", "AALARM:20100105T120000Z;;;\r\n"), "4 alarms: DALARM became AALARM\n"},
      {kAlarms, Calendar("", "AALARM:\r\nDAlarm:a\r\nDALARM:b\r\n"),
       Calendar("", "AALARM:\r\nAAlarm:a\r\nDALARM:b\r\n"), "5 alarms: DALARM became AALARM\n"},
      Same(kAlarms, Calendar("", "DALARM:a\r\nAALARM:b\r\n")),
      Same(kAlarms, Calendar("", "DALARM:\r\nSUMMARY:x\r\n")),

      times("DTSTART:20100705T120000\r\nDTEND:20100105T230000\r\n",
            "DTSTART:20100705T160000Z\r\nDTEND:20100106T040000Z\r\n",
            one(6, "DTSTART") + one(7, "DTEND")),
      // Years that no line tells: from the first Sunday of April to the last of October.
      times("DUE:20110402T120000\r\nDUE:20110404T120000\r\nDUE:20081025T120000\r\n",
            "DUE:20110402T170000Z\r\nDUE:20110404T160000Z\r\nDUE:20081025T160000Z\r\n",
            "6-8 times: DUE: local time brought to UTC\n"),
      times("AALARM:20100105T120000;PT5M;2;20100105T120000\r\nRRULE:D1 20100110T235959\r\n",
            "AALARM:20100105T170000Z;PT5M;2;20100105T120000\r\nRRULE:D1 20100111T045959Z\r\n",
            one(6, "AALARM") + one(7, "RRULE")),
      // Repeats keep their hour by the zone in the item.
      times("DTSTART:20110705T120000\r\nRRULE:D1 #0\r\n",
            "TZ:-05:00\r\nDAYLIGHT:TRUE;-04:00;20100404T070000Z;20101031T060000Z\r\n"
            "DTSTART:20110705T160000Z\r\nRRULE:D1 #0\r\n",
            one(6, "DTSTART") + "5 times: the zone put into the item\n"),
      Same(kTimes, Calendar(zone, "DTSTART:20100105\r\nDTEND:20100105T240000\r\n")),
      Same(kTimes, Calendar(zone, "DTSTART:20100105T000000\r\nDTEND:20100107T000000\r\n")),
      Same(kTimes, Calendar(zone,
                            "DTSTART:20100105T120000Z\r\nRRULE:D1 #5\r\nDUE:20100230T120000\r\n"
                            "DTEND:20100105T1200\r\nDCREATED:00000101T000000\r\n")),
      Same(kTimes, Calendar("", "DTSTART:20100105T120000\r\n")),
      Same(kTimes, Calendar("TZ:east\r\n", "DTSTART:20100105T120000\r\n")),
      {kTimes, Calendar("TZ:+05:30\r\n", "DTSTART:20100101T030000\r\n"),
       Calendar("TZ:+05:30\r\n", "DTSTART:20091231T213000Z\r\n"), one(5, "DTSTART")},
  };
}

const std::string kZoned = "DTSTART;TZID=Own:20100105T120000\r\nDTEND;TZID=Own:20100105T130000\r\n";
const std::string kOwnZone =
    "BEGIN:VTIMEZONE\r\nTZID:Own\r\nBEGIN:STANDARD\r\nDTSTART:19700101T000000\r\n"
    "TZOFFSETFROM:+0200\r\nTZOFFSETTO:+0200\r\nEND:STANDARD\r\nEND:VTIMEZONE\r\n";

// What the conversions themselves give has tests beside them; here it is where they begin and end.
std::vector<Row> ConversionRows() {
  constexpr auto kCard = PrepareStep::VCard;
  constexpr auto kItem = PrepareStep::ICalendar;
  const std::string begun = "2 icalendar: iCalendar 2.0 becomes vCalendar 1.0\n";
  const std::string older = " icalendar: the item became vCalendar 1.0\n";
  const std::string utc = "DTSTART:20100105T100000Z\r\nDTEND:20100105T110000Z\r\nTZ:+02:00\r\n";
  return {
      {kCard, Card("FN:a\\, b\r\nX-O:1\r\n", "3.0") + Card("FN:c\\, d\r\n") + Card("", "4.0"),
       Card("FN:a, b\r\nX-O:1\r\n") + Card("FN:c\\, d\r\n") + Card(""),
       "1-5 vcard: the card became vCard 2.1\n4 X-O dropped no-property\n"
       "10-12 vcard: the card became vCard 2.1\n"},
      // The last VERSION counts, and not that of an inner card.
      Same(kCard, Card("VERSION:2.1\r\nFN:a\\, b\r\n", "3.0")),
      Same(kCard, Card("AGENT:\r\n" + Card("FN:a\\, b\r\n", "3.0"))),
      Same(kCard, Card("FN:a\\, b\r\n", "3.1")),
      {kCard, Card("", "3.0") + Card("", "4.0"), Card("") + Card(""),
       "1-6 vcard: the card became vCard 2.1: 2 of them\n"},
      // What times without a zone mean; what is no item.
      {kItem,
       Calendar("X-WR-TIMEZONE:Africa/Nairobi\r\n",
                "DTSTART:20100105T130000\r\nEND:VEVENT\r\nBEGIN:VFREEBUSY\r\n"
                "END:VFREEBUSY\r\nBEGIN:VEVENT\r\n",
                "2.0"),
       Calendar("X-WR-TIMEZONE:Africa/Nairobi\r\n",
                "DTSTART:20100105T100000Z\r\nTZ:+03:00\r\nEND:VEVENT\r\nBEGIN:VEVENT\r\n"),
       begun + "3 icalendar: times without a zone are of this one\n4-6" + older +
           "7 VFREEBUSY dropped no-property\n9-10" + older},
      {kItem, Calendar("METHOD:A\r\nX-B:c\r\n", "SUMMARY:a\\, b\r\n" + utc, "2.0"),
       Calendar("METHOD:A\r\nX-B:c\r\n", "SUMMARY:a, b\r\n" + utc.substr(0, 50)),
       begun + "4 X-B dropped no-property\n9 TZ dropped no-property\n5-10" + older},
      // All of them wait for the zone of the first, and keep their order.
      {kItem,
       Calendar("",
                kZoned +
                    "END:VEVENT\r\nX-B:c\r\nBEGIN:VJOURNAL\r\nSUMMARY:b\r\n"
                    "END:VJOURNAL\r\n" +
                    kOwnZone + "BEGIN:VEVENT\r\n" + kZoned,
                "2.0"),
       Calendar("", utc +
                        "END:VEVENT\r\nX-B:c\r\nBEGIN:VMEMO\r\nSUMMARY:b\r\nEND:VMEMO\r\n"
                        "BEGIN:VEVENT\r\n" +
                        utc),
       begun + "7 X-B dropped no-property\n3-6" + older + "8-10" + older + "19-22" + older},
      Same(kItem, Calendar("", "SUMMARY:a\\, b\r\n")),
  };
}

}  // namespace

std::vector<Row> Rows() {
  std::vector<Row> rows;
  for (const auto& some : {UnicodeRows(), ByteRows(), FrameRows(), ValueRows(), CardRows(),
                           ItemRows(), ConversionRows()})
    rows.insert(rows.end(), some.begin(), some.end());
  return rows;
}

}  // namespace pim
