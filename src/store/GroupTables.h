// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

#include "pim/records/ContactGroups.h"
#include "records/SaveRecords.h"
#include "store/FieldIo.h"
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
  void Insert(std::int32_t key, WideStringView name) {
    Run(insert_, key, name);
    given_.Add(key);
  }
  void Rename(std::int32_t key, WideStringView name) { Run(update_, key, name); }
  // With its links. Its key is not given again.
  void Erase(std::int32_t key);

 private:
  static void Run(Statement& statement, std::int64_t key, WideStringView name);

  Statement all_;
  Statement holds_;
  Statement find_;
  Statement highest_;
  Statement insert_;
  Statement update_;
  RecordEraser eraser_;
  FieldReader fields_;
  GivenKeys given_;
};

// The links of contacts to groups. Runs inside the caller's transaction.
class LinkTable {
 public:
  explicit LinkTable(Database& db);

  std::int32_t Load(CContactGroupPairs& pairs);
  std::int64_t Count(std::int32_t contact, std::int32_t group);
  void Insert(std::span<LinkRow> links);

 private:
  // Tells which of the links leads nowhere, if one does.
  void CheckOwners(std::span<const LinkRow> links);

  Database& db_;
  Statement all_;
  Statement count_;
  RowInserter insert_;
  Statement holdsContact_;
  Statement holdsGroup_;
};

}  // namespace pim
