// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "formats/icalendar/Ical.h"

namespace pim {

// The dates of a rule, in order.
class RuleDates {
 public:
  // Of RRULE's value, for an item that begins at `start`. An empty rule has no dates.
  RuleDates(const std::string& rule, const icaltimetype& start);
  // The next date; nothing behind the last one, and behind as many as are ever looked at.
  std::optional<icaltimetype> Next();
  // Whether the rule goes on, but nobody looks further.
  bool isCut() const { return taken_ == kMost; }

 private:
  static constexpr std::int32_t kMost = 20'000;  // more than fifty years of days

  IcalOwner<icalrecur_iterator> dates_;
  std::int32_t taken_ = 0;
};

// Whether the rule, which has a number of dates, ends no later than `until`; nothing where that is
// too far to see.
std::optional<bool> CountEndsFirst(const std::string& rule, const icaltimetype& start,
                                   const icaltimetype& until);

// Whether the item's start is the first date of its rule.
bool IsFirstDate(const std::string& rule, const icaltimetype& start);

// The dates of an item that its exception rule takes away.
struct ExceptionDates {
  std::vector<icaltimetype> dates;
  bool isCut = false;  // there are more
};
// An item whose rule is empty has its start alone. Rules without end are followed up to the year
// 2049, or for ten years where they begin later, since no clock is to make two texts of one item.
ExceptionDates ExceptionDatesOf(const std::string& rule, const std::string& exception,
                                const icaltimetype& start);

}  // namespace pim
