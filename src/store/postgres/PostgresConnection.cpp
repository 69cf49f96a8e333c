// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/postgres/PostgresConnection.h"

#include <poll.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <thread>
#include <utility>

#include "store/postgres/PostgresProblems.h"
#include "store/postgres/WireForms.h"

namespace pim {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr int kOldestServer = 140000;
// The server may say nothing of its own, but that it has a buffer full of answers: so many commands
// leave room in it.
constexpr std::size_t kSentAtMost = 256;

// Where whoever connects says nothing. A server that is cut off is noticed within half a minute.
struct Setting {
  const char* name;
  const char* value;
};
constexpr Setting kDefaults[] = {
    {"fallback_application_name", "pimvobj"},
    {"connect_timeout", "10"},
    {"keepalives_idle", "10"},
    {"keepalives_interval", "5"},
    {"keepalives_count", "3"},
    {"tcp_user_timeout", "30000"},
};

// Small tables grow while a statement is used on: a plan made for the small one must not stay. The
// first setting tells the triggers that this program writes.
std::string SettingsSql(const PostgresWaits& waits) {
  return "SELECT set_config('pimvobj.store', 'on', false), set_config('enable_seqscan', 'off', "
         "false), set_config('jit', 'off', false), set_config('default_transaction_isolation', "
         "'read committed', false), CASE current_setting('lock_timeout') WHEN '0' "
         "THEN set_config('lock_timeout', '" +
         std::to_string(waits.lock.count()) + "', false) END";
}

}  // namespace

PostgresConnection::PostgresConnection(const std::string& connection, bool isWriter,
                                       const PostgresWaits& waits)
    : connection_(connection),
      name_(ShownConnection(connection)),
      isWriter_(isWriter),
      waits_(waits) {
  if (!Connect()) Fail(ProblemOf(*handle_));
  SetUp();
}

PostgresConnection::~PostgresConnection() = default;

// Leaves a handle in any case, which tells what is wrong.
bool PostgresConnection::Connect() {
  std::vector<const char*> names;
  std::vector<const char*> values;
  const auto add = [&](const char* name, const char* value) {
    names.push_back(name);
    values.push_back(value);
  };
  for (const auto& [name, value] : kDefaults) add(name, value);
  if (isWriter_) add("target_session_attrs", "read-write");
  add("dbname", connection_.c_str());
  add("client_encoding", "UTF8");
  add(nullptr, nullptr);
  sent_.clear();
  unsynced_ = 0;
  isCopying_ = false;
  isCopied_ = false;
  later_.clear();
  handle_.reset(PQconnectdbParams(names.data(), values.data(), 1));
  if (handle_ == nullptr) throw std::bad_alloc();
  ++generation_;
  isLost_ = PQstatus(handle_.get()) != CONNECTION_OK;
  return !isLost_;
}

void PostgresConnection::SetUp() {
  PGconn* connection = handle_.get();
  PQsetNoticeProcessor(
      connection, [](void*, const char*) {}, nullptr);
  if (const int version = PQserverVersion(connection); version < kOldestServer)
    Fail("the server is PostgreSQL " + std::to_string(version / 10000) +
         ", and must be 14 at least");
  const char* encoding = PQparameterStatus(connection, "server_encoding");
  if (encoding == nullptr || std::strcmp(encoding, "UTF8") != 0)
    Fail("its database's encoding is " + std::string(encoding != nullptr ? encoding : "unknown") +
         ", and must be UTF8");
  PQsetnonblocking(connection, 1);
  EnterPipeline();
  Send(SettingsSql(waits_));
  UseOneSchema();
}

// The first one of the search path, and that one again on each further connection: another that
// lies behind it may hold another store.
void PostgresConnection::UseOneSchema() {
  if (schema_.empty()) {
    const PostgresResult result = Ask("SELECT quote_ident(current_schema())");
    if (PQgetisnull(result.get(), 0, 0) != 0) return;
    schema_ = PQgetvalue(result.get(), 0, 0);
  }
  const WireValue schema{kTextType, false, schema_};
  Ask("SELECT set_config('search_path', $1, false)", {schema});
}

void PostgresConnection::Reconnect() {
  const auto end = Clock::now() + waits_.failover;
  milliseconds pause(100);
  for (;;) {
    if (waits_.givesUp && waits_.givesUp()) Fail("given up");
    try {
      if (Connect()) {
        SetUp();
        mayTryAgain_ = false;
        return;
      }
    } catch (const StoreError&) {
      // A server that goes on in another's place may end the first sessions.
      if (!isLost_) throw;
    }
    const std::string problem = ProblemOf(*handle_);
    if (Clock::now() + pause >= end) {
      mayTryAgain_ = false;
      Fail(problem);
    }
    std::this_thread::sleep_for(pause);
    pause = std::min(pause * 2, milliseconds(1000));
  }
}

