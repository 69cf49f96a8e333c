// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/sqlite/SqliteDatabase.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <string_view>

#include "platform/Files.h"
#include "platform/ProcessMark.h"
#include "store/SqlText.h"
#include "store/sqlite/SqliteStatement.h"
#include "store/sqlite/StoreFile.h"
#include "support/Ascii.h"

namespace pim {

namespace {

// The cache is enough for the upper levels of all tables and indexes of a large store. Foreign keys
// are for other programs: SQLite would look up the owner of each row that is stored with it, and
// the references that may lead nowhere, those of links, are looked at as they are stored.
constexpr const char* kSetUp =
    "PRAGMA foreign_keys=OFF; PRAGMA synchronous=FULL; PRAGMA cell_size_check=ON; "
    "PRAGMA trusted_schema=OFF; PRAGMA cache_size=-16384; "
    "PRAGMA temp_store=MEMORY";

// What SQLite's code means to the user; its own words follow.
constexpr struct {
  int code;
  const char* meaning;
} kProblems[] = {
    {SQLITE_BUSY, "locked by another program"},
    {SQLITE_INTERRUPT, "given up"},
    {SQLITE_CORRUPT, "damaged"},
    {SQLITE_NOTADB, "damaged"},
    {SQLITE_ERROR, "damaged"},  // our statements are right: a table or column isn't as it was made
    {SQLITE_READONLY, "can't be written"},
    {SQLITE_CANTOPEN, "can't be opened"},
    {SQLITE_FULL, "no space left"},
    {SQLITE_IOERR, "can't be read or written"},
};

// A name in which nothing but the path's own slashes means anything.
std::string UriOf(const std::string& path) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  // An absolute path stands behind an empty host. Ahead of any other, "./" keeps names such as
  // ":memory:" names of files.
  std::string uri = path.starts_with('/') ? "file://" : "file:./";
  for (const char c : path) {
    if (IsLetter(c) || IsDigit(c) || c == '/' || c == '.' || c == '-' || c == '_') {
      uri += c;
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    uri.append("%").append(1, kDigits[byte >> 4]).append(1, kDigits[byte & 0xF]);
  }
  return uri;
}

}  // namespace

SqliteDatabase::SqliteDatabase(std::string path, StoreAccess access, bool isImmutable,
                               LockWait lockWait)
    : Database(std::move(path)), lockWait_(std::move(lockWait)) {
  sqlite3* opened = nullptr;
  const std::string uri = UriOf(name()) + (isImmutable ? "?immutable=1" : "");
  const bool makes = access == StoreAccess::Create;
  const int how =
      isImmutable ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE | (makes ? SQLITE_OPEN_CREATE : 0);
  const int code =
      sqlite3_open_v2(uri.c_str(), &opened, how | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_URI, nullptr);
  handle_.reset(opened);
  if (code != SQLITE_OK) Fail(code);
  sqlite3_extended_result_codes(opened, 1);
  // A column that isn't there is an error, and no text of that name.
  sqlite3_db_config(opened, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  sqlite3_db_config(opened, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
  sqlite3_busy_handler(opened, Wait, this);
  constexpr int kStepsBetween = 10000;  // a millisecond or so
  if (lockWait_.givesUp) sqlite3_progress_handler(opened, kStepsBetween, GivesUp, this);
  if (access != StoreAccess::ReadOnly && sqlite3_db_readonly(opened, "main") == 1)
    Fail("can't be written: the file is read-only");
  Run(kSetUp);
}

SqliteDatabase::~SqliteDatabase() = default;

int SqliteDatabase::GivesUp(void* database) {
  return static_cast<SqliteDatabase*>(database)->lockWait_.givesUp() ? 1 : 0;
}

int SqliteDatabase::Wait(void* database, int attempts) {
  auto& self = *static_cast<SqliteDatabase*>(database);
  const LockWait& wait = self.lockWait_;
  if (self.waited_ >= wait.limit || (wait.givesUp && wait.givesUp())) return 0;
  const std::chrono::milliseconds pause =
      std::min(std::chrono::milliseconds(std::min(attempts + 1, 25)), wait.limit - self.waited_);
  sqlite3_sleep(static_cast<int>(pause.count()));
  self.waited_ += pause;
  return 1;
}

void SqliteDatabase::Run(const char* sql) {
  const int code = sqlite3_exec(handle_.get(), sql, nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) Fail(code);
}

void SqliteDatabase::Run(Prepared& statement, const char* sql) {
  if (statement == nullptr) {
    sqlite3_stmt* prepared = nullptr;
    const int code =
        sqlite3_prepare_v3(handle_.get(), sql, -1, SQLITE_PREPARE_PERSISTENT, &prepared, nullptr);
    if (code != SQLITE_OK) Fail(code);
    statement.reset(prepared);
  }
  const int code = sqlite3_step(statement.get());
  sqlite3_reset(statement.get());
  if (code != SQLITE_DONE) Fail(code);
}

void SqliteDatabase::StartTransaction(bool /*alone*/) {
  Run("BEGIN IMMEDIATE");
  waited_ = {};
}

bool SqliteDatabase::Undo(bool outermost) noexcept {
  if (sqlite3_get_autocommit(handle_.get()) != 0) return true;
  const char* sql = outermost ? "ROLLBACK" : "ROLLBACK TO inner; RELEASE inner";
  return sqlite3_exec(handle_.get(), sql, nullptr, nullptr, nullptr) == SQLITE_OK;
}

void SqliteDatabase::FinishReading(bool last) noexcept {
  if (std::uncaught_exceptions() == 0) waited_ = {};
  if (last) sqlite3_exec(handle_.get(), "ROLLBACK", nullptr, nullptr, nullptr);
}

std::unique_ptr<PreparedStatement> SqliteDatabase::Prepare(const std::string& sql) {
  return std::make_unique<SqliteStatement>(*this, sql);
}

bool SqliteDatabase::HasAllTables() {
  SqliteStatement version(*this, "PRAGMA user_version");
  const bool hasAll = version.Step() && version.Integer(0) >= kStoreVersion;
  version.Reset();
  return hasAll;
}

std::int64_t SqliteDatabase::OutsideVersion() {
  if (dataVersion_ == nullptr)
    dataVersion_ = std::make_unique<SqliteStatement>(*this, "PRAGMA data_version");
  const std::int64_t version = dataVersion_->Step() ? dataVersion_->Integer(0) : 0;
  dataVersion_->Reset();
  return version;
}

std::string SqliteDatabase::NextNumberSql(std::string_view table,
                                          std::initializer_list<std::string_view> tables) const {
  return "1 + " + HighestNumberSql(KeyOf(StoreTable(table)), tables);
}

std::string SqliteDatabase::SelectColumnNamesSql() const {
  return "SELECT name FROM pragma_table_info(?)";
}

std::string SqliteDatabase::NewImportMark() { return ProcessMark(); }

bool SqliteDatabase::IsImporting(std::string_view mark) { return IsRunning(mark); }

void SqliteDatabase::KeepLog() noexcept {
  sqlite3_db_config(handle_.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
}

bool SqliteDatabase::MayWaitAgain() {
  constexpr int kLongPause = 10;
  return (lastFailure_ & 0xFF) == SQLITE_BUSY && Wait(this, kLongPause) != 0;
}

void SqliteDatabase::Fail(int code) {
  lastFailure_ = code;
  std::string problem;
  for (const auto& row : kProblems)
    if (row.code == (code & 0xFF)) problem = row.meaning;
  const std::string detail =
      handle_ != nullptr ? sqlite3_errmsg(handle_.get()) : sqlite3_errstr(code);
  problem += problem.empty() ? detail : " (" + detail + ")";
  // SQLite makes files beside its own, and tells of one that it can't make what its last try was.
  const int kind = code & 0xFF;
  const std::string folder =
      kind == SQLITE_CANTOPEN || kind == SQLITE_READONLY ? FolderProblem(name()) : std::string();
  const int reason = handle_ != nullptr ? sqlite3_system_errno(handle_.get()) : 0;
  if (!folder.empty()) {
    problem += "; its folder: " + folder;
  } else if (kind == SQLITE_CANTOPEN && reason != 0) {
    problem += std::string(": ") + std::strerror(reason);
  }
  throw StoreError(name(), problem);
}

}  // namespace pim
