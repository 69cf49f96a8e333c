#pragma once

#include <string>

#include "app/commands/Options.h"
#include "pim/store/SqliteStore.h"

namespace pim::app {

// The store that a command works on, open and bound.
class Session {
 public:
  // Makes the default store's folder when it is missing. Throws StoreError or Failure.
  explicit Session(const Options& options);

  SqliteStore& store() { return store_; }
  const std::string& path() const { return path_; }  // of the store's file
  std::int32_t db() const { return binding_.db(); }
  // What the store says is wrong, as a failure.
  [[noreturn]] void Fail() const;

 private:
  std::string path_;
  SqliteStore store_;
  StoreBinding binding_;
};

}  // namespace pim::app
