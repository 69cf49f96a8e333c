// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/postgres/PostgresConnection.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <span>
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

// Where whoever connects says nothing, in the text, by a service or by a variable of the
// environment. A server that is cut off is noticed within half a minute.
struct Setting {
  const char* name;
  const char* value;
  const char* variable = nullptr;
};
constexpr Setting kDefaults[] = {
    {"connect_timeout", "10", "PGCONNECT_TIMEOUT"},
    {"keepalives_idle", "10"},
    {"keepalives_interval", "5"},
    {"keepalives_count", "3"},
    {"tcp_user_timeout", "30000"},
};
constexpr Setting kWriterDefaults[] = {
    {"target_session_attrs", "read-write", "PGTARGETSESSIONATTRS"},
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
  if (!Connect()) Fail(ConnectProblem());
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
  const auto addDefaults = [&](std::span<const Setting> settings) {
    for (const auto& [name, value, variable] : settings)
      if (variable == nullptr || std::getenv(variable) == nullptr) add(name, value);
  };
  if (!HasService(connection_)) {
    addDefaults(kDefaults);
    if (isWriter_) addDefaults(kWriterDefaults);
  }
  add("fallback_application_name", "pimvobj");
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

std::string PostgresConnection::ConnectProblem() const {
  return ProblemOf(*handle_, name_ != kHiddenConnection);
}

void PostgresConnection::SetUp() {
  PGconn* connection = handle_.get();
  PQsetNoticeProcessor(
      connection, [](void*, const char*) {}, nullptr);
  if (const int version = PQserverVersion(connection); version < kOldestServer) {
    Fail("the server is PostgreSQL " + std::to_string(version / 10000) +
         ", and must be 14 at least");
  }
  const char* encoding = PQparameterStatus(connection, "server_encoding");
  if (encoding == nullptr || std::strcmp(encoding, "UTF8") != 0) {
    Fail("its database's encoding is " + std::string(encoding != nullptr ? encoding : "unknown") +
         ", and must be UTF8");
  }
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
    mayTryAgain_ = false;
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
    const std::string problem = ConnectProblem();
    if (Clock::now() + pause >= end || !MayPass(*handle_)) {
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
  if (!IsWaiting(taker)) Fail("the reading was undone after a failure: " + problem_);
  TakeUntil(&taker);
}

void PostgresConnection::AwaitAll() { TakeUntil(nullptr); }

// Behind a failure all results are taken, so that what comes next finds the connection at rest.
void PostgresConnection::TakeUntil(const ResultTaker* taker) {
  Settle();
  if (unsynced_ > 0) Sync();
  PostgresResult failed;
  BeginWaiting();
  while (!sent_.empty() && (taker == nullptr || failed || IsWaiting(*taker))) TakeFront(failed);
  if (failed) FailWith(failed.get());
}

void PostgresConnection::TakeFront(PostgresResult& failed) {
  const Sent front = sent_.front();
  PostgresResult first = NextResult();
  if (!front.isSync && first != nullptr) {
    while (NextResult() != nullptr) {
    }
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

void PostgresConnection::Fail(const std::string& problem) { throw StoreError(name_, problem); }

void PostgresConnection::NoteFailure(std::string problem) noexcept {
  // What is refused since another has failed says nothing new.
  if (!hasFailed_) problem_ = std::move(problem);
  hasFailed_ = true;
  ++failures_;
}

void PostgresConnection::FailNoted(std::string problem) {
  if (std::exchange(isGivenUp_, false)) problem = "given up";
  NoteFailure(problem);
  Fail(problem);
}

void PostgresConnection::FailWith(const PGresult* result) {
  const Problem problem = ProblemOf(result);
  if (problem.endsConnection) isLost_ = true;
  mayTryAgain_ = !isGivenUp_ && (problem.mayPass || IsLost());
  FailNoted(problem.text);
}

void PostgresConnection::FailLost() {
  const std::string detail = PQerrorMessage(handle_.get());
  isLost_ = true;
  isCopying_ = false;
  isCopied_ = false;
  later_.clear();
  sent_.clear();
  unsynced_ = 0;
  mayTryAgain_ = !isGivenUp_;
  FailNoted("the connection was lost" + InBrackets(FirstLineOf(detail)));
}

}  // namespace pim
