// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "pim/records/Calendar.h"
#include "stream/AccountKeeper.h"
#include "stream/ValueOutcome.h"

namespace pim {

// The forms of an item's values that are neither text nor single words. What can't be read leaves
// its field null, invalid or 0.

// Reads YYYYMMDD, YYYYMMDDTHHMMSS (both local time) and YYYYMMDDTHHMMSSZ (UTC) into UTC. Seconds
// are dropped, and hour 24 is hour 0 of that day. Null for no date; invalid for one that doesn't
// exist. Gives whether it is understood: as a date, or as none.
bool ParseDateTime(NarrowStringView text, COleDateTimeNull& value);
// What of the text isn't in the value that it gave.
LossMask LossesOfDateTime(NarrowStringView text, bool isUnderstood);

// Whether a date has no time, or local midnight at its start or end: two such make an all-day item.
bool IsAllDayForm(NarrowStringView text);

// Reads +HH or +HH:MM. The sign is that of the hours. Gives whether the text has that form and
// loses no sign.
bool ParseUtcOffset(NarrowStringView text, COleDateTimeSpan& span);

// Reads PnYnMnDTnHnMnS, with a year of 365 days and a month of 30; 0 for any other text. Gives
// whether all of it is understood, which an empty text is.
bool ParseDuration(NarrowStringView text, COleDateTimeSpan& span);

// Reads TRUE;offset;start;end;name;name. What was there before is cleared in any case.
ValueOutcome ParseDaylight(const char* bytes, std::int32_t length, std::int32_t charset,
                           std::int32_t encoding, CCalendarZone& zone);

// Reads time;snooze;count;text. Of the time's losses those for an account alone are looked for
// where one is told.
ValueOutcome ParseAlarm(const char* bytes, std::int32_t length, std::int32_t charset,
                        std::int32_t encoding, CReminder& reminder,
                        Telling telling = Telling::Account);

// Adds rows for the words that items keep, and makes the item a memo when MEMO is among them.
struct CategoriesRead {
  LossMask losses = 0;
  bool hasRows = false;
  bool isMemo = false;
};
CategoriesRead ParseCategories(const char* bytes, std::int32_t length, CCalendar& item);

}  // namespace pim
