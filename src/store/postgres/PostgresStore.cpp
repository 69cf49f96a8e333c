// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/store/PostgresStore.h"

#include "store/SqlStore.h"
#include "store/postgres/PostgresProblems.h"
#include "store/postgres/PostgresSchema.h"

namespace pim {
namespace {

std::unique_ptr<PostgresDatabase> Open(const std::string& connection, StoreAccess access,
                                       const PostgresWaits& waits) {
  auto db = std::make_unique<PostgresDatabase>(connection, access, waits);
  OpenPostgresStore(*db, access);
  return db;
}

}  // namespace

PostgresStore::PostgresStore(const std::string& connection, StoreAccess access,
                             const PostgresWaits& waits)
    : DatabaseStore(std::make_unique<SqlStore>(Open(connection, access, waits))) {}

PostgresStore::~PostgresStore() = default;

std::string PostgresStore::SchemaSql() { return PostgresSchemaSql(); }

bool PostgresStore::IsUrl(std::string_view text) noexcept {
  return text.starts_with("postgresql://") || text.starts_with("postgres://");
}

std::string PostgresStore::ShownName(const std::string& connection) {
  return ShownConnection(connection);
}

}  // namespace pim
