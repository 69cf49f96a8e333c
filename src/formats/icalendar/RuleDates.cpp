// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/icalendar/RuleDates.h"

#include <algorithm>

namespace pim {

RuleDates::RuleDates(const std::string& rule, const icaltimetype& start) {
  const icalrecurrencetype parts = icalrecurrencetype_from_string(rule.c_str());
  if (parts.freq != ICAL_NO_RECURRENCE) dates_.reset(icalrecur_iterator_new(parts, start));
}

std::optional<icaltimetype> RuleDates::Next() {
  if (dates_ == nullptr || isCut()) return std::nullopt;
  const icaltimetype date = icalrecur_iterator_next(dates_.get());
  if (icaltime_is_null_time(date) != 0) return std::nullopt;
  ++taken_;
  return date;
}

std::optional<bool> CountEndsFirst(const std::string& rule, const icaltimetype& start,
                                   const icaltimetype& until) {
  RuleDates dates(rule, start);
  while (const auto date = dates.Next()) {
    const int order = start.is_date != 0 ? icaltime_compare_date_only(*date, until)
                                         : icaltime_compare(*date, until);
    if (order > 0) return false;
  }
  if (dates.isCut()) return std::nullopt;
  return true;
}

bool IsFirstDate(const std::string& rule, const icaltimetype& start) {
  const auto first = RuleDates(rule, start).Next();
  return first && icaltime_compare(*first, start) == 0;
}

ExceptionDates ExceptionDatesOf(const std::string& rule, const std::string& exception,
                                const icaltimetype& start) {
  constexpr int kLastYear = 2049;
  constexpr int kYears = 10;
  constexpr std::size_t kMostDates = 5'000;
  const int lastYear = std::max(kLastYear, start.year + kYears);
  ExceptionDates found;
  RuleDates happens(rule, start);
  RuleDates taken(exception, start);
  // The start is a date of the item, whether its rule names it or not.
  std::optional<icaltimetype> happening = start;
  std::optional<icaltimetype> away = taken.Next();
  while (happening && away) {
    if (happening->year > lastYear || away->year > lastYear || found.dates.size() == kMostDates) {
      found.isCut = true;
      return found;
    }
    const int order = icaltime_compare(*happening, *away);
    if (order == 0) found.dates.push_back(*away);
    if (order <= 0) {
      happening = happens.Next();
      if (happening && icaltime_compare(*happening, start) == 0) happening = happens.Next();
    }
    if (order >= 0) away = taken.Next();
  }
  found.isCut = (!happening && happens.isCut()) || (!away && taken.isCut());
  return found;
}

}  // namespace pim
