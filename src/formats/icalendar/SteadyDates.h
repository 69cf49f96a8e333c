// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "formats/icalendar/Ical.h"

namespace pim {

// The dates of a rule that goes by days or weeks and names nothing but weekdays: counted, where
// libical walks through a calendar for each. Two out of three rules are such ones.
class SteadyDates {
 public:
  // Nothing for another rule.
  static std::optional<SteadyDates> Of(const icalrecurrencetype& rule, const icaltimetype& start);
  // The next date, up to the year 9999; nothing behind the last one.
  std::optional<icaltimetype> Next();

 private:
  SteadyDates(const icalrecurrencetype& rule, const icaltimetype& start);

  bool IsBehindEnd(const icaltimetype& date) const;

  icaltimetype start_;
  icaltimetype until_;
  std::int64_t firstDay_;  // the start's, from 1970-01-01 on
  std::int64_t period_;    // the first day of the period in which the next date is
  std::int64_t step_;      // from period to period, in days
  std::int32_t left_;      // how many may come; 0 for any number
  bool isOver_ = false;
  std::array<std::int8_t, kDaysOfWeek> days_{};  // of a period, ascending
  std::size_t size_ = 0;
  std::size_t next_ = 0;
};

}  // namespace pim
