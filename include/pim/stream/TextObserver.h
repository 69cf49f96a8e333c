// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "pim/stream/TextAccount.h"
#include "pim/stream/TextWatch.h"

namespace pim {

// All that a host may be told while a text is read: TextWatch.h, TextAccount.h and the saves of an
// import. The calls come in the thread that reads, one at a time; an observer that several threads
// read with must be ready for their calls at once. Whatever a call throws ends the reading and
// passes to the caller.

// A record of a text that an import has handed to the store: its index among all that begin in the
// text, and the key that it has now.
struct SavedRecord {
  std::int64_t record = 0;  // from 0, as in AccountEntry
  std::int32_t key = 0;     // that of a stored record where it equalled one
};

// Takes the records that were saved since the last call, in the order of the text; each behind its
// entries of the account.
using TakeSaved = std::function<void(std::span<const SavedRecord> records)>;

// What a host wants to be told while a text is read; nothing by default, and at no cost then.
struct TextObserver {
  WatchText notice = {};  // of what isn't understood or is cut
  TakeEntry entry = {};   // of each line; reading takes longer with it
  TakeSaved saved = {};   // of records in the store; imports alone
};

}  // namespace pim
