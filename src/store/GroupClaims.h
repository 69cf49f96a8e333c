// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "pim/support/Strings.h"
#include "store/AmongRows.h"
#include "store/FieldIo.h"
#include "store/Statement.h"
#include "store/StoreTransactions.h"

namespace pim {

// The groups that a transaction on a server brings. Each claims its name only when the outermost
// transaction is committed, so that nobody waits for it meanwhile; where another has the name by
// then, the two become one.
class GroupClaims final : public TransactionMember {
 public:
  explicit GroupClaims(Database& db);

  // For a group that has been stored. Names are in one letter case here.
  void Add(std::int32_t key, const WideString& name);
  // One of them has been renamed or deleted.
  void ForgetNames() noexcept;
  // The key of the one that has the name now; 0 where there is none.
  std::int32_t Find(const WideString& name);
  bool Holds(std::int32_t key) const { return isNew_.contains(key); }
  // The key that a group has by now which had that one before it became part of another.
  std::int32_t Current(std::int32_t key) const;
  // Whether a group has become part of another.
  bool HaveSomeBecome() const { return !become_.empty(); }

  void Begun(std::size_t level) override;
  void CheckCommit(std::size_t level) override;
  void Committed(std::size_t level) override;
  void RolledBack(std::size_t level) noexcept override;

 private:
  struct Mark {
    std::size_t keys;
    std::size_t changes;
  };
  using Names = std::unordered_map<WideString, std::int32_t>;
  const Names& NamesNow();
  void Settle(const WideString& name, std::int32_t key);

  Database& db_;
  std::vector<std::int32_t> keys_;  // of the new groups, in their order
  std::unordered_set<std::int32_t> isNew_;
  std::optional<Names> names_;  // of those that are there; none where they aren't known
  std::size_t changes_ = 0;     // of the names
  std::vector<Mark> marks_;     // one for each open transaction
  std::unordered_map<std::int32_t, std::int32_t> becoming_;  // with the commit that is under way
  std::unordered_map<std::int32_t, std::int32_t> become_;
  AmongRows stored_;
  Statement findOther_;
  Statement claim_;
  Statement moveLinks_;
  Statement moveImportedLinks_;
  Statement forgetImport_;
  Statement remove_;
};

}  // namespace pim
