// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "formats/icalendar/Occurrences.h"
#include "pim/records/Calendar.h"

namespace pim::app {

// The days that a text names: "2010-03-01", all of "2010-03" or of "2010". Nothing for another one.
std::optional<DayRange> DaysNamed(std::string_view text);

// Which items of a calendar a page shows, and when they happen.
class ShownDays {
 public:
  // Those that were asked for, if any; days count from 1970-01-01 on.
  ShownDays(std::optional<std::int64_t> first, std::optional<std::int64_t> last,
            std::int64_t today);

  // Nothing where the item is left out: where days were asked for, an event or to-do none of whose
  // times reaches into them. What has no time isn't left out, unless it is an event.
  std::optional<Occurrences> TimesOf(const CCalendar& item);

  // The days for which the repeats of all those items were followed, "2010-12-31"; empty where
  // nothing repeats and none were asked for.
  std::string First() const;
  std::string Last() const;

  OccurrenceFinder& finder() { return finder_; }

 private:
  bool IsLimited() const { return first_ || last_; }
  bool HasDay(const CCalendar& item, const COleDateTime& utc);
  std::int64_t DaysToDue(const CCalendar& item);
  // The last day for which an item's repeats are followed.
  std::int64_t EndOfRepeats(const CCalendar& item);

  std::optional<std::int64_t> first_;
  std::optional<std::int64_t> last_;
  std::int64_t today_;
  std::optional<std::int64_t> firstRepeat_;  // where what repeats begins
  OccurrenceFinder finder_;
};

}  // namespace pim::app
