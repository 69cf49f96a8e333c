// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <utility>
#include <vector>

#include "pim/store/ImportHistory.h"
#include "store/GroupTables.h"
#include "store/ImportTable.h"
#include "store/KeyRanges.h"
#include "store/OriginTable.h"
#include "store/RecordTable.h"

namespace pim {

// Takes imports back. What goes is found out by reading alone, so that it can be told without being
// done. Runs inside the caller's transaction.
class ImportUndo {
 public:
  ImportUndo(TableServices& services, ContactTable& contacts, ItemTable& items, GroupTable& groups);

  // Finds out what goes. Throws StoreError for an import that can't be undone.
  void Plan(const UndoOptions& options, UndoResult& result);
  // Does it.
  void Apply(UndoResult& result);

 private:
  struct Link {
    std::int32_t contact;
    std::int32_t group;
    friend bool operator==(const Link&, const Link&) = default;
    friend bool operator<(const Link& one, const Link& other) {
      return std::pair(one.contact, one.group) < std::pair(other.contact, other.group);
    }
  };

  std::int32_t Choose(const UndoOptions& options);
  template <class Table>
  void PlanRecords(OriginTable& origins, Table& table, KeyRanges& doomed, UndoResult& result);
  template <class Record, class Records>
  void Compare(std::span<const OriginTable::KeyedPrint> rows, RecordTable<Record, Records>& table,
               KeyRanges& doomed, UndoResult& result);
  void PlanLinks(UndoResult& result);
  void PlanGroups(UndoResult& result);
  bool HasOtherMembers(std::int32_t group);
  void PlanPictures(UndoResult& result);

  TableServices& services_;
  ContactTable& contacts_;
  ItemTable& items_;
  GroupTable& groups_;
  ImportTable imports_;
  OriginTable contactOrigins_;
  OriginTable itemOrigins_;
  Statement linksOfImport_;
  Statement forgetLinks_;
  Statement dropLink_;
  Statement groupsOfImport_;
  Statement membersOf_;

  bool force_ = false;
  std::function<void(std::int64_t records)> progress_;
  std::int64_t compared_ = 0;  // records
  KeyRanges doomedContacts_;
  KeyRanges doomedItems_;
  std::vector<Link> doomedLinks_;  // of contacts that stay; sorted
  std::vector<std::int32_t> doomedGroups_;
  std::vector<WideString> pictures_;  // names that doomed contacts have
};

}  // namespace pim
