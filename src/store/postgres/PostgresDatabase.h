// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "store/Database.h"
#include "store/postgres/PostgresConnection.h"

namespace pim {

// The connection to one schema of a PostgreSQL database.
class PostgresDatabase final : public Database {
 public:
  // Looks at none of what the schema holds.
  PostgresDatabase(const std::string& connection, StoreAccess access, const PostgresWaits& waits);
  ~PostgresDatabase() override;

  PostgresConnection& connection() noexcept { return connection_; }
  void IsMade() noexcept { SetNew(); }
  // The schema's place among the locks of programs, once the store is there.
  void FindLocks();

  std::unique_ptr<PreparedStatement> Prepare(const std::string& sql) override;
  std::unique_ptr<BulkRows> RowsInto(std::string_view table,
                                     std::span<const std::string_view> columns) override;
  void KeepOthersOut() override;
  void KeepOtherSeekersOut() override;
  void KeepOtherClaimsOut() override;
  bool MayTryAgain() const noexcept override { return connection_.MayTryAgain(); }
  bool IsShared() const noexcept override { return true; }
  std::string_view HoldingSql() const noexcept override { return " FOR KEY SHARE"; }
  std::string_view ClaimingSql() const noexcept override { return " FOR UPDATE"; }
  const std::vector<TableLayout>& Tables() const override { return ServerTables(); }
  bool HasAllTables() override { return true; }
  std::int64_t OutsideVersion() override;
  std::vector<std::int32_t> TakeKeys(std::string_view table, std::size_t wanted) override;
  std::string NextNumberSql(std::string_view table,
                            std::initializer_list<std::string_view> tables) const override;
  std::string SelectColumnNamesSql() const override;
  void AdoptKeys() override;
  std::string NewImportMark() override;
  bool IsImporting(std::string_view mark) override;

 private:
  // What is known of a commit that is under way.
  struct PendingCommit {
    std::int64_t number;
    std::string transaction;  // PostgreSQL's number of it
  };

  // But for what follows from one.
  void ForgetFailure() noexcept override {
    if (!connection_.HasFailed()) connection_.SetMayTryAgain(false);
  }
  void StartTransaction(bool alone) override;
  void CommitTransaction() override;
  void StartInner() override;
  void CommitInner() override;
  bool Undo(bool outermost) noexcept override;
  std::string UndoneBy() const override { return connection_.problem(); }
  bool IsUndone() const noexcept override { return connection_.HasFailed(); }
  void StartReading() override;
  void FinishReading(bool last) noexcept override;

  // The savepoint of the transaction inside that depth.
  std::string Inner(std::size_t depth) const {
    return "inner_" + std::to_string(savepoints_[depth]);
  }
  template <class Operation>
  void OnConnection(Operation operation);
  void LockImport();
  void EndFormerSession();
  std::string NoteCommit();
  bool HasRow(const PendingCommit& commit);
  bool IsUnderWay(const std::string& transaction);
  bool HasCommitted(const PendingCommit& commit);
  std::vector<std::int32_t> FreeKeys(const TableLayout& table, std::size_t wanted);
  void AdoptKeysOf(const TableLayout& table);

  PostgresConnection connection_;
  bool isReadOnly_;
  // Each has a number of its own: where one was never made, since what went before it has failed,
  // no other is to be taken for it.
  std::uint64_t lastSavepoint_ = 0;
  std::vector<std::uint64_t> savepoints_;  // by the depth outside
  std::uint64_t statements_ = 0;           // prepared
  std::int64_t connectionId_;              // of the row in LastCommits
  std::int64_t commits_ = 0;               // the number of the last one
  std::int64_t lock_ = 0;                  // of the schema
  std::int64_t importLock_ = 0;            // that its imports have; 0: there was none yet
  std::uint64_t importLockedOn_ = 0;       // the connection's generation
};

}  // namespace pim
