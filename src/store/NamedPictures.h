// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <unordered_map>
#include <vector>

#include "pim/support/Strings.h"

namespace pim {

// The names of contacts' pictures, and how many contacts have each. An empty name is none.
class NamedPictures {
 public:
  void Add(WideStringView name) {
    if (!name.empty()) ++counts_[WideString(name)];
  }
  void Remove(WideStringView name) {
    if (name.empty()) return;
    const auto found = counts_.find(WideString(name));
    if (found != counts_.end() && --found->second == 0) counts_.erase(found);
  }
  // Those of some contacts, a name for each of these, that no other contact has.
  std::vector<WideString> OfNoOther(const std::vector<WideString>& names) const {
    std::map<WideString, std::int64_t> theirs;
    for (const WideString& name : names)
      if (!name.empty()) ++theirs[name];
    std::vector<WideString> left;
    for (const auto& [name, count] : theirs) {
      const auto all = counts_.find(name);
      if (all == counts_.end() || all->second <= count) left.push_back(name);
    }
    return left;
  }

 private:
  std::unordered_map<WideString, std::int64_t> counts_;
};

}  // namespace pim
