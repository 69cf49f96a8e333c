// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace pim::app {

// What has been done so far, on a terminal, from half a second on. Uses no escape sequences.
class Progress {
 public:
  // `total` is the amount of work, in any unit; 0 where nobody knows.
  explicit Progress(bool quiet, std::int64_t total = 0);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress() { Clear(); }

  void SetTotal(std::int64_t total) { total_ = total; }
  // `done` is the amount of work done; `what` says it in words: "3 files, 120 records".
  template <class Words>
  void Show(std::int64_t done, Words what) {
    if (IsDue()) Write(done, what());
  }
  // Takes the line away, ahead of a message.
  void Clear();

 private:
  using Clock = std::chrono::steady_clock;

  bool IsDue();
  void Write(std::int64_t done, std::string_view what);

  bool enabled_;
  std::int64_t total_;
  std::size_t shown_ = 0;  // cells of the line that stands there
  Clock::time_point began_ = Clock::now();
  Clock::time_point next_;
};

}  // namespace pim::app
