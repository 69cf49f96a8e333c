// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <libical/ical.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>

#include "formats/FormatLoss.h"
#include "pim/support/DateTime.h"

namespace pim {

// libical's objects, each with one owner, and its times beside those of records.

struct FreeIcal {
  void operator()(icalcomponent* component) const noexcept { icalcomponent_free(component); }
  void operator()(icalproperty* property) const noexcept { icalproperty_free(property); }
  void operator()(icalrecur_iterator* dates) const noexcept { icalrecur_iterator_free(dates); }
  void operator()(icaltimezone* zone) const noexcept { icaltimezone_free(zone, 1); }
  void operator()(char* text) const noexcept { std::free(text); }
};
template <class Object>
using IcalOwner = std::unique_ptr<Object, FreeIcal>;

inline constexpr std::int32_t kDaysOfWeek = 7;
inline constexpr std::int64_t kSecondsOfDay = 86'400;

// Who wants to be told of no losses gives an empty function; what works inside may call this one.
const TellFormatLoss& Heard(const TellFormatLoss& tell);

// What libical made; it gives null when memory runs out.
template <class Object>
Object* Made(Object* object) {
  if (object == nullptr) throw std::bad_alloc();
  return object;
}

// Has libical tell of errors instead of ending the program. To be called ahead of anything else.
void PrepareIcal();

// The moment of the fields, floating or in UTC, and their day.
icaltimetype IcalTime(const CalendarFields& fields, bool isUtc);
icaltimetype IcalDay(const CalendarFields& fields);
// In UTC; nothing for a value that is no date.
std::optional<icaltimetype> IcalUtc(const COleDateTime& value);
// The other way, zones aside; invalid for what is no moment of the years 100 to 9999.
COleDateTime DateTimeOf(const icaltimetype& time);

// YYYYMMDDTHHMMSSZ, and the same without the Z.
std::string UtcText(const COleDateTime& utc);
std::string LocalText(const COleDateTime& local);

// A time's day from 1970-01-01 on, and a time on another day; that day must be of the years -32767
// to 32767.
std::int64_t DayNumberOf(const icaltimetype& time);
icaltimetype OnDay(icaltimetype time, std::int64_t day);
// The days between two times' days.
std::int32_t DaysBetween(const icaltimetype& from, const icaltimetype& to);

// As text, lines ending in CR LF.
std::string IcalTextOf(icalcomponent* component);

}  // namespace pim
