// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "pim/Export.h"
#include "pim/stream/TextObserver.h"
#include "pim/support/ParseFailure.h"
#include "pim/support/Strings.h"

namespace pim {

// How far an import of contacts has come.
struct ContactImportCounts {
  std::int64_t bytes = 0;   // of the text, read
  std::int64_t inText = 0;  // cards read
  std::int64_t stored = 0;  // newly stored or updated; the others are there already
  bool linked = true;       // false when groups or links to them couldn't be stored
  // The names of the pictures that the newly stored contacts have.
  std::vector<WideString> pictures;
};

// What VObjectMgr::Import_Contact does with a file's text, for texts that a host holds itself. The
// text is stored in batches inside one transaction, so that memory doesn't grow with the number of
// cards. A byte order mark, which Import_Contact steps over, must not be handed over: the first
// card would be missing. `saveOption` and `saveFlag` are those of Import_Contact.
//
// `progress`, where given, is called behind each batch with what has been done so far; what it
// throws ends the import and passes to the caller. `observer` is told what else the text holds.
// Gives the number newly stored or updated, or -1 when the store fails; throws kParseFailure for a
// rejected text, FileError for a picture that can't be written to its end, and std::bad_alloc. In
// all these cases the store is as before, and `counts` tells what was read; the files of pictures
// that were read stay in the caller-ID folder.
//
// Threads may import at once, each into a store of its own; calls come in the thread that imports.
[[nodiscard]] PIM_EXPORT std::int32_t ImportContactText(
    std::int32_t db, NarrowStringView text, std::int32_t saveOption, bool saveFlag,
    ContactImportCounts& counts,
    const std::function<void(const ContactImportCounts&)>& progress = {},
    const TextObserver& observer = {});

}  // namespace pim
