// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "app/output/RecordDump.h"
#include "formats/icalendar/ICalendarDown.h"
#include "formats/icalendar/ItemForms.h"
#include "pim/manager/TextReading.h"
#include "tests/vcalendar/VCalendars.h"

namespace pim {

// What a conversion told, each as "3: SUMMARY dropped no-property".
class Told {
 public:
  TellFormatLoss Tell() {
    return [this](const FormatLoss& loss) {
      lines.push_back(std::to_string(loss.line) + ": " + loss.field +
                      (loss.verdict == FormatVerdict::Changed ? " changed " : " dropped ") +
                      std::string(RowOf(loss.reason).name));
      fields.insert(loss.field.substr(0, loss.field.find_first_of(".[")));
    };
  }

  std::vector<std::string> lines;
  std::set<std::string> fields;  // the names ahead of indexes and parts
};

// One text with this item alone.
inline std::string ICalendarOf(const CCalendar& item, Told& told) {
  const auto form = MakeICalendarForm();
  std::string text;
  form->Begin(text);
  form->Append(item, told.Tell(), text);
  form->End(text);
  return text;
}

// The components directly inside a VCALENDAR.
inline std::vector<std::string> ComponentsOf(std::string_view text) {
  std::vector<std::string> components;
  int depth = 0;
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find('\n') + 1);
    text.remove_prefix(line.size());
    const bool isBegin = line.starts_with("BEGIN:");
    if (isBegin && ++depth == 2) components.emplace_back();
    if (depth >= 2) components.back().append(line);
    if (line.starts_with("END:")) --depth;
  }
  return components;
}

// A whole text as vCalendar 1.0, without the frame.
inline std::string DownOf(std::string_view text, Told& told) {
  ICalendarDown down;
  std::string all;
  std::string out;
  for (const std::string& component : ComponentsOf(text)) {
    if (component.starts_with("BEGIN:VTIMEZONE")) down.TakeZone(component);
    down.Convert(component, told.Tell(), out);
    all.append(out);
  }
  return all;
}

inline CCalendars ReadAll(std::string_view text) {
  CCalendars items;
  EXPECT_EQ(ReadCalendars(text, items).outcome, TextOutcome::Read);
  return items;
}

inline std::string DumpOf(const CCalendar& item) {
  app::RecordJson json;
  return std::string(json.Text(item));
}

}  // namespace pim
