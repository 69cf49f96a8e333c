// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "formats/FormatLoss.h"
#include "formats/icalendar/ContentLines.h"
#include "formats/icalendar/ZoneBook.h"
#include "pim/support/DateTime.h"

namespace pim {

// What a property of iCalendar 2.0 says of a moment.
struct ItemTime {
  icaltimetype local;  // a day, or a time in UTC, in its zone, or floating
  COleDateTime utc;    // the moment; of a day and of a floating time by the machine's zone

  bool isDay() const { return local.is_date != 0; }
};

// Reads the times of items.
class DownTimes {
 public:
  // Both must outlive this.
  DownTimes(const ZoneBook& zones, const TellFormatLoss& tell) : zones_(zones), tell_(tell) {}

  // Nothing, which is told, for a value that is no moment of the years 100 to 9999.
  std::optional<ItemTime> TimeOf(const ContentLine& line) const;
  // The same for each time of a list.
  std::vector<ItemTime> TimesOf(const ContentLine& line) const;
  // The time behind a length of time; days count by the calendar of the zone.
  static std::optional<ItemTime> Behind(const ItemTime& time, const icaldurationtype& length);

 private:
  std::optional<ItemTime> Read(const ContentLine& line, std::string_view value,
                               icaltimezone* zone) const;
  icaltimezone* ZoneOf(const ContentLine& line) const;

  const ZoneBook& zones_;
  const TellFormatLoss& tell_;
};

// The moment of a time, whatever its zone.
COleDateTime UtcOfTime(const icaltimetype& time);

// A length of time as the property spells it; nothing for a value that is none.
std::optional<icaldurationtype> LengthOf(const ContentLine& line);
// In seconds, a day being 24 hours.
std::int64_t SecondsOf(const icaldurationtype& length);

}  // namespace pim
