// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "pim/Export.h"
#include "pim/store/DatabaseStore.h"

namespace pim {

// The store in a PostgreSQL server, from version 14 on. Each store has a connection of its own;
// importers of many processes and machines work side by side.
//
// The connection string is libpq's, all of it: "postgresql://ann@db1,db2/pim?sslmode=verify-full",
// "service=pim", "host=/run/postgresql dbname=pim options=-csearch_path=ann". Several address books
// live in one database as one schema each. What it leaves out comes from where libpq looks: PGHOST
// and the like, and .pgpass. No message names a password.

// How long a store waits. All of it but connecting, where libpq's connect_timeout counts for each
// host, ends early once `givesUp`, asked ten times a second or more, gives true; so does what the
// server is working on.
struct PostgresWaits {
  // For locks of other programs, in one statement.
  std::chrono::milliseconds lock = std::chrono::seconds(30);
  // For a server that can be written, once a connection was lost: a failover.
  std::chrono::milliseconds failover = std::chrono::seconds(60);
  // For a server that says nothing, until another connection asks whether it is still there.
  std::chrono::milliseconds silence = std::chrono::seconds(15);
  // None: nobody gives up.
  std::function<bool()> givesUp = {};
};

// Records in one schema of a PostgreSQL database: the first one of the search path.
//
// A transaction that a lost connection has undone fails as a whole, and MayTryAgain() is true; the
// next one connects anew. A commit whose answer was lost is found out before it is told.
class PIM_POSTGRES_EXPORT PostgresStore final : public DatabaseStore {
 public:
  // Connects, and makes the store's tables where there are none and `access` lets it: in one
  // transaction, and once where several do it at a time. Tables of a newer version, and those of
  // another program that bear the names of a store's, are left as they are. Throws StoreError, or
  // NoStoreError where the store must be there and isn't.
  explicit PostgresStore(const std::string& connection, StoreAccess access = StoreAccess::Create,
                         const PostgresWaits& waits = {});
  ~PostgresStore() override;

  // The statements that make the store's tables, for whoever has the right to: "psql -f" takes
  // them. They ask for no connection.
  [[nodiscard]] static std::string SchemaSql();
  // Whether the text is a connection's URL, "postgresql://" or "postgres://" in front.
  [[nodiscard]] static bool IsUrl(std::string_view text) noexcept;
  // The connection without its passwords, as messages name it. Throws StoreError for a text that
  // libpq doesn't take.
  [[nodiscard]] static std::string ShownName(const std::string& connection);
};

}  // namespace pim
