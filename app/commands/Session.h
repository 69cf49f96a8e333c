// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "app/commands/Options.h"
#include "app/commands/Retries.h"
#include "app/commands/StorePlace.h"
#include "app/input/PictureStaging.h"
#include "app/output/Output.h"
#include "pim/records/MemoryStore.h"
#include "pim/records/PreviewStore.h"
#include "pim/store/DatabaseStore.h"

namespace pim::app {

// The store that a command works on, open and bound.
class Session {
 public:
  // Where the store may be made, makes the default one's folder too. Pictures that a program left
  // which ended in the middle are removed first, but where nothing is to be written. For an
  // export or a list one of the session's own takes the place of a caller-ID folder that can't be
  // written. Throws StoreError or Failure.
  Session(const Options& options, StoreAccess access);
  // Binds a preview of the store in its place, of an empty one where there is none: nothing is
  // written at all.
  struct Preview {};
  Session(const Options& options, Preview);
  // Over a store that is open. What is bound is `records`, which passes all on to it, and may fail
  // by itself: `mayTryAgain` is asked then instead of the store. Both must outlive this.
  Session(DatabaseStore& store, RecordStore& records, std::function<bool()> mayTryAgain);

  // The store itself. A preview has none where there is none.
  DatabaseStore& store() { return *store_; }
  bool hasStore() const { return store_ != nullptr; }
  // What is bound.
  RecordStore& records() { return *records_; }
  PreviewStore* preview() { return preview_ ? &*preview_ : nullptr; }
  // As messages name it.
  std::string name() const { return ShownName(store_->Name()); }
  const StorePlace& place() const { return place_; }
  std::int32_t db() const { return binding_->db(); }
  // What the store says is wrong, as a failure; a PassingFailure where it may pass.
  [[noreturn]] void Fail() const;
  // Gives what `operation` gives, which is a transaction of its own and -1 where the store fails;
  // what may pass is done again. Throws Failure.
  template <class Operation>
  std::int32_t Try(Operation operation) const {
    return WithRetries([&] {
      const std::int32_t result = operation();
      if (result < 0) Fail();
      return result;
    });
  }

 private:
  StorePlace place_;
  std::unique_ptr<DatabaseStore> opened_;
  DatabaseStore* store_ = nullptr;
  std::unique_ptr<MemoryStore> empty_;
  std::optional<PreviewStore> preview_;
  RecordStore* records_ = nullptr;
  std::function<bool()> mayTryAgain_;
  std::optional<StoreBinding> binding_;
  std::optional<PrivatePictures> pictures_;
};

}  // namespace pim::app
