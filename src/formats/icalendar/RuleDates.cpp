// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/icalendar/RuleDates.h"

#include <algorithm>

namespace pim {

RuleDates::RuleDates(const std::string& rule, const icaltimetype& start, std::int32_t most)
    : most_(most) {
  const icalrecurrencetype parts = icalrecurrencetype_from_string(rule.c_str());
  if (parts.freq == ICAL_NO_RECURRENCE) return;
  steady_ = SteadyDates::Of(parts, start);
  if (!steady_) dates_.reset(icalrecur_iterator_new(parts, start));
}

std::optional<icaltimetype> RuleDates::Next() {
  if (isCut()) return std::nullopt;
  std::optional<icaltimetype> date;
  if (steady_) {
    date = steady_->Next();
  } else if (dates_ != nullptr) {
    date = icalrecur_iterator_next(dates_.get());
    if (icaltime_is_null_time(*date) != 0) date.reset();
  }
  if (date) ++taken_;
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
  const auto first = RuleDates(rule, start, 1).Next();
  return first && icaltime_compare(*first, start) == 0;
}

ItemDates::ItemDates(const std::string& rule, const std::string& exception,
                     const icaltimetype& start, std::int32_t most)
    : start_(start),
      happens_(rule, start, most),
      taken_(exception, start, most),
      happening_(start),
      away_(taken_.Next()) {}

std::optional<ItemDates::Date> ItemDates::Next() {
  if (!happening_) return std::nullopt;
  while (away_ && icaltime_compare(*away_, *happening_) < 0) away_ = taken_.Next();
  const Date date{*happening_, away_ && icaltime_compare(*away_, *happening_) == 0};
  happening_ = happens_.Next();
  if (happening_ && icaltime_compare(*happening_, start_) == 0) happening_ = happens_.Next();
  return date;
}

ExceptionDates ExceptionDatesOf(const std::string& rule, const std::string& exception,
                                const icaltimetype& start) {
  constexpr int kLastYear = 2049;
  constexpr int kYears = 10;
  constexpr std::size_t kMostDates = 5'000;
  const int lastYear = std::max(kLastYear, start.year + kYears);
  ExceptionDates found;
  ItemDates dates(rule, exception, start);
  while (dates.takesMoreAway()) {
    const auto date = dates.Next();
    if (!date) break;
    if (date->time.year > lastYear || found.dates.size() == kMostDates) {
      found.isCut = true;
      return found;
    }
    if (date->isTakenAway) found.dates.push_back(date->time);
  }
  found.isCut = dates.isCut();
  return found;
}

}  // namespace pim
