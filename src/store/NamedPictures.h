// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <vector>

#include "pim/support/Strings.h"

namespace pim {

// The names of contacts' pictures, and how many contacts have each. An empty name is none. A name
// stays when no contact has it any more, so that a rollback, which must not fail, needs no memory.
class NamedPictures {
 public:
  void Add(WideStringView name) {
    if (name.empty()) return;
    const auto found = counts_.find(name);
    if (found != counts_.end()) {
      ++found->second;
    } else {
      counts_.emplace(name, 1);
    }
  }
  void Remove(WideStringView name) {
    if (name.empty()) return;
    const auto found = counts_.find(name);
    if (found != counts_.end()) --found->second;
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
  std::map<WideString, std::int64_t, std::less<>> counts_;
};

}  // namespace pim
