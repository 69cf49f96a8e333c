// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pim/records/Calendar.h"
#include "support/ByteBuffer.h"

namespace pim {

// Replaces the text of `buffer` by all the items as one vCalendar 1.0 text, in their order: ASCII,
// other characters as UTF-8 under quoted-printable, lines in CR LF, none behind the last one. Times
// are UTC, but for all-day items, whose days are the machine's local ones; a date-time that isn't
// valid has no line. `tag` becomes the low 16 bits of the last item's key. No items change nothing.
// Throws SizeOverflow for a text beyond 31 bits.
void WriteVCalendar(const CCalendars& items, VObjectBuffer& buffer);

}  // namespace pim
