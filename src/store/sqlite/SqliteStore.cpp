// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/store/SqliteStore.h"

#include <utility>

#include "store/SqlStore.h"
#include "store/sqlite/StoreFile.h"

namespace pim {

SqliteStore::SqliteStore(const std::string& path, std::chrono::milliseconds lockWait,
                         std::function<bool()> givesUp)
    : SqliteStore(path, StoreAccess::Create, lockWait, std::move(givesUp)) {}

SqliteStore::SqliteStore(const std::string& path, StoreAccess access,
                         std::chrono::milliseconds lockWait, std::function<bool()> givesUp)
    : DatabaseStore(
          std::make_unique<SqlStore>(OpenStoreFile(path, access, {lockWait, std::move(givesUp)}))) {
}

SqliteStore::~SqliteStore() = default;

}  // namespace pim
