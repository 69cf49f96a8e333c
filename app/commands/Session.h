#pragma once

#include <string>

#include "app/commands/Options.h"
#include "pim/store/SqliteStore.h"

namespace pim::app {

// The store that a command works on, open and bound.
class Session {
 public:
  // Where the store may be made, makes the default one's folder too. Throws StoreError or Failure.
  Session(const Options& options, StoreAccess access);

  SqliteStore& store() { return store_; }
  const std::string& path() const { return path_; }  // of the store's file
  bool isNew() const { return isNew_; }              // whether this made it
  std::int32_t db() const { return binding_.db(); }
  // What the store says is wrong, as a failure.
  [[noreturn]] void Fail() const;

 private:
  std::string path_;
  bool isNew_;
  SqliteStore store_;
  StoreBinding binding_;
};

}  // namespace pim::app
