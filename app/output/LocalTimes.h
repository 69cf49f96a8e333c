// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "pim/support/DateTime.h"
#include "platform/ZoneRecord.h"

namespace pim::app {

// Stored times, which are UTC, as the machine's clock shows them. The zone is read once, for lists
// of many times.
class LocalTimes {
 public:
  LocalTimes() { GetTimeZoneInformation(zone_); }

  // "2010-01-05 21:00 +09:00"; empty for null, "(no such date)" for what isn't valid.
  std::string Moment(const COleDateTime& utc) const;
  // "2010-01-05", the local day.
  std::string Day(const COleDateTime& utc) const;
  // "08:30 to 09:00" on one day, else two moments; empty unless both are valid.
  std::string Span(const COleDateTime& from, const COleDateTime& to) const;
  // The zone's name in the time zone database ("Europe/Berlin"), where it has one; and else "local
  // time".
  static std::string NameInDatabase();
  static std::string ZoneName();

 private:
  std::string Text(const COleDateTime& utc, bool withTime) const;

  TIME_ZONE_INFORMATION zone_;
};

// A moment in seconds since 1970, UTC. Not valid where COleDateTime has none.
COleDateTime DateOfSeconds(std::int64_t since1970);
// "2010-01-05T12:00:00Z", or "invalid".
std::string UtcText(std::int64_t since1970);

// A day without a zone: "2010-12-31"; empty for null.
std::string PlainDay(const COleDateTime& date);

// A time as it is kept, whatever zone it is of: "2010-12-31 23:59".
std::string PlainMoment(const COleDateTime& date);

}  // namespace pim::app
