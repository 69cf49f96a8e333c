// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "pim/store/DatabaseStore.h"
#include "store/postgres/PostgresDatabase.h"

namespace pim {

// The statements that make the tables, in the first schema of the search path; where some are there
// already, those that are missing, and the columns too.
std::string PostgresSchemaSql();

// Brings the store to this version, or makes it where `access` lets it. Throws StoreError, with the
// schema as it was.
void OpenPostgresStore(PostgresDatabase& db, StoreAccess access);

}  // namespace pim
