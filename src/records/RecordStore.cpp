// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/records/RecordStore.h"

namespace pim {

RecordStore::~RecordStore() = default;

// Large enough that a save's statements outweigh its bookkeeping, small enough that its records
// stay in the cache and in the same memory.
std::size_t RecordStore::TextAtOnce() const noexcept { return std::size_t{256} * 1024; }

}  // namespace pim
