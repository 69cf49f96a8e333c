// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "formats/icalendar/Ical.h"
#include "formats/icalendar/SteadyDates.h"

namespace pim {

// The dates of a rule, in order.
class RuleDates {
 public:
  static constexpr std::int32_t kFiftyYears = 20'000;  // more than that of days

  // Of RRULE's value, for an item that begins at `start`. An empty rule has no dates. No more are
  // looked for than `most`.
  RuleDates(const std::string& rule, const icaltimetype& start, std::int32_t most = kFiftyYears);
  // The next date; nothing behind the last one, and behind as many as are looked for.
  std::optional<icaltimetype> Next();
  // Whether the rule goes on, but nobody looks further.
  bool isCut() const { return taken_ == most_; }

 private:
  std::optional<SteadyDates> steady_;
  IcalOwner<icalrecur_iterator> dates_;  // of a rule that isn't steady
  std::int32_t most_;
  std::int32_t taken_ = 0;
};

// Whether the rule, which has a number of dates, ends no later than `until`; nothing where that is
// too far to see.
std::optional<bool> CountEndsFirst(const std::string& rule, const icaltimetype& start,
                                   const icaltimetype& until);

// Whether the item's start is the first date of its rule.
bool IsFirstDate(const std::string& rule, const icaltimetype& start);

// The dates of an item: its start, whether its rule names it or not, and those of the rule, in
// order and each once; with the exception rule's word on each.
class ItemDates {
 public:
  // Of the rules' values, which may be empty. No more than `most` dates of each are looked for.
  ItemDates(const std::string& rule, const std::string& exception, const icaltimetype& start,
            std::int32_t most = RuleDates::kFiftyYears);

  struct Date {
    icaltimetype time;
    bool isTakenAway;
  };
  std::optional<Date> Next();
  // Whether the exception rule has more to take away.
  bool takesMoreAway() const { return away_.has_value(); }
  // Whether a rule goes on, but nobody looks further.
  bool isCut() const { return happens_.isCut() || taken_.isCut(); }

 private:
  icaltimetype start_;
  RuleDates happens_;
  RuleDates taken_;
  std::optional<icaltimetype> happening_;
  std::optional<icaltimetype> away_;
};

// The dates of an item that its exception rule takes away.
struct ExceptionDates {
  std::vector<icaltimetype> dates;
  bool isCut = false;  // there are more
};
// Rules without end are followed up to the year 2049, or for ten years where they begin later,
// since no clock is to make two texts of one item.
ExceptionDates ExceptionDatesOf(const std::string& rule, const std::string& exception,
                                const icaltimetype& start);

}  // namespace pim
