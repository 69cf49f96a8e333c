// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "app/output/LocalTimes.h"
#include "pim/records/Calendar.h"

namespace pim::app {

// Calendar items in a person's words.

// "event", "to-do" or "memo"; any other kind is an event too.
std::string_view NounOf(CalendarType kind);

// How an item is called: its summary, else its description.
WideString ItemName(const CCalendar& item);

// Start or end of an item: a day for an all-day one, else local time.
std::string SpanEndText(const CCalendar& item, const COleDateTime& utc, const LocalTimes& times);

// "every 2 weeks on MO FR, 4 times, until 2010-12-31 23:59"; empty without a rule.
std::string RuleText(const CRecurrence& holder);

}  // namespace pim::app
