// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pim/support/Strings.h"

namespace pim {

// The properties under which an item goes out what RFC 5545 has no place for, or another one than
// records have. Other programs pass them on, or drop them; what comes back to this one is whole.

// Kept under the names that devices know.
inline constexpr const char* kOwnColor = "X-COLOR";
inline constexpr const char* kOwnHoliday = "X-HOLIDAY";
inline constexpr const char* kOwnModified = "X-MODIFIED";

// Dates in a component that may have no such property, or not with that value. Of an all-day item
// DTEND is a day, and the last one.
inline constexpr const char* kOwnStart = "X-PIMVOBJ-DTSTART";
inline constexpr const char* kOwnEnd = "X-PIMVOBJ-DTEND";
inline constexpr const char* kOwnDue = "X-PIMVOBJ-DUE";
inline constexpr const char* kOwnCompleted = "X-PIMVOBJ-COMPLETED";

inline constexpr const char* kOwnLocation = "X-PIMVOBJ-LOCATION";
inline constexpr const char* kOwnPriority = "X-PIMVOBJ-PRIORITY";
inline constexpr const char* kOwnStatus = "X-PIMVOBJ-STATUS";

// Rules in vCalendar 1.0's grammar, where RRULE says less or EXDATE has their dates. They count
// only while those say the same.
inline constexpr const char* kOwnRule = "X-PIMVOBJ-RRULE";
inline constexpr const char* kOwnException = "X-PIMVOBJ-XRULE";

// An alarm that no VALARM can be, and the codes of any: vCalendar 1.0's value and parameters.
inline constexpr const char* kOwnAlarm = "X-PIMVOBJ-AALARM";
inline constexpr const char* kOwnAlarmFormat = "X-PIMVOBJ-AALARM-FORMAT";

// The zone: vCalendar 1.0's values, or that its times are local ones of a machine.
inline constexpr const char* kOwnOffset = "X-PIMVOBJ-TZ";
inline constexpr const char* kOwnDaylight = "X-PIMVOBJ-DAYLIGHT";
inline constexpr const char* kOwnOffsetOfMachine = "LOCAL";

}  // namespace pim
