// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "pim/stream/TextAccount.h"
#include "pim/stream/TextWatch.h"

namespace pim {

// A record of a text that an import has handed to the store: its index among all that begin in the
// text, as in AccountEntry, and the key that it has now, which is that of a stored one where it
// equalled that.
struct SavedRecord {
  std::int64_t record = 0;
  std::int32_t key = 0;
};

// Takes the records that were saved since the last call, in the order of the text; each behind its
// entries of the account.
using TakeSaved = std::function<void(std::span<const SavedRecord> records)>;

// What a host wants to be told while a text is read; nothing by default, and at no cost then.
struct TextObserver {
  WatchText notice = {};
  TakeEntry entry = {};
  TakeSaved saved = {};  // imports alone
};

}  // namespace pim
