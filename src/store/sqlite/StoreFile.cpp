// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/sqlite/StoreFile.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <set>
#include <string_view>
#include <utility>

#include "pim/store/DatabaseStore.h"
#include "platform/Files.h"
#include "records/StoreLayout.h"
#include "store/PictureTable.h"
#include "store/SqlText.h"
#include "store/Statement.h"
#include "store/StoreSettings.h"

namespace pim {

namespace {

namespace fs = std::filesystem;

// The head of an SQLite file: numbers have their high byte first.
constexpr std::string_view kMagic{"SQLite format 3\0", 16};
constexpr std::size_t kHeadSize = 100;
constexpr std::size_t kVersionAt = 60;
constexpr std::size_t kApplicationIdAt = 68;
using Head = std::array<unsigned char, kHeadSize>;

std::int32_t NumberAt(const Head& head, std::size_t at) {
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < 4; ++i) number = number << 8 | head[at + i];
  return static_cast<std::int32_t>(number);
}

std::string NewerVersion(std::int32_t version) {
  return "the store has version " + std::to_string(version) + ", newer than this program's " +
         std::to_string(kStoreVersion);
}

constexpr const char* kForeign = "not a store of this program";

// SQLite changes even a file that it only looks at (it ends what a killed program began), so
// whose file it is must be known before. False for an empty one.
bool CheckHead(const std::string& path) {
  const FileHandle file(std::fopen(path.c_str(), "rb"));
  if (file == nullptr) throw StoreError(path, std::strerror(errno));
  Head head{};
  const std::size_t size = std::fread(head.data(), 1, head.size(), file.get());
  if (std::ferror(file.get()) != 0) throw StoreError(path, std::strerror(errno));
  if (size == 0) return false;
  const std::size_t compared = std::min(size, kMagic.size());
  if (std::memcmp(head.data(), kMagic.data(), compared) != 0) throw StoreError(path, kForeign);
  if (size < kHeadSize) throw StoreError(path, "damaged (cut off)");
  if (NumberAt(head, kApplicationIdAt) != kApplicationId) throw StoreError(path, kForeign);
  const std::int32_t version = NumberAt(head, kVersionAt);
  if (version > kStoreVersion) throw StoreError(path, NewerVersion(version));
  return true;
}

void CheckFolder(const std::string& path) {
  std::error_code error;
  const fs::path folder = fs::path(path).parent_path();
  if (!folder.empty() && !fs::is_directory(folder, error))
    throw StoreError(path, "its folder doesn't exist");
  if (const std::string problem = FolderProblem(path); !problem.empty())
    throw StoreError(path, "can't be made in its folder: " + problem);
}

void CheckFile(const std::string& path, StoreAccess access) {
  if (path.empty()) throw StoreError("store", "its file has no name");
  if (path.find('\0') != std::string::npos)
    throw StoreError(path.substr(0, path.find('\0')), "no file can have a NUL in its name");
  const bool makes = access == StoreAccess::Create;
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  switch (status.type()) {
    case fs::file_type::not_found:
      if (!makes) throw NoStoreError(path);
      return CheckFolder(path);
    case fs::file_type::regular:
      if (!CheckHead(path) && !makes) throw NoStoreError(path);
      return;
    case fs::file_type::directory:
      throw StoreError(path, "is a folder");
    case fs::file_type::none:
      throw StoreError(path, error.message());
    default:
      throw StoreError(path, "is no regular file");
  }
}

// Whether the file can only be read and nobody is writing it: then SQLite must make none beside it.
// A write-ahead log with something in it is part of the store, and is read the usual way.
bool HasLog(const std::string& path) {
  std::error_code error;
  const auto size = fs::file_size(path + "-wal", error);
  return !error && size != 0;
}
bool IsOutOfReach(const std::string& path) {
  if (access(path.c_str(), W_OK) == 0 && FolderProblem(path).empty()) return false;
  return !HasLog(path);
}

std::int32_t NumberOf(SqliteDatabase& db, const char* sql) {
  Statement statement(db, sql);
  Rows rows(statement);
  return rows.Next() ? static_cast<std::int32_t>(statement.Integer(0)) : 0;
}

// The version, or 0 for a file in which nothing is yet. Another program may be making the store.
std::int32_t VersionOf(SqliteDatabase& db) {
  const ReadTransaction reading(db);
  if (NumberOf(db, "PRAGMA application_id") != kApplicationId) {
    if (NumberOf(db, "SELECT count(*) FROM sqlite_schema") != 0) db.Fail(kForeign);
    return 0;
  }
  const std::int32_t version = NumberOf(db, "PRAGMA user_version");
  if (version > kStoreVersion) db.Fail(NewerVersion(version));
  if (version < 0) db.Fail("damaged (its version is " + std::to_string(version) + ")");
  return version;
}

void AddWhatIsMissing(SqliteDatabase& db) {
  Statement names(db, db.SelectColumnNamesSql());
  for (const TableLayout& table : db.Tables()) {
    std::set<std::string, std::less<>> present;
    names.Buffer(1) = table.name;
    names.BindBuffer(1);
    for (Rows rows(names); rows.Next();) present.emplace(names.Text(0));
    if (present.empty()) {
      db.Run(CreateTableSql(table).c_str());
      continue;
    }
    for (const Column& column : table.Columns())
      if (!present.contains(column.name)) db.Run(AddColumnSql(table, column).c_str());
  }
  for (const IndexLayout& index : StoreIndexes(db.Tables())) db.Run(CreateIndexSql(index).c_str());
}

// Another program may have done it by the time the lock is had.
void Upgrade(SqliteDatabase& db) {
  db.Begin();
  if (const std::int32_t version = VersionOf(db); version < kStoreVersion) {
    AddWhatIsMissing(db);
    if (version == 0) db.IsMade();
    StoreSettings(db).Key(true);
    // Until then pictures were files alone.
    if (version > 0) PictureTable(db).TakeOver();
    db.Run(("PRAGMA application_id=" + std::to_string(kApplicationId)).c_str());
    db.Run(("PRAGMA user_version=" + std::to_string(kStoreVersion)).c_str());
  }
  db.Commit();
}

// Only behind the first transaction, so that the file bears our mark as soon as it isn't empty.
void UseWriteAheadLog(SqliteDatabase& db) {
  Statement mode(db, "PRAGMA journal_mode=WAL");
  Rows rows(mode);
  if (!rows.Next() || mode.Text(0) != "wal") db.Fail("its folder can't hold a write-ahead log");
}

std::unique_ptr<SqliteDatabase> OpenOutOfReach(const std::string& path, LockWait lockWait) {
  auto db =
      std::make_unique<SqliteDatabase>(path, StoreAccess::ReadOnly, true, std::move(lockWait));
  if (VersionOf(*db) < kReadableVersion)
    db->Fail("is of an earlier version, and can't be changed where it is; copy it and open that");
  return db;
}

}  // namespace

std::unique_ptr<SqliteDatabase> OpenStoreFile(const std::string& path, StoreAccess access,
                                              LockWait lockWait) {
  CheckFile(path, access);
  const bool isRead = access == StoreAccess::ReadOnly;
  if (isRead && IsOutOfReach(path)) return OpenOutOfReach(path, std::move(lockWait));
  const bool keepsLog = isRead && HasLog(path);
  auto db = std::make_unique<SqliteDatabase>(path, access, false, std::move(lockWait));
  if (keepsLog) db->KeepLog();
  for (;;) {
    try {
      if (VersionOf(*db) < (isRead ? kReadableVersion : kStoreVersion)) Upgrade(*db);
      if (isRead) {
        db->ForbidWriting();
      } else {
        UseWriteAheadLog(*db);
      }
      return db;
    } catch (const StoreError&) {
      if (!db->MayWaitAgain()) throw;
      db->Rollback();
    }
  }
}

}  // namespace pim
