#pragma once

#include <chrono>

namespace pim::app {

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

}  // namespace pim::app
