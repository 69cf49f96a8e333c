// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <unordered_map>
#include <vector>

#include "pim/records/Contact.h"
#include "pim/support/Strings.h"

namespace pim {

// The groups of the contacts that a text holds, in the order in which they were met, each with its
// members' UUIDs.
class GroupMembers {
 public:
  using Uuid = std::array<char, 36>;
  struct Group {
    WideString name;
    std::vector<Uuid> members;
  };

  void Add(const CContact& contact, NarrowStringView uuid) {
    Uuid member{};
    std::copy_n(uuid.begin(), std::min(uuid.size(), member.size()), member.begin());
    for (const WideText& name : contact.groups()) {
      if (name.empty()) continue;
      const auto [place, isNew] = places_.try_emplace(name.str(), groups_.size());
      if (isNew) groups_.push_back({place->first, {}});
      std::vector<Uuid>& members = groups_[place->second].members;
      // A contact may name a group twice.
      if (members.empty() || members.back() != member) members.push_back(member);
    }
  }

  const std::vector<Group>& groups() const { return groups_; }

 private:
  std::vector<Group> groups_;
  std::unordered_map<WideString, std::size_t> places_;
};

}  // namespace pim
