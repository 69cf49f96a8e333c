// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>

#include "app/output/Output.h"

namespace pim::app {

// A failure of the store that may pass when all since the outermost transaction's beginning is done
// again: the connection was lost, or another program was in the way.
class PassingFailure : public Failure {
 public:
  using Failure::Failure;
};

// How often something is tried again between two successes, and how long.
class Retries {
 public:
  // Something has been stored.
  void Reset() { tries_ = 0; }
  // Waits ahead of the next try, the longer the more there were. Throws Failure where it has been
  // tried often or long enough, and Interrupted.
  void Wait(const PassingFailure& failure);

 private:
  int tries_ = 0;
  std::chrono::steady_clock::time_point since_;  // the first failure
};

// Gives what `work` gives, which is done again as a whole where it throws PassingFailure. Throws
// Failure.
template <class Work>
auto WithRetries(Work work) {
  for (Retries retries;;) {
    try {
      return work();
    } catch (const PassingFailure& failure) {
      retries.Wait(failure);
    }
  }
}

}  // namespace pim::app
