// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/Session.h"

#include <unistd.h>

#include <filesystem>
#include <utility>

#include "app/input/Interrupt.h"
#include "app/output/Output.h"
#include "pim/support/FileNames.h"
#include "platform/AppData.h"
#include "platform/Files.h"

namespace pim::app {
namespace {

std::unique_ptr<DatabaseStore> OpenOrTell(const StorePlace& place, StoreAccess access) {
  try {
    return place.Open(access);
  } catch (const NoStoreError& error) {
    throw Failure(std::string(error.what()) +
                  "; 'pimvobj contacts import FILE' makes one, --store names another");
  }
}

std::unique_ptr<DatabaseStore> OpenIfThere(const StorePlace& place) {
  try {
    auto store = place.Open(StoreAccess::ReadOnly);
    store->MakePictures(false);
    return store;
  } catch (const NoStoreError&) {
    return nullptr;
  }
}

// What a killed program has left. A store that can't be written keeps it for the next command.
void ClearLeftovers(const StorePlace& place, StoreAccess access, DatabaseStore& store) {
  constexpr auto kShortWait = std::chrono::seconds(1);
  ClearAbandonedPictures();
  if (access != StoreAccess::ReadOnly) {
    static_cast<void>(store.RemoveLeftPictures());
  } else if (store.HasLeftPictures()) {
    try {
      static_cast<void>(place.Open(StoreAccess::Existing, kShortWait)->RemoveLeftPictures());
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
    : place_(StorePlace::Chosen(options, access)),
      opened_(OpenOrTell(place_, access)),
      store_(opened_.get()),
      records_(store_),
      mayTryAgain_([this] { return store_->MayTryAgain(); }) {
  if (!options.dryRun) ClearLeftovers(place_, access, *store_);
  const bool shows = options.action == Action::Export || options.action == Action::Album ||
                     options.action == Action::List;
  if (shows && store_->KeepsPictures() && !HasPicturePlace()) pictures_.emplace(TemporaryFolder());
  binding_.emplace(*records_);
}

Session::Session(const Options& options, Preview)
    : place_(StorePlace::Chosen(options, StoreAccess::ReadOnly)),
      opened_(OpenIfThere(place_)),
      store_(opened_.get()) {
  if (store_ == nullptr) empty_ = std::make_unique<MemoryStore>();
  RecordStore& store = store_ != nullptr ? static_cast<RecordStore&>(*store_) : *empty_;
  records_ = &preview_.emplace(store);
  binding_.emplace(*records_);
}

Session::Session(DatabaseStore& store, RecordStore& records, std::function<bool()> mayTryAgain)
    : place_(store.Name()),
      store_(&store),
      records_(&records),
      mayTryAgain_(std::move(mayTryAgain)) {
  binding_.emplace(*records_);
}

void Session::Fail() const {
  CheckInterrupt();  // which ends the wait for a lock
  if (mayTryAgain_ && mayTryAgain_()) throw PassingFailure(records_->LastError());
  throw Failure(records_->LastError());
}

}  // namespace pim::app
