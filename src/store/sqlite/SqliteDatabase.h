// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sqlite3.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "store/Database.h"

namespace pim {

class SqliteStatement;

// How long locks are waited for, all waits between two successes together, and who may end that
// early (none: nobody).
struct LockWait {
  std::chrono::milliseconds limit;
  std::function<bool()> givesUp;
};

// The connection to one SQLite file. Its name is the file's path.
class SqliteDatabase final : public Database {
 public:
  // Opens the file, or creates it where `access` is Create, and sets the connection up; looks at
  // none of its content. With `isImmutable` nobody can change it, and no file is made beside it.
  SqliteDatabase(std::string path, StoreAccess access, bool isImmutable, LockWait lockWait);
  ~SqliteDatabase() override;

  sqlite3* handle() const noexcept { return handle_.get(); }

  std::unique_ptr<PreparedStatement> Prepare(const std::string& sql) override;
  std::unique_ptr<BulkRows> RowsInto(std::string_view, std::span<const std::string_view>) override {
    return nullptr;
  }
  // Who writes has the file for itself.
  void KeepOthersOut() override {}
  void KeepOtherSeekersOut() override {}
  void KeepOtherClaimsOut() override {}
  bool IsShared() const noexcept override { return false; }
  const std::vector<TableLayout>& Tables() const override { return StoreTables(); }
  bool HasAllTables() override;
  std::int64_t OutsideVersion() override;
  std::vector<std::int32_t> TakeKeys(std::string_view, std::size_t) override { return {}; }
  std::string NextNumberSql(std::string_view table,
                            std::initializer_list<std::string_view> tables) const override;
  std::string SelectColumnNamesSql() const override;
  void AdoptKeys() override {}
  std::string NewImportMark() override;
  bool IsImporting(std::string_view mark) override;

  // Runs statements that give no rows.
  void Run(const char* sql);
  // From now on nothing can be written.
  void ForbidWriting() { Run("PRAGMA query_only=ON"); }
  // What a killed program left in its log stays there when this is closed.
  void KeepLog() noexcept;
  void IsMade() noexcept { SetNew(); }

  // Whether the last call found the file locked and another try may be made: SQLite waits by itself
  // for most locks, but not where a file changes its way of logging. Has waited a little then.
  [[nodiscard]] bool MayWaitAgain();

  // Throws what went wrong in SQLite's last call, which gave `code`.
  [[noreturn]] void Fail(int code);
  using Database::Fail;

 private:
  struct Close {
    void operator()(sqlite3* db) const noexcept { sqlite3_close_v2(db); }
    void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
  };
  // Imports of small files are savepoints for the most part, so theirs are prepared once.
  using Prepared = std::unique_ptr<sqlite3_stmt, Close>;
  void Run(Prepared& statement, const char* sql);
  static int Wait(void* database, int attempts);
  static int GivesUp(void* database);

  void ForgetFailure() noexcept override { lastFailure_ = SQLITE_OK; }
  void StartTransaction(bool alone) override;
  void CommitTransaction() override { Run("COMMIT"); }
  void StartInner() override { Run(savepoint_, "SAVEPOINT inner"); }
  void CommitInner() override { Run(release_, "RELEASE inner"); }
  bool Undo(bool outermost) noexcept override;
  bool IsUndone() const noexcept override { return sqlite3_get_autocommit(handle_.get()) != 0; }
  void StartReading() override { Run("BEGIN"); }
  void FinishReading(bool last) noexcept override;

  LockWait lockWait_;
  std::chrono::milliseconds waited_{0};  // since a lock was last had
  std::unique_ptr<sqlite3, Close> handle_;
  Prepared savepoint_;
  Prepared release_;
  std::unique_ptr<SqliteStatement> dataVersion_;
  int lastFailure_ = 0;  // SQLite's code
};

}  // namespace pim
