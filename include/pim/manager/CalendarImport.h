// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>

#include "pim/Export.h"
#include "pim/records/TypeCodes.h"
#include "pim/stream/TextObserver.h"
#include "pim/support/ParseFailure.h"
#include "pim/support/Strings.h"

namespace pim {

// How far an import of items has come.
struct CalendarImportCounts {
  std::int64_t bytes = 0;   // of the text, read
  std::int64_t inText = 0;  // items read, of all kinds
  std::int64_t kept = 0;    // of a kind that the import keeps: known once the next item begins
  std::int64_t stored = 0;  // of those, newly stored or updated; the others are there already
};

// What VObjectMgr::Import_Calendar (as `flow` Event), Import_Todo and Import_Memo do with a file's
// text, for texts that a host holds itself. The text is stored in batches inside one transaction,
// so that memory doesn't grow with the number of items. `saveFlag` is that of CCalendars::SaveToDB.
//
// `progress`, where given, is called behind each batch with what has been done so far; what it
// throws ends the import and passes to the caller. `observer` is told what else the text holds.
// Gives the number newly stored or updated, or -1 when the store fails; throws kParseFailure for a
// rejected text, and std::bad_alloc. In all these cases the store is as before, and `counts` tells
// what was read.
//
// Threads may import at once, each into a store of its own; calls come in the thread that imports.
[[nodiscard]] PIM_EXPORT std::int32_t ImportCalendarText(
    std::int32_t db, CalendarType flow, NarrowStringView text, bool saveFlag,
    CalendarImportCounts& counts,
    const std::function<void(const CalendarImportCounts&)>& progress = {},
    const TextObserver& observer = {});

}  // namespace pim
