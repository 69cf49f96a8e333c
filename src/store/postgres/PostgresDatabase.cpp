// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/postgres/PostgresDatabase.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <random>
#include <stdexcept>
#include <thread>

#include "records/SaveRecords.h"
#include "store/SqlText.h"
#include "store/Statement.h"
#include "store/StoredForms.h"
#include "store/postgres/CopyRows.h"
#include "store/postgres/PostgresProblems.h"
#include "store/postgres/PostgresStatement.h"
#include "store/postgres/PostgresText.h"
#include "store/postgres/WireForms.h"

namespace pim {
namespace {

// The space of locks that this program takes in a database; the other half is a schema's number.
constexpr std::int64_t kLockSpace = 0x50696D56;  // "PimV"
constexpr std::int64_t kSeekersSpace = kLockSpace + 1;
constexpr std::int64_t kClaimsSpace = kLockSpace + 2;
constexpr std::string_view kMarkHead = "postgresql ";

std::int64_t RandomNumber() {
  std::random_device device;
  std::uniform_int_distribution<std::int64_t> numbers(1, std::numeric_limits<std::int64_t>::max());
  return numbers(device);
}

WireValue Wire(std::int64_t number) {
  WireValue value{kInt8Type, false, {}};
  AppendWire(number, value.bytes);
  return value;
}

std::string LockSql(const char* function, std::int64_t space, std::int64_t lock) {
  return std::string("SELECT ") + function + "(" + std::to_string(space) + ", " +
         std::to_string(static_cast<std::int32_t>(lock)) + ")";
}

std::string SequenceOf(const TableLayout& table) {
  return "pg_get_serial_sequence('" + PostgresName(table.name) + "', '" +
         std::string(KeyOf(table)) + "')";
}

bool GivesKeys(const TableLayout& table) {
  const std::string_view key = KeyOf(table);
  const std::vector<Column> columns = table.Columns();
  return std::ranges::find(columns, key, &Column::name)->key == KeyMark::Own;
}

}  // namespace

PostgresDatabase::PostgresDatabase(const std::string& connection, StoreAccess access,
                                   const PostgresWaits& waits)
    : Database(ShownConnection(connection)),
      connection_(connection, access != StoreAccess::ReadOnly, waits),
      isReadOnly_(access == StoreAccess::ReadOnly),
      connectionId_(RandomNumber()) {}

PostgresDatabase::~PostgresDatabase() {
  if (commits_ == 0 || connection_.IsLost()) return;
  try {
    connection_.Ask("DELETE FROM lastcommits WHERE connection_id = $1", {Wire(connectionId_)});
  } catch (const StoreError&) {  // the row does no harm
  }
}

void PostgresDatabase::FindLocks() {
  const PostgresResult result =
      connection_.Ask("SELECT CAST(to_regclass('storeversions') AS oid)::bigint");
  lock_ = NumberFromWire(
      {PQgetvalue(result.get(), 0, 0), static_cast<std::size_t>(PQgetlength(result.get(), 0, 0))});
}

std::unique_ptr<PreparedStatement> PostgresDatabase::Prepare(const std::string& sql) {
  return std::make_unique<PostgresStatement>(connection_, "s" + std::to_string(++statements_), sql);
}

std::unique_ptr<BulkRows> PostgresDatabase::RowsInto(std::string_view table,
                                                     std::span<const std::string_view> columns) {
  const auto layout = std::ranges::find(Tables(), table, &TableLayout::name);
  return std::make_unique<CopyRows>(connection_, *layout, columns);
}

// What `operation` sends is the first of something; a connection that was lost since its last use
// is made anew once.
template <class Operation>
void PostgresDatabase::OnConnection(Operation operation) {
  connection_.SetUndone();
  for (const bool isLast : {false, true}) {
    if (connection_.IsLost()) {
      connection_.Reconnect();
      FindLocks();
    }
    if (importLock_ != 0 && importLockedOn_ != connection_.generation()) LockImport();
    connection_.SetUndone();  // also what a session has failed with that was ended at once
    try {
      operation();
      return;
    } catch (const StoreError&) {
      if (isLast || !connection_.IsLost() || !connection_.MayTryAgain()) throw;
      connection_.SetUndone();
    }
  }
}

// Each statement sees what others have committed (read committed), so that names and contents that
// they have brought meanwhile are found.
void PostgresDatabase::StartTransaction(bool alone) {
  if (isReadOnly_) Fail("is open for reading alone");
  OnConnection([this, alone] {
    connection_.Send("BEGIN READ WRITE");
    connection_.Send(LockSql(alone ? "pg_advisory_xact_lock" : "pg_advisory_xact_lock_shared",
                             kLockSpace, lock_));
    connection_.AwaitAll();
  });
}

void PostgresDatabase::StartInner() {
  savepoints_.resize(std::max(savepoints_.size(), depth() + 1));
  savepoints_[depth()] = ++lastSavepoint_;
  connection_.SendLater("SAVEPOINT " + Inner(depth()));
}

// What belongs to an inner one of those that stand in the outermost is known to be good then; those
// further inside leave the server to its work.
void PostgresDatabase::CommitInner() {
  connection_.SendLater("RELEASE SAVEPOINT " + Inner(depth() - 1));
  if (depth() == 2) connection_.AwaitAll();
}

void PostgresDatabase::CommitTransaction() {
  const PendingCommit commit{commits_ + 1, NoteCommit()};
  try {
    connection_.Ask("COMMIT");
  } catch (const StoreError&) {
    if (!connection_.IsLost() || commit.transaction.empty() || !HasCommitted(commit)) throw;
  }
  if (!commit.transaction.empty()) commits_ = commit.number;
  connection_.SetMayTryAgain(false);
}

// In the transaction itself, so that the row is there when it is committed, whatever server answers
// then. Empty for a transaction that has written nothing.
std::string PostgresDatabase::NoteCommit() {
  const PostgresResult result = connection_.Ask(
      "INSERT INTO lastcommits (connection_id, number) SELECT $1, $2 "
      "WHERE pg_current_xact_id_if_assigned() IS NOT NULL "
      "ON CONFLICT (connection_id) DO UPDATE SET number = excluded.number "
      "RETURNING CAST(pg_current_xact_id() AS text)",
      {Wire(connectionId_), Wire(commits_ + 1)});
  return PQntuples(result.get()) == 0 ? std::string() : PQgetvalue(result.get(), 0, 0);
}

// The answer was lost. The server that is reached now may still be at it; a server that goes on in
// another's place has the row or not, whatever its numbers of transactions mean.
bool PostgresDatabase::HasCommitted(const PendingCommit& commit) {
  constexpr auto kPause = std::chrono::milliseconds(100);
  const auto end = std::chrono::steady_clock::now() + connection_.waits().failover;
  for (;;) {
    try {
      connection_.Reconnect();
      FindLocks();
      bool hasCommitted = HasRow(commit);
      if (hasCommitted || !IsUnderWay(commit.transaction)) {
        hasCommitted = hasCommitted || HasRow(commit);
        connection_.SetMayTryAgain(true);
        return hasCommitted;
      }
      EndFormerSession();
    } catch (const StoreError&) {
      if (!connection_.IsLost() || !connection_.MayTryAgain()) throw;
    }
    if (std::chrono::steady_clock::now() >= end) {
      connection_.SetMayTryAgain(false);
      Fail("whether the last transaction is committed can't be found out");
    }
    std::this_thread::sleep_for(kPause);
  }
}

bool PostgresDatabase::HasRow(const PendingCommit& commit) {
  const PostgresResult row =
      connection_.Ask("SELECT 1 FROM lastcommits WHERE connection_id = $1 AND number = $2",
                      {Wire(connectionId_), Wire(commit.number)});
  return PQntuples(row.get()) > 0;
}

// A number that the server hasn't given yet is that of a transaction of the other server's.
bool PostgresDatabase::IsUnderWay(const std::string& transaction) {
  try {
    const PostgresResult status = connection_.Ask("SELECT pg_xact_status(CAST($1 AS xid8))",
                                                  {{kTextType, false, transaction}});
    return std::string_view(PQgetvalue(status.get(), 0, 0)) == "in progress";
  } catch (const StoreError&) {
    if (connection_.IsLost()) throw;
    return false;
  }
}

bool PostgresDatabase::Undo(bool outermost) noexcept {
  const bool mayTryAgain = connection_.MayTryAgain();
  try {
    if (!connection_.IsLost()) {
      connection_.AbortCopy();
      try {
        connection_.AwaitAll();
      } catch (const StoreError&) {  // of what is undone
      }
      connection_.Send(outermost ? "ROLLBACK" : "ROLLBACK TO SAVEPOINT " + Inner(depth()));
      if (!outermost) connection_.Send("RELEASE SAVEPOINT " + Inner(depth()));
      connection_.AwaitAll();
    }
    // An inner one goes with the transaction that a lost connection has undone.
    if (outermost || !connection_.IsLost()) connection_.SetUndone();
    connection_.SetMayTryAgain(mayTryAgain);
    return true;
  } catch (const std::exception&) {
    connection_.SetMayTryAgain(mayTryAgain);
    return false;
  }
}

void PostgresDatabase::StartReading() {
  OnConnection([this] {
    connection_.Send("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY");
    connection_.AwaitAll();
  });
}

void PostgresDatabase::FinishReading(bool last) noexcept {
  if (last) static_cast<void>(Undo(true));
}

void PostgresDatabase::KeepOthersOut() {
  connection_.Ask(LockSql("pg_advisory_xact_lock", kLockSpace, lock_));
}

void PostgresDatabase::KeepOtherSeekersOut() {
  connection_.Ask(LockSql("pg_advisory_xact_lock", kSeekersSpace, lock_));
}

void PostgresDatabase::KeepOtherClaimsOut() {
  connection_.Ask(LockSql("pg_advisory_xact_lock", kClaimsSpace, lock_));
}

std::int64_t PostgresDatabase::OutsideVersion() {
  // A change may be committed later than one of a higher number.
  const PostgresResult result =
      connection_.Ask("SELECT CAST(coalesce(sum(change_id), 0) AS bigint) FROM outsidechanges");
  return NumberFromWire({PQgetvalue(result.get(), 0, 0), sizeof(std::int64_t)});
}

std::vector<std::int32_t> PostgresDatabase::TakeKeys(std::string_view table, std::size_t wanted) {
  const TableLayout& layout = StoreTable(table);
  constexpr int kTries = 100;
  for (int tries = 0; tries < kTries; ++tries) {
    std::vector<std::int32_t> keys = FreeKeys(layout, wanted);
    if (!keys.empty()) return keys;
    // Another program has stored rows with keys of its own.
    if (tries == 0) AdoptKeysOf(layout);
    wanted = std::max<std::size_t>(wanted, 10000);
  }
  throw std::length_error("no key is left for another record");
}

// The next ones of the sequence, without those that rows have already.
std::vector<std::int32_t> PostgresDatabase::FreeKeys(const TableLayout& table, std::size_t wanted) {
  const std::string key(KeyOf(table));
  const PostgresResult next = connection_.Ask(
      "SELECT nextval(" + SequenceOf(table) + ") FROM generate_series(1, $1) ORDER BY 1",
      {Wire(static_cast<std::int64_t>(wanted))});
  const auto keysIn = [](const PostgresResult& result) {
    std::vector<std::int32_t> keys;
    keys.reserve(static_cast<std::size_t>(PQntuples(result.get())));
    for (int i = 0; i < PQntuples(result.get()); ++i) {
      keys.push_back(
          KeyFromStored(NumberFromWire({PQgetvalue(result.get(), i, 0), sizeof(std::int64_t)})));
    }
    return keys;
  };
  std::vector<std::int32_t> keys = keysIn(next);
  std::erase_if(keys, [](std::int32_t each) { return !IsStoredKey(each); });
  if (keys.empty()) return keys;
  const std::vector<std::int32_t> held =
      keysIn(connection_.Ask(PostgresSql("SELECT " + key + " FROM \"" + std::string(table.name) +
                                         "\" WHERE " + key + " BETWEEN ? AND ? ORDER BY 1"),
                             {Wire(keys.front()), Wire(keys.back())}));
  std::erase_if(keys, [&](std::int32_t each) { return std::ranges::binary_search(held, each); });
  return keys;
}

std::string PostgresDatabase::NextNumberSql(std::string_view table,
                                            std::initializer_list<std::string_view>) const {
  return "nextval(" + SequenceOf(StoreTable(table)) + ")";
}

std::string PostgresDatabase::SelectColumnNamesSql() const {
  return "SELECT attname FROM pg_attribute WHERE attrelid = to_regclass(lower(?)) AND attnum > 0 "
         "AND NOT attisdropped";
}

void PostgresDatabase::AdoptKeys() {
  for (const TableLayout& table : StoreTables())
    if (GivesKeys(table)) AdoptKeysOf(table);
}

void PostgresDatabase::AdoptKeysOf(const TableLayout& table) {
  const std::string key(KeyOf(table));
  connection_.Ask(PostgresSql("SELECT setval(" + SequenceOf(table) +
                              ", greatest(highest, pg_sequence_last_value(CAST(" +
                              SequenceOf(table) + " AS regclass)))) FROM (SELECT max(" + key +
                              ") AS highest FROM \"" + std::string(table.name) + "\" WHERE " + key +
                              " BETWEEN 1 AND 2147483647) AS keys WHERE highest IS NOT NULL"));
}

void PostgresDatabase::LockImport() {
  const PostgresResult result =
      connection_.Ask("SELECT pg_try_advisory_lock($1)", {Wire(importLock_)});
  if (NumberFromWire({PQgetvalue(result.get(), 0, 0), 1}) == 0) {
    EndFormerSession();
    connection_.Ask("SELECT pg_advisory_lock($1)", {Wire(importLock_)});
  }
  importLockedOn_ = connection_.generation();
}

// The server may not have noticed yet that the way to a session of this object was cut. Nobody else
// has its lock.
void PostgresDatabase::EndFormerSession() {
  if (importLock_ == 0) return;
  connection_.Ask(
      "SELECT pg_terminate_backend(pid) FROM pg_locks WHERE locktype = 'advisory' AND objsubid = 1 "
      "AND database = (SELECT oid FROM pg_database WHERE datname = current_database()) AND "
      "(CAST(classid AS bigint) << 32 | CAST(objid AS bigint)) = $1 AND pid <> pg_backend_pid()",
      {Wire(importLock_)});
}

// The lock goes with the connection, whatever machine it is from.
std::string PostgresDatabase::NewImportMark() {
  if (importLock_ == 0) importLock_ = RandomNumber();
  if (importLockedOn_ != connection_.generation()) LockImport();
  return std::string(kMarkHead) + std::to_string(importLock_);
}

bool PostgresDatabase::IsImporting(std::string_view mark) {
  if (!mark.starts_with(kMarkHead)) return false;
  mark.remove_prefix(kMarkHead.size());
  std::int64_t lock = 0;
  std::from_chars(mark.data(), mark.data() + mark.size(), lock);
  // A standby knows none of the locks.
  const PostgresResult result = connection_.Ask(
      "SELECT 1 FROM pg_locks WHERE locktype = 'advisory' AND objsubid = 1 AND "
      "database = (SELECT oid FROM pg_database WHERE datname = current_database()) AND "
      "(CAST(classid AS bigint) << 32 | CAST(objid AS bigint)) = $1 "
      "UNION ALL SELECT 1 WHERE pg_is_in_recovery()",
      {Wire(lock)});
  return PQntuples(result.get()) > 0;
}

}  // namespace pim
