// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "app/album/LineMarks.h"
#include "app/album/NameOrder.h"
#include "app/album/PageTemplate.h"
#include "app/album/ShownDays.h"
#include "app/input/TextReading.h"
#include "app/output/JsonWriter.h"

namespace pim::app {
namespace {

TEST(AlbumNames, StandInTheOrderOfTheirScript) {
  static constexpr struct {
    const char16_t* parts[5];  // family, given, additional, prefix, suffix
    const char16_t* phonetic[2];
    const char16_t* formatted;
    WideStringView name;
    WideStringView sort;
  } kRows[] = {
      {{u"Lee", u"Ann", u"B.", u"Dr.", u"Jr."},
       {u"", u""},
       u"x",
       u"Dr. Ann B. Lee Jr.",
       u"Lee Ann"},
      {{u"山田", u"花子", u"", u"", u"様"},
       {u"ヤマダ", u"ハナコ"},
       u"",
       u"山田 花子 様",
       u"ヤマダ ハナコ"},
      {{u"ｽﾐｽ", u"ジョン", u"", u"", u""}, {u"", u""}, u"", u"ｽﾐｽ ジョン", u"ｽﾐｽ ジョン"},
      {{u"\xD842\xDFB7野", u"家", u"", u"", u""},
       {u"", u""},
       u"",
       u"\xD842\xDFB7野 家",
       u"\xD842\xDFB7野 家"},
      {{u"김", u"민호", u"", u"", u""}, {u"", u""}, u"", u"김민호", u"김 민호"},
      {{u"김", u"Anna", u"", u"", u""}, {u"", u""}, u"", u"김 Anna", u"김 Anna"},
      {{u"Sato", u"花子", u"", u"", u""}, {u"", u""}, u"", u"花子 Sato", u"Sato 花子"},
      {{u"", u"Cher", u"", u"", u""}, {u"", u""}, u"x", u"Cher", u"Cher"},
      {{u"", u"", u"", u"", u""}, {u"", u"ｱﾝ"}, u"The Bakery", u"The Bakery", u"ｱﾝ"},
      {{u"", u"", u"", u"", u""}, {u"", u""}, u"The Bakery", u"The Bakery", u"The Bakery"},
      {{u"", u"", u"", u"", u""}, {u"", u""}, u"", u"", u""},
  };
  for (const auto& row : kRows) {
    CContact contact;
    CName& name = contact.name;
    WideText* const parts[] = {&name.family_name, &name.given_name, &name.additional_name,
                               &name.prefix_name, &name.suffix_name};
    for (std::size_t i = 0; i < std::size(parts); ++i) *parts[i] = row.parts[i];
    contact.phonetic.family_name = row.phonetic[0];
    contact.phonetic.given_name = row.phonetic[1];
    contact.formatted_name = row.formatted;
    EXPECT_EQ(AlbumName(contact), row.name);
    EXPECT_EQ(SortName(contact), row.sort);
  }
}

// What no parser of JSON could give back otherwise, and what would end an element.
TEST(AlbumJson, IsSafeInAPage) {
  static constexpr struct {
    WideStringView text;
    std::string_view json;
  } kRows[] = {
      {u"</script><!--", R"("\u003c/script>\u003c!--")"},
      {u"\"\\\x1F\n\x7F", "\"\\\"\\\\\\u001f\\n\x7F\""},
      {WideStringView(u"a\0b", 3), R"("a\u0000b")"},
      {u"\xD800x\xDFFF", R"("\ud800x\udfff")"},
      {u"\xDC00\xD83D\xDE00\xD83D", "\"\\udc00\xF0\x9F\x98\x80\\ud83d\""},
      {u"\u2028\uFFFE", "\"\xE2\x80\xA8\xEF\xBF\xBE\""},
  };
  for (const auto& row : kRows) {
    JsonWriter json(JsonPlace::Page);
    json.Value(row.text);
    EXPECT_EQ(json.text(), row.json);
  }
  JsonWriter text;
  text.Value(WideStringView(u"<\xD800"));
  EXPECT_EQ(text.text(), "\"<\xEF\xBF\xBD\"");
}

TEST(AlbumPage, TakesAnyTitle) {
  const PageFrame page = FilledPage(TextForm::VCard, "de", "{{script}}</title>&\"'");
  EXPECT_NE(page.ahead.find("<title>{{script}}&lt;/title&gt;&amp;&quot;&#39;</title>"),
            std::string::npos);
  EXPECT_NE(page.ahead.find("lang=\"de\""), std::string::npos);
  EXPECT_TRUE(page.behind.ends_with("</html>\n"));
}

TEST(AlbumDays, AreNamed) {
  static constexpr struct {
    std::string_view text;
    std::int64_t first;
    std::int64_t last;  // ahead of the first: no days
  } kRows[] = {
      {"1970-01-01", 0, 0},       {"1970-02", 31, 58},  {"1970", 0, 364},  {"1972-02", 761, 789},
      {"0100", -683003, -682639}, {"1970-02-29", 1, 0}, {"1970-13", 1, 0}, {"1970-1", 1, 0},
      {"1970-01-0x", 1, 0},       {"", 1, 0},           {"70", 1, 0},      {"1970/01", 1, 0},
      {"1970-01/01", 1, 0},       {"-970", 1, 0},
  };
  for (const auto& row : kRows) {
    const auto days = DaysNamed(row.text);
    EXPECT_EQ(days.has_value(), row.first <= row.last) << row.text;
    if (!days) continue;
    EXPECT_EQ(days->first, row.first) << row.text;
    EXPECT_EQ(days->last, row.last) << row.text;
  }
}

// What is in a page of 2010-03 alone, and up to where repeats are followed without an end.
TEST(AlbumDays, ChooseItems) {
  static constexpr struct {
    NarrowStringView item;
    bool isIn;
  } kRows[] = {
      {"BEGIN:VEVENT\nDTSTART:20100305T100000Z", true},
      {"BEGIN:VEVENT\nDTSTART:20100227T100000Z\nDTEND:20100302T000100Z", true},
      {"BEGIN:VEVENT\nDTSTART:20100405T100000Z", false},
      {"BEGIN:VEVENT\nDTSTART:20090105T100000Z\nRRULE:MD1 5 #0", true},
      {"BEGIN:VEVENT\nDTSTART:20090105T100000Z\nRRULE:MD1 5 #3", false},
      {"BEGIN:VEVENT\nSUMMARY:none", false},
      {"BEGIN:VTODO\nDUE:20100330T120000Z", true},
      {"BEGIN:VTODO\nDUE:20100402T120000Z", false},
      {"BEGIN:VTODO\nDUE:20100402T120000Z\nDTSTART:20100302T120000Z", false},
      {"BEGIN:VTODO\nDTSTART:20100220T120000Z\nDUE:20100302T120000Z\nRRULE:W1 #1", true},
      {"BEGIN:VTODO\nDTSTART:20100330T120000Z\nDUE:20100402T120000Z\nRRULE:W1 #0", false},
      {"BEGIN:VTODO\nSUMMARY:none", true},
      {"BEGIN:VEVENT\nCATEGORIES:MEMO\nDTSTART:20200101T000000Z", true},
  };
  ShownDays days(14669, 14699, 20000);
  ShownDays all({}, {}, 20000);
  for (const auto& row : kRows) {
    const std::function<void(CCalendar&)> take = [&](const CCalendar& item) {
      EXPECT_EQ(days.TimesOf(item).has_value(), row.isIn) << row.item;
      EXPECT_TRUE(all.TimesOf(item).has_value()) << row.item;
    };
    ReadText("BEGIN:VCALENDAR\n" + NarrowString(row.item) + "\nEND:V\n", take);
  }
  EXPECT_EQ(days.First() + " " + days.Last(), "2010-03-01 2010-03-31");
  EXPECT_EQ(all.First().substr(0, 9) + " " + all.Last(), "2009-01-0 2026-10-05");
}

TEST(AlbumMarks, HaveTheHeadOfTheirLines) {
  NarrowString text = "junk\r\nBEGIN:VCARD\nX-A:\xFF\x01\nX-B;ENCODING=QUOTED-PRINTABLE:a=\r\n b\n";
  text.append("X-C:").append(395, 'c').append("\xC3\xA9\xC3\xA9\nEND:VCARD\nX-D:1\n");
  const ReasonWords words(LabelFiles().front());
  MarkKeeper keeper(words);
  keeper.BeginText(TextForm::VCard, text, 100);
  JsonWriter json;
  const std::function<void(CContact&)> take = [&](const CContact&) {
    const LineMarks marks = keeper.TakeRecord();
    EXPECT_EQ(marks.line(), 102);
    marks.Write(json);
  };
  ReadText(text, take, [&](const AccountEntry& entry) { keeper.Take(entry); });
  const std::string why = "\"there is no field for it";
  EXPECT_EQ(json.text(), "[[103,103,\"dropped\",\"X-A\"," + why +
                             "\",\"X-A:\xEF\xBF\xBD\\u0001\"],[104,105,\"dropped\",\"X-B\"," + why +
                             "\",\"X-B;ENCODING=QUOTED-PRINTABLE:a=\\n b\"],"
                             "[106,106,\"dropped\",\"X-C\"," +
                             why + "\",\"X-C:" + std::string(395, 'c') +
                             "\xE2\x80\xA6\"],[108,108,\"dropped\",\"X-D\"," + why +
                             "; it stands behind the END of its record\",\"X-D:1\"]]");
  json.Clear();
  keeper.TakeFile().Write(json);
  EXPECT_EQ(json.text(),
            "[[101,101,\"dropped\",\"\",\"a line without a colon; it stands ahead of the first "
            "record\",\"junk\"]]");
}

TEST(AlbumMarks, AreNoMoreThanAPageCanShow) {
  const ReasonWords words(*FindLabels("de"));
  LineMarks marks(words);
  for (std::int64_t line = 1; line <= 5000; ++line)
    marks.Add({.first = line, .last = line, .verdict = "dropped", .name = u"X"});
  EXPECT_EQ(marks.count(), 5000);
  marks.SetPicture({.first = 4000, .last = 4001, .verdict = "kept", .name = u"PHOTO"});
  marks.AddPicture("picture-unknown");
  JsonWriter json;
  marks.Write(json);
  EXPECT_NE(json.text().find("[4000,4001,\"unshown\",\"PHOTO\""), std::string_view::npos);
  EXPECT_TRUE(json.text().ends_with(
      ",[1001,5000,\"dropped\","
      "\"\",\"4000 weitere, die nicht so bleiben, wie sie dastehen\",\"\"]]"));
}

}  // namespace
}  // namespace pim::app
