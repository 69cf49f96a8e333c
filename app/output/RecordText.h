// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "app/labels/Labels.h"
#include "pim/records/Calendar.h"
#include "pim/records/Contact.h"

namespace pim::app {

// All that a record holds, one line for each value, indented; times in UTC, as the record has them.
std::string LinesOf(const CContact& contact, const Titles& titles);
std::string LinesOf(const CCalendar& item, const Titles& titles);

}  // namespace pim::app
