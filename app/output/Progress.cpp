// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/output/Progress.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "app/output/Output.h"

namespace pim::app {
namespace {

std::string TimeText(double seconds) {
  const auto whole = static_cast<long long>(std::ceil(seconds));
  if (whole < 60) return std::to_string(whole) + " s";
  return std::to_string(whole / 60) + " min " + std::to_string(whole % 60) + " s";
}

}  // namespace

Progress::Progress(bool quiet, std::int64_t total)
    : enabled_(!quiet && isatty(STDERR_FILENO) == 1),
      total_(total),
      next_(began_ + std::chrono::milliseconds(500)) {}

bool Progress::IsDue() {
  if (!enabled_) return false;
  const auto now = Clock::now();
  if (now < next_) return false;
  next_ = now + std::chrono::milliseconds(100);
  return true;
}

void Progress::Write(std::int64_t done, std::string_view what) {
  std::string line(what);
  if (done > 0 && done <= total_) {
    const double part = static_cast<double>(done) / static_cast<double>(total_);
    const double spent = std::chrono::duration<double>(Clock::now() - began_).count();
    line += ", " + std::to_string(static_cast<int>(part * 100)) + " %, " +
            TimeText(spent / part - spent) + " left";
  }
  const std::size_t size = line.size();
  if (size < shown_) line.append(shown_ - size, ' ');
  std::fputs(("\r" + line + " ").c_str(), stderr);
  shown_ = size;
}

void Progress::Clear() {
  if (shown_ != 0) std::fputs(("\r" + std::string(shown_ + 1, ' ') + "\r").c_str(), stderr);
  shown_ = 0;
}

}  // namespace pim::app
