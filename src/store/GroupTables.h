// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <utility>

#include "pim/records/ContactGroups.h"
#include "records/SaveRecords.h"
#include "store/AmongRows.h"
#include "store/FieldIo.h"
#include "store/GroupClaims.h"
#include "store/KeySequence.h"
#include "store/RecordEraser.h"
#include "store/RowInserter.h"
#include "store/Statement.h"

namespace pim {

// The groups. Runs inside the caller's transaction.
class GroupTable {
 public:
  explicit GroupTable(Database& db);

  std::int32_t Load(CContactGroups& groups);
  // Brings into reach of Find the names that a program wrote which knows nothing of the column it
  // uses.
  void FoldNames();
  std::int32_t HighestKey();
  const GivenKeys& Given() const { return given_; }
  bool Holds(std::int32_t key);
  std::int32_t Find(WideStringView name);
  GroupClaims& claims() { return claims_; }
  pim::FreshKeys<GroupTable> FreshKeys(std::size_t wanted) { return {*this, sequence_, wanted}; }
  // The key under which the name is there then: another's, if that has come in between. On a
  // server the name is claimed by the commit.
  std::int32_t Insert(std::int32_t key, WideStringView name);
  void Rename(std::int64_t key, WideStringView name);
  // With its links. Its key is not given again.
  void Erase(std::int32_t key);

 private:
  static void Bind(Statement& statement, std::int64_t key, WideStringView name);

  Database& db_;
  KeySequence sequence_;
  GroupClaims claims_;
  Statement all_;
  Statement holds_;
  Statement find_;
  Statement highest_;
  Statement insert_;
  Statement update_;
  Statement unfold_;
  RecordEraser eraser_;
  FieldReader fields_;
  GivenKeys given_;
};

// The links of contacts to groups. Runs inside the caller's transaction.
class LinkTable {
 public:
  explicit LinkTable(Database& db);

  std::int32_t Load(CContactGroupPairs& pairs);
  // Has Count find the links of these pairs' contacts at hand, where to ask for each takes long.
  void Expect(const CContactGroupPairs& pairs);
  std::int64_t Count(std::int32_t contact, std::int32_t group);
  void Insert(std::span<LinkRow> links);

 private:
  // Tells which of the links leads nowhere, if one does.
  void CheckOwners(std::span<const LinkRow> links);
  void InsertChecked(std::span<LinkRow> links);

  Database& db_;
  using Link = std::pair<std::int32_t, std::int32_t>;  // contact and group

  Statement all_;
  AmongRows ofContacts_;
  std::map<Link, std::int64_t> expected_;
  Statement count_;
  RowInserter insert_;
  RowInserter insertChecked_;
  AmongRows contacts_;
  AmongRows groups_;
  Statement holdsContact_;
  Statement holdsGroup_;
};

}  // namespace pim
