// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pim/records/RecordStore.h"

namespace pim {

// The store bound to `db`, or null; from now on it is this thread's last one, null or not.
RecordStore* UseStore(std::int32_t db) noexcept;

// The store of the last operation with a handle in this thread, or null.
RecordStore* LastStore() noexcept;

}  // namespace pim