void PostgresConnection::Queue(int sent, ResultTaker* taker) {
  if (sent == 0) FailLost();
  sent_.push_back({taker, false});
  ++unsynced_;
  if (sent_.size() >= kSentAtMost) AwaitAll();
}

void PostgresConnection::SendLater(std::string sql) {
  if (!isCopied_) return Send(sql);
  later_.push_back(std::move(sql));
}

// Brings what is to be sent to where it stands ahead of another command.
void PostgresConnection::Settle() {
  if (isCopied_) {
    CheckCopy();
  } else if (isCopying_) {
    AbortCopy();
  }
  for (const std::string& sql : std::exchange(later_, {})) Send(sql);
}

void PostgresConnection::SendPrepare(const std::string& name, const std::string& sql,
                                     const std::vector<Oid>& types, ResultTaker* taker) {
  Settle();
  Queue(PQsendPrepare(handle_.get(), name.c_str(), sql.c_str(), static_cast<int>(types.size()),
                      types.data()),
        taker);
}

void PostgresConnection::SendDescribe(const std::string& name, ResultTaker* taker) {
  Settle();
  Queue(PQsendDescribePrepared(handle_.get(), name.c_str()), taker);
}

namespace {

// Values in libpq's form, all of them binary.
struct SentValues {
  explicit SentValues(const std::vector<WireValue>& from) {
    for (const WireValue& value : from) {
      types.push_back(value.type);
      bytes.push_back(value.isNull ? nullptr : value.bytes.data());
      lengths.push_back(static_cast<int>(value.bytes.size()));
      formats.push_back(1);
    }
  }
  int count() const { return static_cast<int>(bytes.size()); }

  std::vector<Oid> types;
  std::vector<const char*> bytes;
  std::vector<int> lengths;
  std::vector<int> formats;
};

}  // namespace

void PostgresConnection::SendPrepared(const std::string& name, const std::vector<WireValue>& values,
                                      ResultTaker* taker) {
  Settle();
  const SentValues sent(values);
  Queue(PQsendQueryPrepared(handle_.get(), name.c_str(), sent.count(), sent.bytes.data(),
                            sent.lengths.data(), sent.formats.data(), 1),
        taker);
}

void PostgresConnection::Send(const std::string& sql, const std::vector<WireValue>& values,
                              ResultTaker* taker) {
  Settle();
  const SentValues sent(values);
  Queue(PQsendQueryParams(handle_.get(), sql.c_str(), sent.count(), sent.types.data(),
                          sent.bytes.data(), sent.lengths.data(), sent.formats.data(), 1),
        taker);
}

void PostgresConnection::Sync() {
  if (PQpipelineSync(handle_.get()) == 0) FailLost();
  sent_.push_back({nullptr, true});
  unsynced_ = 0;
}

bool PostgresConnection::IsWaiting(const ResultTaker& taker) const noexcept {
  return std::ranges::find(sent_, &taker, &Sent::taker) != sent_.end();
}

// What was sent behind a command that failed, or on a connection that is lost, gives no result.
void PostgresConnection::Await(const ResultTaker& taker) {
  if (!IsWaiting(taker)) Fail("what was being read is undone by a failure");
  TakeUntil(&taker);
}

void PostgresConnection::AwaitAll() { TakeUntil(nullptr); }

// Behind a failure all results are taken, so that what comes next finds the connection at rest.
void PostgresConnection::TakeUntil(const ResultTaker* taker) {
  Settle();
  if (unsynced_ > 0) Sync();
  PostgresResult failed;
  heard_ = Clock::now();
  while (!sent_.empty() && (taker == nullptr || failed || IsWaiting(*taker))) TakeFront(failed);
  if (failed) FailWith(failed.get());
}

void PostgresConnection::TakeFront(PostgresResult& failed) {
  const Sent front = sent_.front();
  PostgresResult first = NextResult();
  if (!front.isSync && first != nullptr)
    while (NextResult() != nullptr) {
    }
  sent_.pop_front();
  if (first == nullptr) return;
  const ExecStatusType status = PQresultStatus(first.get());
  if (status == PGRES_FATAL_ERROR) {
    if (!failed) failed = std::move(first);
  } else if (front.taker != nullptr && status != PGRES_PIPELINE_ABORTED) {
    front.taker->Take(std::move(first));
  }
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
    heard_ = Clock::now();
    if ((socket.revents & ~POLLOUT) != 0 && PQconsumeInput(handle_.get()) == 0) FailLost();
    return;
  }
  if (waits_.givesUp && waits_.givesUp()) GiveUp();
  if (Clock::now() - heard_ >= waits_.silence) LookAfter();
}

