// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pim/Export.h"
#include "pim/records/Calendar.h"
#include "pim/records/Contact.h"
#include "pim/support/Strings.h"

namespace pim {

// Records written to bytes in memory without a store, in the form that SetWritingForm chose: ASCII,
// other characters as UTF-8 under quoted-printable (telephone numbers in the default code page),
// lines in CR LF, none behind the last one. All of them throw std::length_error for a text beyond
// 31 bits, and std::bad_alloc.
//
// Any number of threads may write at once, the same record too, as long as none changes it, the
// writing form or what Host.h sets.

// One vCard 2.1 text, with the names of groups that the record itself holds. The picture is read
// from the caller-ID folder; one that isn't there has no line.
PIM_EXPORT NarrowString WriteContact(const CContact& contact);

// One vCalendar 1.0 text with all the items in their order. Times are UTC, but for all-day items,
// whose days are the machine's local ones. No items give an empty text.
PIM_EXPORT NarrowString WriteCalendars(const CCalendars& items);

}  // namespace pim
