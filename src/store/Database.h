// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "pim/store/DatabaseStore.h"
#include "records/StoreLayout.h"
#include "store/Prepared.h"

namespace pim {

// A connection to one database, with the transactions on it: what each engine gives, and what all
// else in the stores over databases is written over. Operations throw StoreError, which names the
// store.
class Database {
 public:
  // `name` is what messages call the store.
  explicit Database(std::string name) : name_(std::move(name)) {}
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;
  virtual ~Database() = default;

  const std::string& name() const noexcept { return name_; }

  // A statement of that text, whose parameters are "?" or "?1", "?2".
  [[nodiscard]] virtual std::unique_ptr<PreparedStatement> Prepare(const std::string& sql) = 0;
  // Null where statements of several rows are as quick.
  [[nodiscard]] virtual std::unique_ptr<BulkRows> RowsInto(
      std::string_view table, std::span<const std::string_view> columns) = 0;

  // Writers of one file wait for each other at the beginning of the outermost transaction; those of
  // a server work side by side, but for one that wants to be alone until the transaction ends.
  // Inner ones are savepoints.
  void Begin(bool alone = false);
  void Commit();
  bool Rollback() noexcept;
  // Until the transaction ends no other store object writes. Two that have written already, and
  // want that, are in each other's way.
  virtual void KeepOthersOut() = 0;
  // Until the transaction ends no other store object looks for equal records in order to store one.
  virtual void KeepOtherSeekersOut() = 0;
  // The same for giving names to new groups.
  virtual void KeepOtherClaimsOut() = 0;
  // Between the two, which nest, all reading sees one state, and nothing may be written.
  void BeginReading();
  void EndReading() noexcept;
  bool IsBeingRead() const noexcept { return readings_ > 0; }
  // Throws once the open transaction has been undone, by the engine or with its connection: what
  // comes behind would be outside of any.
  void CheckTransaction();
  // The same for a reading.
  void CheckReading();

  // Whether opening it has made the store.
  bool IsNew() const noexcept { return isNew_; }
  // Whether the last failure may pass when all is done again.
  [[nodiscard]] virtual bool MayTryAgain() const noexcept { return false; }

  // Whether many write at once, as in a server: then unique indexes see to what the one writer of a
  // file sees to, and what records hold is looked up there.
  [[nodiscard]] virtual bool IsShared() const noexcept = 0;
  // What ends a SELECT whose rows nobody may delete until the transaction ends, and one whose rows
  // nobody else may so hold; nothing where one writes at a time.
  [[nodiscard]] virtual std::string_view HoldingSql() const noexcept { return {}; }
  [[nodiscard]] virtual std::string_view ClaimingSql() const noexcept { return {}; }
  // The tables of the store, owners before their lists.
  [[nodiscard]] virtual const std::vector<TableLayout>& Tables() const = 0;
  // A store of an earlier version that is only read has no tables of what came later.
  [[nodiscard]] virtual bool HasAllTables() = 0;
  // Another number when programs that know nothing of this one have changed the store.
  [[nodiscard]] virtual std::int64_t OutsideVersion() = 0;

  // Where an engine gives keys itself, takes as many of that table's as it likes to, at least one
  // and none that a row has, ascending; else none.
  [[nodiscard]] virtual std::vector<std::int32_t> TakeKeys(std::string_view table,
                                                           std::size_t wanted) = 0;
  // An expression that gives the next number of a table's key; new ones go on where rows of
  // `tables` still refer to one whose own row another program has deleted.
  [[nodiscard]] virtual std::string NextNumberSql(
      std::string_view table, std::initializer_list<std::string_view> tables) const = 0;
  // The names of the columns that a table has, none for a table that isn't there.
  [[nodiscard]] virtual std::string SelectColumnNamesSql() const = 0;
  // Rows with keys of their own have been stored in all tables: what gives keys goes on behind
  // them.
  virtual void AdoptKeys() = 0;

  // The name under which an import is under way in this process, and whether one of such a name
  // still is.
  [[nodiscard]] virtual std::string NewImportMark() = 0;
  [[nodiscard]] virtual bool IsImporting(std::string_view mark) = 0;

  // For what the engine doesn't find wrong itself.
  [[noreturn]] void Fail(const std::string& problem);

 protected:
  // Ahead of such a failure.
  virtual void ForgetFailure() noexcept = 0;
  // What the transactions are made of.
  virtual void StartTransaction(bool alone) = 0;
  virtual void CommitTransaction() = 0;
  virtual void StartInner() = 0;
  virtual void CommitInner() = 0;
  // Undoes the innermost transaction, which is the `outermost` too, or not.
  virtual bool Undo(bool outermost) noexcept = 0;
  // What has undone the open transaction or the reading, as far as the engine knows.
  [[nodiscard]] virtual std::string UndoneBy() const { return {}; }
  // Whether the open transaction has been undone.
  [[nodiscard]] virtual bool IsUndone() const noexcept = 0;
  // Outside of transactions.
  virtual void StartReading() = 0;
  // However a reading has ended; with the `last` one what StartReading began ends.
  virtual void FinishReading(bool last) noexcept = 0;

  void SetNew() noexcept { isNew_ = true; }
  std::size_t depth() const noexcept { return depth_; }

 private:
  friend class ReadTransaction;
  [[noreturn]] void FailUndone(const char* what);

  std::string name_;
  std::size_t depth_ = 0;
  int readings_ = 0;
  bool reading_ = false;
  bool isNew_ = false;
};

// Part of a reading, or one of its own.
class NestedReading {
 public:
  explicit NestedReading(Database& db) : db_(db) { db.BeginReading(); }
  NestedReading(const NestedReading&) = delete;
  NestedReading& operator=(const NestedReading&) = delete;
  ~NestedReading() { db_.EndReading(); }

 private:
  Database& db_;
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
