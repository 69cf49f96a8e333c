// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "app/commands/Options.h"
#include "app/input/PictureStaging.h"
#include "pim/records/MemoryStore.h"
#include "pim/records/PreviewStore.h"
#include "pim/store/SqliteStore.h"

namespace pim::app {

// The store that a command works on, open and bound.
class Session {
 public:
  // Where the store may be made, makes the default one's folder too. Pictures that a program left
  // which ended in the middle are removed first, but where nothing is to be written. For an
  // export or a list one of the session's own takes the place of a caller-ID folder that can't be
  // written. Throws StoreError
  // or Failure.
  Session(const Options& options, StoreAccess access);
  // Binds a preview of the store in its place, of an empty one where there is none: nothing is
  // written at all.
  struct Preview {};
  Session(const Options& options, Preview);

  // The store's file. A preview has none where there is no store.
  SqliteStore& store() { return *file_; }
  bool hasFile() const { return file_ != nullptr; }
  // What is bound.
  RecordStore& records() { return *records_; }
  PreviewStore* preview() { return preview_ ? &*preview_ : nullptr; }
  const std::string& path() const { return path_; }  // of the store's file
  bool isNew() const { return isNew_; }              // whether this made it
  std::int32_t db() const { return binding_->db(); }
  // What the store says is wrong, as a failure.
  [[noreturn]] void Fail() const;

 private:
  std::string path_;
  bool isNew_;
  std::unique_ptr<SqliteStore> file_;
  std::unique_ptr<MemoryStore> empty_;
  std::optional<PreviewStore> preview_;
  RecordStore* records_ = nullptr;
  std::optional<StoreBinding> binding_;
  std::optional<PrivatePictures> pictures_;
};

}  // namespace pim::app
