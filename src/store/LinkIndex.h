// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <limits>
#include <set>
#include <tuple>
#include <utility>
#include <vector>

namespace pim {

// The links of contacts to groups, found by their contact. `Number` is what the store knows a link
// by; one may be there more than once.
template <class Number>
class LinkIndex {
 public:
  struct Link {
    std::int32_t contact;
    std::int32_t group;
    Number number;
    bool operator<(const Link& other) const {
      return std::tie(contact, group, number) < std::tie(other.contact, other.group, other.number);
    }
  };

  // Most come by ascending contact.
  void Add(const Link& link) { links_.insert(links_.end(), link); }
  void Remove(const Link& link) { links_.erase(link); }
  // A link that may be put back without memory.
  using Node = typename std::set<Link>::node_type;
  Node Take(const Link& link) { return links_.extract(link); }
  void PutBack(Node&& node) { links_.insert(std::move(node)); }
  std::int64_t Count(std::int32_t contact, std::int32_t group) const {
    std::int64_t count = 0;
    auto next = links_.lower_bound({contact, group, std::numeric_limits<Number>::min()});
    for (; next != links_.end() && next->contact == contact && next->group == group; ++next)
      ++count;
    return count;
  }
  std::vector<Link> Of(std::int32_t contact) const {
    std::vector<Link> links;
    auto next = links_.lower_bound(
        {contact, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<Number>::min()});
    for (; next != links_.end() && next->contact == contact; ++next) links.push_back(*next);
    return links;
  }

 private:
  std::set<Link> links_;
};

}  // namespace pim