// Has the server end what it is working on, which it then tells as a failure.
void PostgresConnection::GiveUp() {
  constexpr auto kPatience = std::chrono::seconds(2);
  if (!isGivenUp_) {
    isGivenUp_ = true;
    heard_ = Clock::now();
    std::array<char, 256> problem{};
    if (PGcancel* cancel = PQgetCancel(handle_.get()); cancel != nullptr) {
      PQcancel(cancel, problem.data(), static_cast<int>(problem.size()));
      PQfreeCancel(cancel);
    }
  } else if (Clock::now() - heard_ >= kPatience) {
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
  heard_ = Clock::now();
}

PostgresResult PostgresConnection::Ask(const std::string& sql,
                                       const std::vector<WireValue>& values) {
  struct Answer final : ResultTaker {
    void Take(PostgresResult taken) noexcept override { result = std::move(taken); }
    PostgresResult result;
  };
  Answer answer;
  Send(sql, values, &answer);
  Await(answer);
  return std::move(answer.result);
}

void PostgresConnection::Forget(const ResultTaker& taker) noexcept {
  for (Sent& sent : sent_)
    if (sent.taker == &taker) sent.taker = nullptr;
}

void PostgresConnection::EnterPipeline() {
  if (PQenterPipelineMode(handle_.get()) == 0) FailLost();
}

void PostgresConnection::StartCopy(const std::string& sql) {
  Settle();
  AwaitAll();
  if (PQexitPipelineMode(handle_.get()) == 0) FailLost();
  heard_ = Clock::now();
  if (PQsendQuery(handle_.get(), sql.c_str()) == 0) FailLost();
  isCopying_ = true;
  const PostgresResult result = NextResult();
  if (PQresultStatus(result.get()) == PGRES_COPY_IN) return;
  FinishCopy();
  FailWith(result.get());
}

void PostgresConnection::PutCopy(std::string_view bytes) {
  heard_ = Clock::now();
  int put = 0;
  while ((put = PQputCopyData(handle_.get(), bytes.data(), static_cast<int>(bytes.size()))) == 0)
    WaitForServer(true);
  if (put < 0) CheckCopy();  // the server has ended it
  Flush();
}

void PostgresConnection::EndCopy() {
  heard_ = Clock::now();
  int ended = 0;
  while ((ended = PQputCopyEnd(handle_.get(), nullptr)) == 0) WaitForServer(true);
  if (ended < 0) CheckCopy();
  Flush();
  isCopied_ = true;
}

void PostgresConnection::CheckCopy() {
  isCopied_ = false;
  heard_ = Clock::now();
  const PostgresResult result = NextResult();
  FinishCopy();
  if (result != nullptr && PQresultStatus(result.get()) == PGRES_COMMAND_OK) return;
  later_.clear();
  FailWith(result.get());
}

void PostgresConnection::RunScript(const std::string& sql) {
  AwaitAll();
  if (PQexitPipelineMode(handle_.get()) == 0) FailLost();
  heard_ = Clock::now();
  if (PQsendQuery(handle_.get(), sql.c_str()) == 0) FailLost();
  PostgresResult failed;
  for (PostgresResult result = NextResult(); result != nullptr; result = NextResult())
    if (PQresultStatus(result.get()) == PGRES_FATAL_ERROR) failed = std::move(result);
  EnterPipeline();
  if (failed) FailWith(failed.get());
}

// Takes what is left of its results.
void PostgresConnection::FinishCopy() {
  while (NextResult() != nullptr) {
  }
  isCopying_ = false;
  EnterPipeline();
}

void PostgresConnection::AbortCopy() noexcept {
  if (!isCopying_ || isCopied_) return;
  try {
    heard_ = Clock::now();
    if (PQputCopyEnd(handle_.get(), "left out") < 0) FailLost();
    NoteFailure();
    FinishCopy();
  } catch (const StoreError&) {
    isCopying_ = false;
  }
}

void PostgresConnection::Fail(const std::string& problem) { throw StoreError(name_, problem); }

void PostgresConnection::NoteFailure() noexcept {
  hasFailed_ = true;
  ++failures_;
}

void PostgresConnection::FailWith(const PGresult* result) {
  NoteFailure();
  const Problem problem = ProblemOf(result);
  if (problem.endsConnection) isLost_ = true;
  mayTryAgain_ = !isGivenUp_ && (problem.mayPass || IsLost());
  if (std::exchange(isGivenUp_, false)) Fail("given up");
  Fail(problem.text);
}

void PostgresConnection::FailLost() {
  const std::string detail = PQerrorMessage(handle_.get());
  isLost_ = true;
  NoteFailure();
  isCopying_ = false;
  isCopied_ = false;
  later_.clear();
  sent_.clear();
  unsynced_ = 0;
  mayTryAgain_ = !isGivenUp_;
  if (std::exchange(isGivenUp_, false)) Fail("given up");
  Fail("the connection was lost" + InBrackets(FirstLineOf(detail)));
}

}  // namespace pim
