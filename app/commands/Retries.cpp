// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/Retries.h"

#include <algorithm>
#include <thread>

#include "app/input/Interrupt.h"

namespace pim::app {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kMostTries = 10;
// What fails for so long isn't tried any more. The store waits by itself for a server that is away.
constexpr Clock::duration kLongest = std::chrono::seconds(60);
constexpr Clock::duration kFirstPause = std::chrono::milliseconds(20);
constexpr Clock::duration kLongestPause = std::chrono::seconds(1);

void Pause(Clock::duration duration) {
  constexpr Clock::duration kStep = std::chrono::milliseconds(20);
  const Clock::time_point end = Clock::now() + duration;
  for (Clock::time_point now = Clock::now(); now < end; now = Clock::now()) {
    CheckInterrupt();
    std::this_thread::sleep_for(std::min(kStep, end - now));
  }
  CheckInterrupt();
}

}  // namespace

void Retries::Wait(const PassingFailure& failure) {
  if (tries_ == 0) since_ = Clock::now();
  if (++tries_ > kMostTries || Clock::now() - since_ > kLongest) throw Failure(failure.what());
  // The first one comes at once: who was in the way is mostly done.
  if (tries_ > 1) Pause(std::min(kFirstPause * (1 << (tries_ - 2)), kLongestPause));
}

}  // namespace pim::app
