// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdlib>
#include <string_view>

#include "platform/ZoneFile.h"
#include "platform/ZoneRule.h"
#include "support/DateTimeZones.h"

namespace {

// Whether a zone that was read can be worked with: a time of any year comes back from UTC within a
// day, and never beyond it.
void Use(const pim::TIME_ZONE_INFORMATION& zone) {
  for (const int year : {100, 1970, 2024, 9999}) {
    pim::SYSTEMTIME local;
    local.wYear = static_cast<std::uint16_t>(year);
    local.wMonth = 7;
    local.wDay = 2;
    local.wHour = 12;
    pim::SYSTEMTIME utc;
    pim::SYSTEMTIME back;
    if (!pim::LocalToUtc(&zone, local, utc)) continue;
    if (!pim::SystemTimeToTzSpecificLocalTime(zone, utc, back)) continue;
    const auto from = pim::SecondsFromSystemTime(local);
    const auto to = pim::SecondsFromSystemTime(back);
    if (!from || !to || std::llabs(*from - *to) > 2 * 86400) std::abort();
  }
}

}  // namespace

// A zone file or rule of any bytes gives a zone that works, or none and leaves the zone as it was.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  pim::TIME_ZONE_INFORMATION zone;
  zone.Bias = 77;
  if (pim::ParseZoneFile(bytes, 1700000000, zone)) {
    Use(zone);
  } else if (zone.Bias != 77) {
    std::abort();
  }
  pim::TIME_ZONE_INFORMATION rule;
  rule.Bias = 77;
  if (pim::ParseZoneRule(bytes, rule)) {
    Use(rule);
  } else if (rule.Bias != 77) {
    std::abort();
  }
  return 0;
}
