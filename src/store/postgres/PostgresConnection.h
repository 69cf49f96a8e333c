// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <libpq-fe.h>

#include <chrono>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "pim/store/PostgresStore.h"

namespace pim {

struct ClearResult {
  void operator()(PGresult* result) const noexcept { PQclear(result); }
};
using PostgresResult = std::unique_ptr<PGresult, ClearResult>;

// What takes the results of a command.
class ResultTaker {
 public:
  // Of the one command that it waits for.
  virtual void Take(PostgresResult result) noexcept = 0;

 protected:
  ~ResultTaker() = default;
};

// A parameter on its way: bytes in PostgreSQL's binary form, none for NULL.
struct WireValue {
  Oid type = 0;  // 0: the server finds it out
  bool isNull = true;
  std::string bytes;
};

// A connection to a server. Commands go off one behind the other, and their results are taken when
// somebody waits for one of them; what goes wrong is thrown then, as StoreError. Waiting ends when
// the server is gone, and when the host gives up.
class PostgresConnection {
 public:
  // Connects. `isWriter` wants a server that can be written.
  PostgresConnection(const std::string& connection, bool isWriter, const PostgresWaits& waits);
  PostgresConnection(const PostgresConnection&) = delete;
  PostgresConnection& operator=(const PostgresConnection&) = delete;
  ~PostgresConnection();

  PGconn* handle() const noexcept { return handle_.get(); }
  const std::string& name() const noexcept { return name_; }
  const PostgresWaits& waits() const noexcept { return waits_; }
  // Counts up with each new connection, which knows no statement of the one before.
  std::uint64_t generation() const noexcept { return generation_; }
  bool IsLost() const noexcept { return isLost_ || PQstatus(handle_.get()) != CONNECTION_OK; }
  // Connects anew, for as long as a failover may take.
  void Reconnect();

  // Each sends one command off. `taker` may be null where only failures matter.
  void SendPrepare(const std::string& name, const std::string& sql, const std::vector<Oid>& types,
                   ResultTaker* taker);
  void SendDescribe(const std::string& name, ResultTaker* taker);
  void SendPrepared(const std::string& name, const std::vector<WireValue>& values,
                    ResultTaker* taker);
  void Send(const std::string& sql, const std::vector<WireValue>& values = {},
            ResultTaker* taker = nullptr);
  // For a command that gives no rows: leaves the server to the rows of the last COPY, and sends it
  // off when it is needed.
  void SendLater(std::string sql);
  // Waits for the result that `taker` is to have, and whatever was sent before it.
  void Await(const ResultTaker& taker);
  // Waits for all that was sent.
  void AwaitAll();
  // Sends one command off and waits for its result.
  PostgresResult Ask(const std::string& sql, const std::vector<WireValue>& values = {});
  // Runs several statements that give no rows.
  void RunScript(const std::string& sql);
  // Its result isn't wanted any more.
  void Forget(const ResultTaker& taker) noexcept;

  // COPY ... FROM STDIN, with nothing else under way until it ends.
  void StartCopy(const std::string& sql);
  void PutCopy(std::string_view bytes);
  // What goes wrong with the rows is told by the next command.
  void EndCopy();
  // Leaves out what has been put since StartCopy; for one that isn't to end.
  void AbortCopy() noexcept;

  // Whether the last failure may pass when all is done again.
  bool MayTryAgain() const noexcept { return mayTryAgain_; }
  void SetMayTryAgain(bool may) noexcept { mayTryAgain_ = may; }
  // Whether a command has failed, so that the server undoes the innermost transaction and nothing
  // else, until that is done.
  bool HasFailed() const noexcept { return hasFailed_; }
  // The last one, in words.
  const std::string& problem() const noexcept { return problem_; }
  // How many have: behind each, what was sent after the command that failed has not been done.
  std::uint64_t failures() const noexcept { return failures_; }
  void SetUndone() noexcept { hasFailed_ = false; }
  [[noreturn]] void Fail(const std::string& problem);
  // Of a result that failed.
  [[noreturn]] void FailWith(const PGresult* result);

 private:
  struct Close {
    void operator()(PGconn* connection) const noexcept { PQfinish(connection); }
  };
  struct Sent {
    ResultTaker* taker;
    bool isSync;
  };

  bool Connect();
  std::string ConnectProblem() const;
  void SetUp();
  void UseOneSchema();
  void Queue(int sent, ResultTaker* taker);
  void Sync();
  void TakeFront(PostgresResult& failed);
  bool IsWaiting(const ResultTaker& taker) const noexcept;
  void TakeUntil(const ResultTaker* taker);
  void EnterPipeline();
  void Settle();
  void CheckCopy();
  void FinishCopy();
  void BeginWaiting() noexcept;
  // Waits until the socket can be read, or written as well.
  void WaitForServer(bool toWrite);
  void GiveUp();
  void LookAfter();
  PostgresResult NextResult();
  void Flush();
  void NoteFailure(std::string problem) noexcept;
  [[noreturn]] void FailNoted(std::string problem);
  [[noreturn]] void FailLost();

  std::string connection_;
  std::string name_;
  std::string schema_;  // as SQL names it
  bool isWriter_;
  PostgresWaits waits_;
  std::unique_ptr<PGconn, Close> handle_;
  std::uint64_t generation_ = 0;
  std::deque<Sent> sent_;
  std::size_t unsynced_ = 0;  // commands behind the last sync
  std::vector<std::string> later_;
  bool isCopying_ = false;
  bool isCopied_ = false;  // and its result isn't taken yet
  bool isLost_ = false;
  bool isGivenUp_ = false;
  bool mayTryAgain_ = false;
  bool hasFailed_ = false;
  std::uint64_t failures_ = 0;
  std::string problem_;
  std::chrono::steady_clock::time_point heard_;  // from the server, or asked it
};

}  // namespace pim
