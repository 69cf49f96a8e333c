// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "formats/icalendar/Ical.h"
#include "pim/records/Recurrence.h"

namespace pim {

// The rule of RRULE's value as a record has it, for an item that begins at `start`, a day or a time
// in whatever zone; null for a value that is none, and for a rule that records can't say.
RecurrencePointer RuleOfRRule(const std::string& value, const icaltimetype& start);

// The rule of a text that RuleWords gave; null for any other one.
RecurrencePointer RuleOfWords(std::string_view words);

}  // namespace pim
