// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/Database.h"

namespace pim {
namespace {

constexpr const char* kIsBeingRead = "is being read, so that nothing can be written";

}  // namespace

void Database::Begin(bool alone) {
  if (readings_ > 0) Fail(kIsBeingRead);
  if (depth_ == 0) {
    StartTransaction(alone);
  } else {
    CheckTransaction();
    if (alone) KeepOthersOut();
    StartInner();
  }
  ++depth_;
}

void Database::Commit() {
  if (readings_ > 0) Fail(kIsBeingRead);
  if (depth_ == 0) Fail("there is no transaction to commit");
  CheckTransaction();
  depth_ == 1 ? CommitTransaction() : CommitInner();
  --depth_;
}

bool Database::Rollback() noexcept {
  if (depth_ == 0) return false;
  return Undo(--depth_ == 0);
}

// Whether it may pass is what the failure ahead of this one says.
void Database::CheckTransaction() {
  if (depth_ > 0 && IsUndone())
    throw StoreError(name_, "the transaction was undone after a failure");
}

void Database::CheckReading() {
  if (readings_ > 0 && IsUndone()) Fail("what was being read is undone by a failure");
}

void Database::Fail(const std::string& problem) {
  ForgetFailure();
  throw StoreError(name_, problem);
}

void Database::BeginReading() {
  CheckTransaction();
  if (depth_ == 0 && readings_ == 0) StartReading();
  ++readings_;
}

void Database::EndReading() noexcept { FinishReading(--readings_ == 0 && depth_ == 0); }

ReadTransaction::ReadTransaction(Database& db) : db_(db) {
  if (db.reading_) db.Fail("is being read already");
  db.BeginReading();
  db.reading_ = true;
}

ReadTransaction::~ReadTransaction() {
  db_.reading_ = false;
  db_.EndReading();
}

}  // namespace pim
