// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "formats/prepare/BlockLines.h"

namespace pim {

// The time zone that a vCalendar text itself tells, by the TZ and DAYLIGHT lines in its head.
class TextZone {
 public:
  // The values of these lines. What isn't understood is left out.
  void TakeOffset(std::string_view value);
  void TakeDaylight(std::string_view value);

  // Whether local times can be brought to UTC.
  bool isKnown() const { return offset_.has_value(); }
  // A time of its own such as 20100105T120000 in UTC, with a Z; nothing for any other text. The
  // daylight time of years that no line tells begins and ends as in the next year that one does, on
  // that weekday of the month.
  std::optional<std::string> ToUtc(std::string_view local) const;
  // The lines TZ and DAYLIGHT as an item has them, each with that line end: what tells of daylight
  // time in the year of a time of its own, or in the one next to it.
  std::string LinesFor(std::string_view local, std::string_view lineEnd) const;

 private:
  using Time = std::chrono::local_time<std::chrono::minutes>;
  struct Daylight {
    Time start;
    Time end;
    std::chrono::minutes offset;
  };

  const Daylight* NearestTo(int year, int& distance) const;
  std::chrono::minutes OffsetAt(Time local) const;

  std::optional<std::chrono::minutes> offset_;  // local time less UTC
  std::vector<Daylight> daylight_;              // as they stand in the text
};

// Whether a property of that name tells a time that the readers take.
bool TellsTime(std::string_view name);

// The local times of an item, in its lines, become UTC; days of an all-day item stay. Tells of
// each.
void BringToUtc(const TextZone& zone, std::vector<PropertyLine>& lines, PrepareNotes& notes);

}  // namespace pim
