// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/input/Interrupt.h"

#include <signal.h>

#include <csignal>
#include <initializer_list>

namespace pim::app {
namespace {

volatile std::sig_atomic_t caught = 0;
bool endsByPipe = false;

void Note(int signal) { caught = signal; }

}  // namespace

void WatchSignals() {
  endsByPipe = std::signal(SIGPIPE, SIG_IGN) == SIG_DFL;
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction previous = {};
    sigaction(signal, nullptr, &previous);
    if (previous.sa_handler == SIG_IGN) continue;  // nohup, or a job in the background
    struct sigaction action = {};
    action.sa_handler = Note;
    action.sa_flags = static_cast<int>(SA_RESETHAND);  // no SA_RESTART: a read from a pipe must end
    sigaction(signal, &action, nullptr);
  }
}

void EndByPipe() {
  if (!endsByPipe) return;
  std::signal(SIGPIPE, SIG_DFL);
  std::raise(SIGPIPE);
}

bool IsInterrupted() { return caught != 0; }

void CheckInterrupt() {
  if (caught != 0) throw Interrupted{caught};
}

}  // namespace pim::app
