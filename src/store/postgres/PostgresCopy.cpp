// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/postgres/PostgresConnection.h"

namespace pim {

void PostgresConnection::StartCopy(const std::string& sql) {
  Settle();
  AwaitAll();
  if (PQexitPipelineMode(handle_.get()) == 0) FailLost();
  BeginWaiting();
  if (PQsendQuery(handle_.get(), sql.c_str()) == 0) FailLost();
  isCopying_ = true;
  const PostgresResult result = NextResult();
  if (PQresultStatus(result.get()) == PGRES_COPY_IN) return;
  FinishCopy();
  FailWith(result.get());
}

void PostgresConnection::PutCopy(std::string_view bytes) {
  BeginWaiting();
  int put = 0;
  while ((put = PQputCopyData(handle_.get(), bytes.data(), static_cast<int>(bytes.size()))) == 0)
    WaitForServer(true);
  if (put < 0) CheckCopy();  // the server has ended it
  Flush();
}

void PostgresConnection::EndCopy() {
  BeginWaiting();
  int ended = 0;
  while ((ended = PQputCopyEnd(handle_.get(), nullptr)) == 0) WaitForServer(true);
  if (ended < 0) CheckCopy();
  Flush();
  isCopied_ = true;
}

void PostgresConnection::CheckCopy() {
  isCopied_ = false;
  BeginWaiting();
  const PostgresResult result = NextResult();
  FinishCopy();
  if (result != nullptr && PQresultStatus(result.get()) == PGRES_COMMAND_OK) return;
  later_.clear();
  FailWith(result.get());
}

void PostgresConnection::RunScript(const std::string& sql) {
  AwaitAll();
  if (PQexitPipelineMode(handle_.get()) == 0) FailLost();
  BeginWaiting();
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
    BeginWaiting();
    if (PQputCopyEnd(handle_.get(), "left out") < 0) FailLost();
    NoteFailure("rows were left out");
    FinishCopy();
  } catch (const StoreError&) {
    isCopying_ = false;
  }
}

}  // namespace pim
