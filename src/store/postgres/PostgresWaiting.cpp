// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <poll.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <thread>

#include "store/postgres/PostgresConnection.h"

namespace pim {
namespace {

using WaitClock = std::chrono::steady_clock;

// The way to the server may be cut, and libpq would wait for it without end.
void CancelAside(PGcancel* cancel) {
  if (cancel == nullptr) return;
  std::thread([cancel] {
    std::array<char, 256> problem{};
    PQcancel(cancel, problem.data(), static_cast<int>(problem.size()));
    PQfreeCancel(cancel);
  }).detach();
}

}  // namespace

void PostgresConnection::BeginWaiting() noexcept {
  heard_ = WaitClock::now();
  isGivenUp_ = false;
}

PostgresResult PostgresConnection::NextResult() {
  Flush();
  while (PQisBusy(handle_.get()) != 0) WaitForServer(false);
  PostgresResult result(PQgetResult(handle_.get()));
  if (PQstatus(handle_.get()) != CONNECTION_OK) FailLost();
  return result;
}

void PostgresConnection::Flush() {
  for (;;) {
    const int left = PQflush(handle_.get());
    if (left == 0) return;
    if (left < 0) FailLost();
    WaitForServer(true);
  }
}

void PostgresConnection::WaitForServer(bool toWrite) {
  constexpr int kSliceMilliseconds = 100;
  pollfd socket{PQsocket(handle_.get()), static_cast<short>(toWrite ? POLLIN | POLLOUT : POLLIN),
                0};
  const int ready = poll(&socket, 1, kSliceMilliseconds);
  if (ready < 0 && errno != EINTR) FailLost();
  if (ready > 0) {
    heard_ = WaitClock::now();
    if ((socket.revents & ~POLLOUT) != 0 && PQconsumeInput(handle_.get()) == 0) FailLost();
    return;
  }
  // What a layer of encryption has taken from the socket already isn't seen there.
  if (PQconsumeInput(handle_.get()) == 0) FailLost();
  if (waits_.givesUp && waits_.givesUp()) GiveUp();
  if (WaitClock::now() - heard_ >= waits_.silence) LookAfter();
}

// Has the server end what it is working on, which it then tells as a failure.
void PostgresConnection::GiveUp() {
  constexpr auto kPatience = std::chrono::seconds(2);
  if (!isGivenUp_) {
    isGivenUp_ = true;
    heard_ = WaitClock::now();
    CancelAside(PQgetCancel(handle_.get()));
  } else if (WaitClock::now() - heard_ >= kPatience) {
    FailLost();
  }
}

// Work that takes long is no reason to end; a server that nobody reaches any more is.
void PostgresConnection::LookAfter() {
  const PGconn* connection = handle_.get();
  const char* const names[] = {"dbname", "host", "hostaddr", "port", "connect_timeout", nullptr};
  const char* const values[] = {connection_.c_str(),
                                PQhost(connection),
                                PQhostaddr(connection),
                                PQport(connection),
                                "5",
                                nullptr};
  if (PQpingParams(names, values, 1) != PQPING_OK) FailLost();
  heard_ = WaitClock::now();
}

}  // namespace pim
