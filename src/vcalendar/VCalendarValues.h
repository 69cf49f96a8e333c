#pragma once

#include <cstdint>
#include <optional>

#include "pim/records/Calendar.h"
#include "pim/stream/TextWatch.h"

namespace pim {

struct VCalReadContext;

// Whether the date property ahead had the all-day form. One for the module: it outlives a text.
extern bool AllDayPending;

// Puts the value of the context's property into the item. A property without a treatment does
// nothing, and a value that can't be read leaves its field empty, null, invalid or 0. Gives what of
// a date or rule isn't understood.
std::optional<TextEvent> TakeVCalendarValue(VCalReadContext& context, const char* bytes,
                                            std::int32_t length, CCalendar& item);

// Reads YYYYMMDD, YYYYMMDDTHHMMSS (both local time) and YYYYMMDDTHHMMSSZ (UTC) into UTC. Seconds
// are dropped, and hour 24 is hour 0 of that day. Null for no date; invalid for one that doesn't
// exist. Gives whether it is understood: as a date, or as none.
bool ParseDateTime(NarrowStringView text, COleDateTimeNull& value);

// Whether a date has no time, or local midnight at its start or end: two such make an all-day item.
bool IsAllDayForm(NarrowStringView text);

// Reads +HH or +HH:MM. The sign is that of the hours.
void ParseUtcOffset(NarrowStringView text, COleDateTimeSpan& span);

// Reads PnYnMnDTnHnMnS, with a year of 365 days and a month of 30; 0 for any other text.
void ParseDuration(NarrowStringView text, COleDateTimeSpan& span);

// Reads TRUE;offset;start;end;name;name. What was there before is cleared in any case. Gives
// whether its dates are understood.
bool ParseDaylight(const char* bytes, std::int32_t length, std::int32_t charset,
                   std::int32_t encoding, CCalendarZone& zone);

// Reads time;snooze;count;text. Gives whether the time is understood.
bool ParseAlarm(const char* bytes, std::int32_t length, std::int32_t charset, std::int32_t encoding,
                CReminder& reminder);

// Adds rows for the words that items keep, and makes the item a memo when MEMO is among them.
void ParseCategories(const char* bytes, std::int32_t length, CCalendar& item);

}  // namespace pim
