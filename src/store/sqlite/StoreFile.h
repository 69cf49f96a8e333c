// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "store/sqlite/SqliteDatabase.h"

namespace pim {

// What tells our files from others.
inline constexpr std::int32_t kApplicationId = 0x50696D56;  // "PimV"
// The first version whose records have the tables that they have now: such a store can be read as
// it is.
inline constexpr std::int32_t kReadableVersion = 1;

// Opens the store and brings it to this version, or makes a new one where `access` lets it; one
// that is opened for reading alone stays as it is where it is readable. Throws StoreError; a file
// of another program or of a newer version is then as it was, with nothing beside it.
std::unique_ptr<SqliteDatabase> OpenStoreFile(const std::string& path, StoreAccess access,
                                              LockWait lockWait);

}  // namespace pim
