// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pim/records/Recurrence.h"
#include "pim/support/Strings.h"
#include "support/PropertyLines.h"

namespace pim {

// Appends the lines of an item's rules. Without a repeat rule there is no exception rule either.
void AppendRuleLines(PropertyLines& out, const CRecurrence& recurrence,
                     const CRecurrence& exceptionRule);

// Replaces `text` by the rule in vCalendar 1.0's basic grammar. False, with an empty text, for a
// rule whose type is no RecurrenceType.
[[nodiscard]] bool FormatRule(const RecurrenceData& data, NarrowString& text);

// The text, a blank and the end date as it is stored, with its seconds; the text alone for one that
// is no date.
NarrowString AppendEndDate(NarrowString text, const COleDateTime& endDate);

}  // namespace pim
