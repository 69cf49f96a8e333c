// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "pim/records/Recurrence.h"
#include "pim/support/Loss.h"

namespace pim {

// Reads a repeat rule in vCalendar 1.0's basic grammar, such as "W1 MO FR #4". For any other text
// it shows a message, and the holder is left without a rule. Gives what of the text it doesn't
// hold.
LossMask ParseRecurrence(const char* bytes, std::int32_t length, CRecurrence& holder);

// Puts the value in its place in a rule's list, unless it is there already.
void AddSorted(RecurrenceList& list, std::int32_t value);

}  // namespace pim
