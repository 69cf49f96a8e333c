// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>

#include "pim/support/Strings.h"
#include "store/Statement.h"
#include "store/StoreTransactions.h"

namespace pim {

// The groups that a transaction on a server brings. Each claims its name only when the outermost
// transaction is committed, so that nobody waits for it meanwhile; where another has the name by
// then, the two become one.
class GroupClaims final : public TransactionMember {
 public:
  explicit GroupClaims(Database& db);

  // Names are in one letter case.
  void Add(std::int32_t key, WideStringView name) { claims_[WideString(name)] = {key, level_}; }
  void Remove(std::int32_t key);
  // 0 where there is none.
  std::int32_t Find(const WideString& name) const;
  bool Holds(std::int32_t key) const;
  // The key that a group has by now which had that one before it became part of another.
  std::int32_t Current(std::int32_t key) const;
  // Whether a group has become part of another.
  bool HaveSomeBecome() const { return !become_.empty(); }

  void Begun(std::size_t level) override { level_ = level; }
  void CheckCommit(std::size_t level) override;
  void Committed(std::size_t level) override;
  void RolledBack(std::size_t level) noexcept override;

 private:
  struct Claim {
    std::int32_t key;
    std::size_t level;
  };
  void Settle(const WideString& name, std::int32_t key);

  Database& db_;
  std::size_t level_ = 0;
  std::unordered_map<WideString, Claim> claims_;             // by name
  std::unordered_map<std::int32_t, std::int32_t> becoming_;  // with the commit that is under way
  std::unordered_map<std::int32_t, std::int32_t> become_;
  Statement findOther_;
  Statement claim_;
  Statement moveLinks_;
  Statement moveImportedLinks_;
  Statement forgetImport_;
  Statement remove_;
};

}  // namespace pim
