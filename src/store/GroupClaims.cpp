// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/GroupClaims.h"

#include <string>
#include <utility>

#include "platform/LetterCase.h"
#include "records/RecordMap.h"
#include "store/StoredForms.h"

namespace pim {

GroupClaims::GroupClaims(Database& db)
    : db_(db),
      names_(std::in_place),
      stored_(db, kGroupTable, "group_id", "group_name"),
      findOther_(db, "SELECT group_id FROM ContactGroups WHERE group_name_folded = ?"),
      claim_(db, "UPDATE ContactGroups SET group_name_folded = ?2 WHERE group_id = ?1"),
      moveLinks_(db, "UPDATE Contacts_ContactGroups SET group_id = ?2 WHERE group_id = ?1"),
      moveImportedLinks_(db, "UPDATE ImportedLinks SET group_id = ?2 WHERE group_id = ?1"),
      forgetImport_(db, "DELETE FROM ImportedGroups WHERE group_id = ?"),
      remove_(db, "DELETE FROM ContactGroups WHERE group_id = ?") {}

void GroupClaims::Add(std::int32_t key, const WideString& name) {
  keys_.push_back(key);
  isNew_.insert(key);
  if (names_) (*names_)[name] = key;
  ++changes_;
}

void GroupClaims::ForgetNames() noexcept {
  names_.reset();
  ++changes_;
}

std::int32_t GroupClaims::Find(const WideString& name) {
  if (keys_.empty()) return 0;
  const Names& names = NamesNow();
  const auto found = names.find(name);
  return found == names.end() ? 0 : found->second;
}

const GroupClaims::Names& GroupClaims::NamesNow() {
  if (names_) return *names_;
  Names names;
  FieldReader fields;
  stored_.Visit(keys_, [&](Statement& row) {
    const std::int32_t key = KeyFromStored(row.Integer(0));
    if (!Holds(key)) return;
    WideText name;
    if (!row.IsNull(1)) fields.Read(row.row(), 1, FieldRef(&name));
    names[FoldLetterCase(name)] = key;
  });
  return names_.emplace(std::move(names));
}

std::int32_t GroupClaims::Current(std::int32_t key) const {
  const auto found = become_.find(key);
  return found == become_.end() ? key : found->second;
}

void GroupClaims::Begun(std::size_t) { marks_.push_back({keys_.size(), changes_}); }

void GroupClaims::CheckCommit(std::size_t level) {
  becoming_.clear();
  if (level > 1 || keys_.empty()) return;
  db_.KeepOtherClaimsOut();
  for (const auto& [name, key] : NamesNow()) Settle(name, key);
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
  marks_.pop_back();
  if (level > 1) return;
  keys_.clear();
  isNew_.clear();
  names_.emplace();
  for (auto& [before, now] : become_)
    if (const auto next = becoming_.find(now); next != becoming_.end()) now = next->second;
  become_.merge(std::exchange(becoming_, {}));
}

void GroupClaims::RolledBack(std::size_t) noexcept {
  const Mark mark = marks_.back();
  marks_.pop_back();
  for (; keys_.size() > mark.keys; keys_.pop_back()) isNew_.erase(keys_.back());
  if (changes_ != mark.changes) names_.reset();
  becoming_.clear();
}

}  // namespace pim
