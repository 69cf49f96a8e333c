// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/StoreTransactions.h"

namespace pim {

void StoreTransactions::Begin(bool alone) {
  db_.Begin(alone);
  ++level_;
  for (TransactionMember* member : members_) member->Begun(level_);
}

void StoreTransactions::Commit() {
  for (TransactionMember* member : members_) member->CheckCommit(level_);
  db_.Commit();
  for (TransactionMember* member : members_) member->Committed(level_);
  --level_;
}

bool StoreTransactions::Rollback() noexcept {
  if (level_ == 0) return false;
  for (TransactionMember* member : members_) member->RolledBack(level_);
  --level_;
  return db_.Rollback();
}

}  // namespace pim
