// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/records/RecordStore.h"

namespace pim {

RecordStore::~RecordStore() = default;

}  // namespace pim
