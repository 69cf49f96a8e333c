// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "manager/Observe.h"
#include "pim/records/RecordStore.h"
#include "pim/support/Strings.h"

namespace pim {

// Reads a text into the store in batches, inside one transaction, so that memory doesn't grow with
// the number of records. `Batches` names its Reader and has records(), the collection being read;
// Store(saved), which stores all that is in it, adds it to `saved` and empties it; failed(); and
// RaiseFailure() for a text that is rejected. Gives the number stored, or -1; the store is as
// before then, and also when this throws.
template <class Batches, class Counts>
std::int32_t ImportInBatches(std::int32_t db, NarrowStringView text, Batches& batches,
                             Counts& counts, const std::function<void(const Counts&)>& progress,
                             const TextObserver& observer) {
  RecordStore* const store = StoreForHandle(db);
  std::optional<StoreTransaction> transaction;
  if (store != nullptr) {
    transaction.emplace(*store);
    if (!transaction->IsOpen()) return -1;  // each batch would be stored for good by itself
  }

  const std::size_t textAtOnce = store != nullptr ? store->TextAtOnce() : text.size();
  auto& records = batches.records();
  typename Batches::Reader reader(records);
  Observe(reader, observer);
  std::vector<SavedRecord> saved;
  const auto save = [&] {
    saved.clear();
    // Behind a failure the rest is only read: the store is to tell of the first one.
    if (batches.failed()) return records.DeleteAll();
    batches.Store(saved);
    if (observer.saved && !batches.failed()) observer.saved(saved);
  };
  bool accepted = true;
  do {
    const std::size_t size = std::min(text.size(), textAtOnce);
    const std::int32_t before = records.GetCount();
    accepted = reader.Read(text.substr(0, size), size == text.size());
    text.remove_prefix(size);
    counts.bytes += static_cast<std::int64_t>(size);
    counts.inText += records.GetCount() - before;
    if (!accepted) break;
    if (records.GetCount() > 1) {  // the last record stays open for the text that follows
      auto open = records.TakeLast();
      save();
      records.Add(std::move(open));
    }
    if (progress) progress(counts);
  } while (!text.empty());
  if (!accepted) {
    reader.EndAccount(text);
    transaction.reset();
    counts.stored = 0;
    batches.RaiseFailure();
  }
  save();
  if (batches.failed() || !transaction || !transaction->Commit()) {
    counts.stored = 0;
    return -1;
  }
  return static_cast<std::int32_t>(counts.stored);
}

}  // namespace pim
