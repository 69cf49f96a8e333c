// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <vector>

namespace pim {

// Keys, as runs of following ones.
class KeyRanges {
 public:
  struct Range {
    std::int32_t first;
    std::int32_t last;
  };

  void Add(std::int32_t key);
  void Remove(std::int32_t key);
  bool Holds(std::int32_t key) const;
  void Clear() { lasts_.clear(); }
  std::vector<Range> All() const;

 private:
  std::map<std::int32_t, std::int32_t> lasts_;  // of each run, by its first key
};

}  // namespace pim
