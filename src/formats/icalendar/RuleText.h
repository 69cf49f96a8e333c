// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

#include "formats/FormatLoss.h"
#include "formats/icalendar/Ical.h"
#include "pim/records/Recurrence.h"

namespace pim {

// Rules of records as those of RFC 5545. A rule's dates are the days that it names, from the
// item's start on and at its time of day; what it doesn't name is as in the start. Weeks begin on
// Monday.

struct RuleText {
  std::string text;                  // RRULE's value; empty where it can't say the rule
  std::optional<FormatReason> loss;  // why it is empty, or says something else
};
// The rule of an item that begins at `start`, which is a day, in UTC or in a zone.
RuleText RRuleOf(const RecurrenceData& rule, const icaltimetype& start);
// The same with another end than the rule's.
RuleText RRuleOf(const RecurrenceData& rule, const icaltimetype& start,
                 const COleDateTimeNull& end);

}  // namespace pim
