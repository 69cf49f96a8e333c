// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/KeyRanges.h"

#include <iterator>

namespace pim {

void KeyRanges::Add(std::int32_t key) {
  auto next = lasts_.lower_bound(key);
  if (next != lasts_.end() && next->first == key) return;
  if (next != lasts_.begin()) {
    const auto before = std::prev(next);
    if (before->second >= key) return;
    if (before->second == key - 1) {
      before->second = key;
      if (next != lasts_.end() && next->first == key + 1) {
        before->second = next->second;
        lasts_.erase(next);
      }
      return;
    }
  }
  std::int32_t last = key;
  if (next != lasts_.end() && next->first - 1 == key) {
    last = next->second;
    next = lasts_.erase(next);
  }
  lasts_.emplace_hint(next, key, last);
}

void KeyRanges::Remove(std::int32_t key) {
  const auto behind = lasts_.upper_bound(key);
  if (behind == lasts_.begin()) return;
  const auto run = std::prev(behind);
  const auto [first, last] = *run;
  if (last < key) return;
  if (last > key) lasts_.emplace_hint(behind, key + 1, last);
  if (first < key) {
    run->second = key - 1;
  } else {
    lasts_.erase(run);
  }
}

bool KeyRanges::Holds(std::int32_t key) const {
  const auto behind = lasts_.upper_bound(key);
  return behind != lasts_.begin() && std::prev(behind)->second >= key;
}

std::vector<KeyRanges::Range> KeyRanges::All() const {
  std::vector<Range> ranges;
  for (const auto& [first, last] : lasts_) ranges.push_back({first, last});
  return ranges;
}

}  // namespace pim
