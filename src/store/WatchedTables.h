// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

#include "store/GroupTables.h"
#include "store/ImportRecorder.h"

namespace pim {

// The links of contacts to groups, those of an import under way being told to its recorder.
class WatchedLinks {
 public:
  WatchedLinks(LinkTable& links, ImportRecorder& recorder) : links_(links), recorder_(recorder) {}

  void Expect(const CContactGroupPairs& pairs) { links_.Expect(pairs); }
  std::int64_t Count(std::int32_t contact, std::int32_t group) {
    return links_.Count(contact, group);
  }
  void Insert(std::span<LinkRow> links) {
    links_.Insert(links);
    recorder_.AddLinks(links);
  }

 private:
  LinkTable& links_;
  ImportRecorder& recorder_;
};

// The same for groups.
class WatchedGroups {
 public:
  WatchedGroups(GroupTable& groups, ImportRecorder& recorder)
      : groups_(groups), recorder_(recorder) {}

  std::int32_t HighestKey() { return groups_.HighestKey(); }
  const GivenKeys& Given() const { return groups_.Given(); }
  bool Holds(std::int32_t key) { return groups_.Holds(key); }
  std::int32_t Find(WideStringView name) { return groups_.Find(name); }
  void Rename(std::int32_t key, WideStringView name) { groups_.Rename(key, name); }
  auto FreshKeys(std::size_t wanted) { return groups_.FreshKeys(wanted); }
  std::int32_t Insert(std::int32_t key, WideStringView name) {
    const std::int32_t inserted = groups_.Insert(key, name);
    if (inserted == key) recorder_.AddGroup(key);
    return inserted;
  }

 private:
  GroupTable& groups_;
  ImportRecorder& recorder_;
};

}  // namespace pim
