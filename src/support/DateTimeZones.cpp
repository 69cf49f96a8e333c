// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "support/DateTimeZones.h"

#include "platform/ZoneChanges.h"

namespace pim {
namespace {

// A date-time that is valid when there is a moment.
COleDateTime DateTimeOf(bool exists, const SYSTEMTIME& time) {
  COleDateTime date;
  if (!exists || !SystemTimeToVariantTime(time, date.value)) date.status = StatusInvalid;
  return date;
}

}  // namespace

COleDateTimeNull UtcToLocal(COleDateTimeNull value) {
  if (value.status != StatusValid) return value;
  TIME_ZONE_INFORMATION zone;
  GetTimeZoneInformation(zone);
  SYSTEMTIME utc;
  SYSTEMTIME local;
  const bool exists = VariantTimeToSystemTime(value.value, utc) &&
                      SystemTimeToTzSpecificLocalTime(zone, utc, local);
  return DateTimeOf(exists, local);
}

COleDateTime ConvertDateTime(const COleDateTime& value) {
  SYSTEMTIME local;
  SYSTEMTIME utc;
  const bool exists = value.status == StatusValid && VariantTimeToSystemTime(value.value, local) &&
                      LocalToUtc(nullptr, local, utc);
  return DateTimeOf(exists, utc);
}

bool LocalToUtc(const TIME_ZONE_INFORMATION* zone, const SYSTEMTIME& local, SYSTEMTIME& utc) {
  TIME_ZONE_INFORMATION current;
  if (zone == nullptr) {
    GetTimeZoneInformation(current);
    zone = &current;
  }
  const auto refuse = [] {
    SetLastError(ERROR_INVALID_PARAMETER);
    return false;
  };
  const auto seconds = SecondsFromSystemTime(local);
  if (!seconds) return refuse();
  std::int64_t bias = zone->Bias;
  if (zone->StandardDate.wMonth != 0 && zone->DaylightDate.wMonth != 0) {
    const auto daylight_start = ZoneChangeInYear(zone->DaylightDate, local.wYear);
    if (!daylight_start) return refuse();
    const auto standard_start = ZoneChangeInYear(zone->StandardDate, local.wYear);
    if (!standard_start) return refuse();
    const bool is_northern = *daylight_start <= *standard_start;
    const bool is_daylight = is_northern
                                 ? *seconds >= *daylight_start && *seconds < *standard_start
                                 : *seconds >= *daylight_start || *seconds < *standard_start;
    bias += is_daylight ? zone->DaylightBias : zone->StandardBias;
  }
  if (!SystemTimeFromSeconds(*seconds + bias * 60, utc)) return refuse();
  SetLastError(ERROR_SUCCESS);
  return true;
}

}  // namespace pim
