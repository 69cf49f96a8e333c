// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/Session.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "app/input/Interrupt.h"
#include "app/output/Output.h"
#include "pim/support/FileNames.h"
#include "platform/AppData.h"
#include "platform/CodePages.h"
#include "platform/Files.h"

namespace pim::app {
namespace {

constexpr auto kLockWait = std::chrono::seconds(30);

std::string StorePath(const Options& options, StoreAccess access) {
  if (options.store) return *options.store;
  const char* named = std::getenv("PIMVOBJ_STORE");
  if (named != nullptr && *named != '\0') return named;
  const std::string folder = Utf8FromWide(AppDataFolder());
  if (folder.empty()) throw Failure("no store: HOME isn't set; name one with --store");
  const std::string own = folder + "/pimvobj";
  if (access == StoreAccess::Create) {
    std::error_code error;
    std::filesystem::create_directories(own, error);
    if (error) throw Failure(ShownName(own) + ": " + error.message());
  }
  return own + "/pim.db";
}

std::unique_ptr<SqliteStore> Open(const std::string& path, StoreAccess access) {
  return std::make_unique<SqliteStore>(path, access, kLockWait, IsInterrupted);
}

std::unique_ptr<SqliteStore> OpenOrTell(const std::string& path, StoreAccess access) {
  try {
    return Open(path, access);
  } catch (const NoStoreError& error) {
    throw Failure(std::string(error.what()) +
                  "; 'pimvobj contacts import FILE' makes one, --store names another");
  }
}

std::unique_ptr<SqliteStore> OpenIfThere(const std::string& path) {
  try {
    auto store = Open(path, StoreAccess::ReadOnly);
    store->MakePictures(false);
    return store;
  } catch (const NoStoreError&) {
    return nullptr;
  }
}

// What a killed program has left. A store that can't be written keeps it for the next command.
void ClearLeftovers(const std::string& path, StoreAccess access, SqliteStore& store) {
  constexpr auto kShortWait = std::chrono::seconds(1);
  ClearAbandonedPictures();
  if (access != StoreAccess::ReadOnly) {
    static_cast<void>(store.RemoveLeftPictures());
  } else if (store.HasLeftPictures()) {
    try {
      SqliteStore writable(path, StoreAccess::Existing, kShortWait, IsInterrupted);
      static_cast<void>(writable.RemoveLeftPictures());
    } catch (const StoreError&) {
    }
  }
}

// Whether copies of pictures can be made where they belong.
bool HasPicturePlace() {
  if (AppDataFolder().empty()) return false;
  std::filesystem::path folder = NativePath(GetCallerIdPath());
  while (!PathExists(folder.string()) && folder.has_relative_path()) folder = folder.parent_path();
  return access(folder.c_str(), W_OK | X_OK) == 0;
}

}  // namespace

Session::Session(const Options& options, StoreAccess access)
    : path_(StorePath(options, access)),
      isNew_(!PathExists(path_)),
      file_(OpenOrTell(path_, access)),
      records_(file_.get()) {
  if (!options.dryRun) ClearLeftovers(path_, access, *file_);
  const bool shows = options.action == Action::Export || options.action == Action::List;
  if (shows && file_->KeepsPictures() && !HasPicturePlace()) pictures_.emplace(TemporaryFolder());
  binding_.emplace(*records_);
}

Session::Session(const Options& options, Preview)
    : path_(StorePath(options, StoreAccess::ReadOnly)),
      isNew_(!PathExists(path_)),
      file_(OpenIfThere(path_)) {
  if (file_ == nullptr) empty_ = std::make_unique<MemoryStore>();
  RecordStore& store = file_ != nullptr ? static_cast<RecordStore&>(*file_) : *empty_;
  records_ = &preview_.emplace(store);
  binding_.emplace(*records_);
}

void Session::Fail() const {
  CheckInterrupt();  // which ends the wait for a lock
  throw Failure(records_->LastError());
}

}  // namespace pim::app
