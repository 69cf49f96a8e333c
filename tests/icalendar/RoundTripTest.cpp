// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "tests/icalendar/Forms.h"
#include "tests/icalendar/OddItems.h"

namespace pim {
namespace {

std::string TextOfJson(const rapidjson::Value& value) {
  rapidjson::StringBuffer text;
  rapidjson::Writer<rapidjson::StringBuffer> writer(text);
  value.Accept(writer);
  return text.GetString();
}

// Holds all fields of the two records equal but those that are told.
void ExpectSame(const CCalendar& item, const CCalendar& back, const std::set<std::string>& told) {
  rapidjson::Document a;
  rapidjson::Document b;
  a.Parse(DumpOf(item).c_str());
  b.Parse(DumpOf(back).c_str());
  for (auto member = a.MemberBegin(); member < a.MemberEnd(); ++member) {
    const std::string name = member->name.GetString();
    if (told.contains(name)) continue;
    EXPECT_EQ(TextOfJson(member->value), TextOfJson(b[name.c_str()])) << name;
  }
}

// Odd items of all kinds, in zones of both hemispheres, come back as they went but for what the
// account of the way out told; the way back has nothing to tell of what this program wrote.
TEST(ICalendarRoundTrip, OddItemsComeBack) {
  std::uint32_t seed = 1;
  for (const char* zone : {"UTC", "JST-9", "EST5EDT,M3.2.0,M11.1.0"}) {
    const ScopedZone scoped(zone);
    const CCalendars items = ReadAll(OddCalendar(seed++, 300));
    for (std::int32_t i = 0; i < items.GetCount(); ++i) {
      Told out;
      const std::string text = ICalendarOf(items[i], out);
      Told in;
      const std::string down = DownOf(text, in);
      SCOPED_TRACE(std::string(zone) + "\n" + text + down);
      EXPECT_EQ(in.lines, std::vector<std::string>());
      const ShownMessages messages;
      const CCalendars back = ReadAll(down);
      EXPECT_TRUE(messages.texts.empty());
      ASSERT_EQ(back.GetCount(), 1);
      ExpectSame(items[i], back[0], out.fields);
      if (testing::Test::HasFailure()) return;
    }
  }
}

}  // namespace
}  // namespace pim
