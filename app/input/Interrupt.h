// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace pim::app {

// A signal asked the program to end. What is open is rolled back as it passes.
struct Interrupted {
  int signal;
};

// Takes note of SIGINT, SIGTERM and SIGHUP; a further one ends the program as if this didn't stand,
// unless it comes within a second.
// A pipe that nobody reads any more ends it no more by itself.
void WatchSignals();
// Ends the program as such a pipe would have ended it, unless whoever called it wants none of that.
void EndByPipe();
// Whether one has come.
bool IsInterrupted();
// Throws Interrupted once one has come.
void CheckInterrupt();

}  // namespace pim::app
