// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdlib>
#include <string_view>

#include "support/DateTimeText.h"
#include "vcalendar/VCalendarForms.h"

// Date-time texts give a date that exists, or say that they don't; a date comes back from its
// figures in UTC.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  pim::COleDateTimeNull date;
  pim::ParseDateTime(text, date);
  if (date.status == pim::StatusValid && date.GetYear() < 100) std::abort();
  if (date.status != pim::StatusValid && date.GetYear() != -1) std::abort();
  if (date.status == pim::StatusValid) {
    pim::DateTimeText figures(date);
    pim::COleDateTimeNull again;
    pim::ParseDateTime(figures.AddDate().AddMinutes().Add("00Z"), again);
    if (again != date) std::abort();
  }
  pim::COleDateTimeSpan span;
  pim::ParseDuration(text, span);
  pim::ParseUtcOffset(text, span);
  pim::IsAllDayForm(text);
  pim::CCalendarZone zone;
  pim::ParseDaylight(text.data(), static_cast<std::int32_t>(size), 0, 1, zone);
  pim::CReminder reminder;
  pim::ParseAlarm(text.data(), static_cast<std::int32_t>(size), 0, 1, reminder);
  return 0;
}
