// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sqlite3.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "pim/store/SqliteStore.h"

namespace pim {

// How long locks are waited for, all waits between two successes together, and who may end that
// early (none: nobody).
struct LockWait {
  std::chrono::milliseconds limit;
  std::function<bool()> givesUp;
};

// The connection to one SQLite file, with the transactions on it. Operations throw StoreError,
// which names the file.
class Database {
 public:
  // Opens the file, or creates it where `access` is Create, and sets the connection up; looks at
  // none of its content. With `isImmutable` nobody can change it, and no file is made beside it.
  Database(std::string path, StoreAccess access, bool isImmutable, LockWait lockWait);
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  sqlite3* handle() const noexcept { return handle_.get(); }
  const std::string& path() const noexcept { return path_; }

  // Runs statements that give no rows.
  void Run(const char* sql);
  // Writers wait for each other at the beginning of the outermost transaction, so that none fails
  // in the middle. Inner ones are savepoints.
  void Begin();
  void Commit();
  bool Rollback() noexcept;
  // Between the two, which nest, all reading sees one state, and nothing may be written.
  void BeginReading();
  void EndReading() noexcept;
  bool IsBeingRead() const noexcept { return readings_ > 0; }
  // From now on nothing can be written.
  void ForbidWriting() { Run("PRAGMA query_only=ON"); }
  // What a killed program left in its log stays there when this is closed.
  void KeepLog() noexcept;
  // Throws once SQLite has undone the open transaction by itself, as it does on a full disk: what
  // comes behind would be outside of any.
  void CheckTransaction();

  // Whether the last call found the file locked and another try may be made: SQLite waits by itself
  // for most locks, but not where a file changes its way of logging. Has waited a little then.
  [[nodiscard]] bool MayTryAgain();

  // Throws what went wrong in SQLite's last call, which gave `code`.
  [[noreturn]] void Fail(int code);
  [[noreturn]] void Fail(const std::string& problem);

 private:
  friend class ReadTransaction;
  struct Close {
    void operator()(sqlite3* db) const noexcept { sqlite3_close_v2(db); }
    void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
  };
  // Imports of small files are savepoints for the most part, so theirs are prepared once.
  using Prepared = std::unique_ptr<sqlite3_stmt, Close>;
  void Run(Prepared& statement, const char* sql);
  static int Wait(void* database, int attempts);
  static int GivesUp(void* database);

  std::string path_;
  LockWait lockWait_;
  std::chrono::milliseconds waited_{0};  // since a lock was last had
  std::unique_ptr<sqlite3, Close> handle_;
  Prepared savepoint_;
  Prepared release_;
  int lastFailure_ = 0;  // SQLite's code
  int depth_ = 0;
  int readings_ = 0;
  bool reading_ = false;
};

// One reading: no other, and no writing, may begin before it ends.
class ReadTransaction {
 public:
  explicit ReadTransaction(Database& db);
  ReadTransaction(const ReadTransaction&) = delete;
  ReadTransaction& operator=(const ReadTransaction&) = delete;
  ~ReadTransaction();

 private:
  Database& db_;
};

}  // namespace pim
