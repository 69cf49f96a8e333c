// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/GroupClaims.h"

#include <algorithm>
#include <string>
#include <utility>

#include "store/StoredForms.h"

namespace pim {

GroupClaims::GroupClaims(Database& db)
    : db_(db),
      findOther_(db, "SELECT group_id FROM ContactGroups WHERE group_name_folded = ?"),
      claim_(db, "UPDATE ContactGroups SET group_name_folded = ?2 WHERE group_id = ?1"),
      moveLinks_(db, "UPDATE Contacts_ContactGroups SET group_id = ?2 WHERE group_id = ?1"),
      moveImportedLinks_(db, "UPDATE ImportedLinks SET group_id = ?2 WHERE group_id = ?1"),
      forgetImport_(db, "DELETE FROM ImportedGroups WHERE group_id = ?"),
      remove_(db, "DELETE FROM ContactGroups WHERE group_id = ?") {}

void GroupClaims::Remove(std::int32_t key) {
  std::erase_if(claims_, [key](const auto& claim) { return claim.second.key == key; });
}

std::int32_t GroupClaims::Find(const WideString& name) const {
  const auto found = claims_.find(name);
  return found == claims_.end() ? 0 : found->second.key;
}

bool GroupClaims::Holds(std::int32_t key) const {
  return std::ranges::any_of(claims_, [key](const auto& claim) { return claim.second.key == key; });
}

std::int32_t GroupClaims::Current(std::int32_t key) const {
  const auto found = become_.find(key);
  return found == become_.end() ? key : found->second;
}

void GroupClaims::CheckCommit(std::size_t level) {
  becoming_.clear();
  if (level > 1 || claims_.empty()) return;
  db_.KeepOtherClaimsOut();
  for (const auto& [name, claim] : claims_) Settle(name, claim.key);
}

void GroupClaims::Settle(const WideString& name, std::int32_t key) {
  std::string folded;
  AppendStoredText(name, folded);
  findOther_.BindText(1, folded);
  std::int32_t other = 0;
  for (Rows rows(findOther_); rows.Next();) other = KeyFromStored(findOther_.Integer(0));
  if (other == 0) {
    claim_.Bind(1, std::int64_t{key});
    claim_.BindText(2, folded);
    return claim_.Run();
  }
  for (Statement* const statement : {&moveLinks_, &moveImportedLinks_}) {
    statement->Bind(1, std::int64_t{key});
    statement->Bind(2, std::int64_t{other});
    statement->Run();
  }
  for (Statement* const statement : {&forgetImport_, &remove_}) {
    statement->Bind(1, std::int64_t{key});
    statement->Run();
  }
  becoming_[key] = other;
}

void GroupClaims::Committed(std::size_t level) {
  level_ = level - 1;
  for (auto& [name, claim] : claims_) claim.level = std::min(claim.level, level_);
  if (level > 1) return;
  claims_.clear();
  for (auto& [before, now] : become_)
    if (const auto next = becoming_.find(now); next != becoming_.end()) now = next->second;
  become_.merge(std::exchange(becoming_, {}));
}

void GroupClaims::RolledBack(std::size_t level) noexcept {
  level_ = level - 1;
  std::erase_if(claims_, [level](const auto& claim) { return claim.second.level >= level; });
  becoming_.clear();
}

}  // namespace pim
