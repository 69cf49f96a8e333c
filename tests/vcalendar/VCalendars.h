// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "pim/platform/Host.h"
#include "tests/platform/Scoped.h"
#include "vcalendar/VCalendarReader.h"
#include "vcalendar/VCalendarWriter.h"

namespace pim {

// Zones without and with daylight time, on both hemispheres.
inline constexpr const char* kZones[] = {"UTC", "JST-9", "EST5EDT,M3.2.0,M11.1.0",
                                         "AEST-10AEDT,M10.1.0,M4.1.0/3"};

// The machine's zone while it lives.
class ScopedZone {
 public:
  explicit ScopedZone(const char* rule) : variable_("TZ", rule) {}

 private:
  test::ScopedVariable variable_;
};

// Collects the messages that the user would see while it lives.
struct ShownMessages {
  ShownMessages() {
    SetMessageSink([this](std::u16string_view text) { texts.emplace_back(text); });
  }
  ShownMessages(const ShownMessages&) = delete;
  ShownMessages& operator=(const ShownMessages&) = delete;
  ~ShownMessages() { SetMessageSink({}); }

  std::vector<std::u16string> texts;
};

// Reads a text and gives all its items; a rejected text throws.
inline CCalendars ReadItems(std::string_view text) {
  CCalendars items;
  VObjectBuffer data;
  data.bytes.Assign(text.data(), text.size());
  ParseVCalendar(items, data);
  return items;
}

// The items of a text that begins with an event of these lines.
inline CCalendars ReadEvent(const std::string& lines) {
  return ReadItems("BEGIN:VEVENT\r\n" + lines + "\r\nEND:VEVENT\r\n");
}
inline CCalendar ReadItem(const std::string& lines) { return std::move(ReadEvent(lines)[0]); }

inline std::string WriteItems(const CCalendars& items) {
  VObjectBuffer data;
  WriteVCalendar(items, data);
  return std::string(data.bytes.view());
}

// What stands between the BEGIN and the END of the item's block.
inline std::string LinesOf(CCalendar item) {
  CCalendars items;
  items.Add(std::make_unique<CCalendar>(std::move(item)));
  const std::string text = WriteItems(items);
  const std::size_t begin = text.find('\n', text.find("BEGIN:V", text.find("VERSION"))) + 1;
  return text.substr(begin, text.rfind("END:V", text.rfind("END:VCALENDAR") - 1) - begin);
}

inline COleDateTime Moment(int year, int month, int day, int hour, int minute, int second) {
  COleDateTime moment;
  moment.SetDateTime(year, month, day, hour, minute, second);
  return moment;
}

// "2010-03-05 11:30:00", "null" or "invalid".
inline std::string TextOf(const COleDateTime& date) {
  if (date.status == StatusNull) return "null";
  if (date.status == StatusInvalid) return "invalid";
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d:%02d", date.GetYear(),
                date.GetMonth(), date.GetDay(), date.GetHour(), date.GetMinute(), date.GetSecond());
  return text.data();
}

}  // namespace pim
