#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/Options.h"
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

// What has been done so far, on a terminal, from half a second on.
class Progress {
 public:
  explicit Progress(bool quiet);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress() { Clear(); }

  void Show(long long files, long long records);
  // Takes the line away, ahead of a message.
  void Clear();

 private:
  bool enabled_;
  bool shown_ = false;
  std::chrono::steady_clock::time_point next_;
};

// Collects, while it lives, the texts that the library shows to the user.
class Messages {
 public:
  Messages();
  Messages(const Messages&) = delete;
  Messages& operator=(const Messages&) = delete;
  ~Messages();

  // Gives up what has come since the last call.
  std::vector<std::u16string> Take() { return std::exchange(texts_, {}); }

 private:
  std::vector<std::u16string> texts_;
};

}  // namespace pim::app
