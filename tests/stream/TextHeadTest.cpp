// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "pim/stream/TextHead.h"

namespace pim {
namespace {

// What begins first, as the readers see it, and the version that it tells.
TEST(TextHead, TellsWhatBeginsFirst) {
  static constexpr struct {
    std::string_view text;
    std::optional<TextObject> object;
    std::string_view version;
  } kRows[] = {
      {"", {}, ""},
      {"BEGIN:\nBEGIN:VCALE\nFN:VCARD\n", {}, ""},
      {"TEL;:1\nBEGIN:VCARD\n", {}, ""},
      {"junk\r\nBEGIN:VCARD\r\nVERSION: 2.1 \r\n", TextObject::Contact, "2.1"},
      {"begin:vc\nVERSION:3.0", TextObject::Contact, "3.0"},
      {"BEGIN:V\n", TextObject::Contact, ""},
      {"VERSION:9\nBEGIN:VCALENDAR\nPRODID:x\nVERSION:2.0\nBEGIN:VEVENT\n", TextObject::Calendar,
       "2.0"},
      {"BEGIN:VCALENDAR\nBEGIN:VEVENT\nVERSION:2.0\n", TextObject::Calendar, ""},
      {"BEGIN:VTod\nEND:VTODO\nVERSION:1.0\n", TextObject::Todo, ""},
      {"BEGIN;X=1:VE\n", TextObject::Event, ""},
      {"BEGIN:VM\n", TextObject::Memo, ""},
      {"BEGIN:VEVENTS\nBEGIN:VMEMO\n", TextObject::Memo, ""},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.text);
    const auto head = TextHeadOf(row.text);
    ASSERT_EQ(head.has_value(), row.object.has_value());
    if (!head) continue;
    EXPECT_EQ(head->object, *row.object);
    EXPECT_EQ(head->version, row.version);
  }
}

}  // namespace
}  // namespace pim
