// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <mutex>
#include <unordered_map>

#include "pim/records/RecordStore.h"
#include "records/LastStore.h"

namespace pim {

namespace {

// Each thread has its own store open, but they share the numbers.
struct Bindings {
  std::mutex mutex;
  std::unordered_map<std::int32_t, RecordStore*> stores;
  std::int32_t lastDb = 0;
};

Bindings& AllBindings() {
  static Bindings bindings;
  return bindings;
}

thread_local std::int32_t lastUsedDb = 0;

}  // namespace

StoreBinding::StoreBinding(RecordStore& store) {
  Bindings& all = AllBindings();
  const std::lock_guard lock(all.mutex);
  db_ = ++all.lastDb;
  all.stores.emplace(db_, &store);
}

StoreBinding::~StoreBinding() {
  Bindings& all = AllBindings();
  const std::lock_guard lock(all.mutex);
  all.stores.erase(db_);
}

RecordStore* StoreForHandle(std::int32_t db) noexcept {
  Bindings& all = AllBindings();
  const std::lock_guard lock(all.mutex);
  const auto found = all.stores.find(db);
  return found == all.stores.end() ? nullptr : found->second;
}

RecordStore* UseStore(std::int32_t db) noexcept {
  lastUsedDb = db;
  return StoreForHandle(db);
}

RecordStore* LastStore() noexcept { return StoreForHandle(lastUsedDb); }

}  // namespace pim
