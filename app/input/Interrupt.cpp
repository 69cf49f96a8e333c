// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/input/Interrupt.h"

#include <signal.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>

namespace pim::app {
namespace {

using Clock = std::chrono::steady_clock;

// One request may come as several signals: 'timeout' sends its own to the program and to its group.
constexpr Clock::duration kOneRequest = std::chrono::seconds(1);

constexpr int kRequests[] = {SIGINT, SIGTERM, SIGHUP};

volatile std::sig_atomic_t caught = 0;
std::atomic<Clock::rep> caughtAt = 0;
static_assert(std::atomic<Clock::rep>::is_always_lock_free);
bool endsByPipe = false;

// All that it calls may be called while anything else is interrupted.
void Note(int signal) {
  const int error = errno;
  const Clock::rep now = Clock::now().time_since_epoch().count();
  if (caught == 0) {
    caughtAt = now;
    caught = signal;
  } else if (now - caughtAt > kOneRequest.count()) {
    std::signal(signal, SIG_DFL);
    std::raise(signal);
  }
  errno = error;
}

}  // namespace

void WatchSignals() {
  endsByPipe = std::signal(SIGPIPE, SIG_IGN) == SIG_DFL;
  for (const int signal : kRequests) {
    struct sigaction previous = {};
    sigaction(signal, nullptr, &previous);
    if (previous.sa_handler == SIG_IGN) continue;  // nohup, or a job in the background
    struct sigaction action = {};
    action.sa_handler = Note;  // without SA_RESTART: a read from a pipe must end
    for (const int other : kRequests) sigaddset(&action.sa_mask, other);
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
