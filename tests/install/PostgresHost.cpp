// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// A host of the store in a PostgreSQL server, where there is none: what goes wrong in one library
// is caught from another.
#include <cstdio>

#include "pim/store/PostgresStore.h"

int main() {
  if (!pim::PostgresStore::IsUrl("postgresql:///pim")) return 1;
  if (pim::PostgresStore::SchemaSql().find("CREATE TABLE") == std::string::npos) return 1;
  try {
    pim::PostgresStore("host=/nowhere/at/all dbname=pim");
  } catch (const pim::StoreError& error) {
    std::printf("%s\n", error.what());
    return 0;
  }
  return 1;
}
