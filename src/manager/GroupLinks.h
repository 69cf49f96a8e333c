// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "pim/records/ContactGroups.h"
#include "pim/records/Contacts.h"

namespace pim {

// Finds groups by name, the first one in order where several have it.
class GroupsByName {
 public:
  void Add(WideStringView name, std::int32_t groupId);
  // Null when there is none.
  const std::int32_t* Find(WideStringView name) const;

 private:
  std::unordered_map<WideString, std::int32_t> ids_;  // by GroupKey
};

// Links contacts to the store's groups by the names that their text held, and makes groups that the
// store lacks. One linker serves the whole of an import.
class GroupLinker {
 public:
  explicit GroupLinker(std::int32_t db) : db_(db) {}

  // False when the store failed anywhere; the other links are tried all the same.
  [[nodiscard]] bool Link(const CContacts& contacts);

 private:
  [[nodiscard]] bool LoadGroups();
  std::int32_t GroupIdOf(WideStringView name, bool& done);

  std::int32_t db_;
  bool loaded_ = false;
  GroupsByName groups_;
};

// The names of contacts' groups, by their pairs.
class GroupNames {
 public:
  GroupNames(const CContactGroups& groups, const CContactGroupPairs& pairs);

  // Adds the names to the contact behind those that it holds, in the order of the pairs; an empty
  // name for a pair without a group. Of several contacts with one key only the first gets them.
  void AttachTo(CContact& contact);

 private:
  std::unordered_map<std::int32_t, std::vector<WideString>> names_;  // by contact_id
};

}  // namespace pim
