// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
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
  // A day, or a time that names no zone.
  bool isFloating() const { return local.zone == nullptr; }
};

// Reads the times of items.
class DownTimes {
 public:
  // Both must outlive this.
  DownTimes(const ZoneBook& zones, const TellFormatLoss& tell)
      : zones_(zones), tell_(tell), floating_(zones.floating()) {}

  // Whether the line has a time that names no zone, or none that is known, in a text that tells
  // none either.
  bool IsFloating(const ContentLine& line) const;
  // Such times are of this zone from now on.
  void SetFloating(icaltimezone* zone) { floating_ = zone; }
  // The time as vCalendar 1.0 has it: local where it is anybody's, else in UTC.
  std::string TextOf(const ItemTime& time) const;

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
  icaltimezone* floating_;
};

// The moment of a time, whatever its zone.
COleDateTime UtcOfTime(const icaltimetype& time);

// A length of time as the property spells it; nothing for a value that is none.
std::optional<icaldurationtype> LengthOf(const ContentLine& line);
// In seconds, a day being 24 hours.
std::int64_t SecondsOf(const icaldurationtype& length);

}  // namespace pim
