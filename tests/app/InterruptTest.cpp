// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <thread>

#include "app/input/Interrupt.h"

namespace pim::app {
namespace {

// As 'timeout' sends one twice, and as somebody asks again who has waited.
TEST(InterruptDeathTest, OnlyALaterSignalEndsTheProgram) {
  const auto ask = [] {
    WatchSignals();
    std::raise(SIGTERM);
    std::raise(SIGTERM);
    std::raise(SIGHUP);
    std::fprintf(stderr, "goes on: %d\n", IsInterrupted() ? 1 : 0);
    std::this_thread::sleep_for(std::chrono::milliseconds(1010));
    std::raise(SIGTERM);
  };
  EXPECT_EXIT(ask(), testing::KilledBySignal(SIGTERM), "goes on: 1");
}

}  // namespace
}  // namespace pim::app
