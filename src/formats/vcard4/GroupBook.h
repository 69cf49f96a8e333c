// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "formats/vcard4/CardText.h"

namespace pim {

// What the cards of a text's groups tell of its contacts. A group's card mostly stands behind those
// of its members, so that the text is looked at twice ahead of its conversion: for the groups, and
// for which of their members have a card. Grows with the members of groups, not with the text.
class GroupBook {
 public:
  // A card of vCard 3.0 or 4.0, of each of them in each look, in UTF-8. Linear in it.
  void Take(NarrowStringView card);
  // A look has ended.
  void EndLook();
  bool IsComplete() const { return look_ == Look::None; }

  // In a complete one: the names of the groups that a card with this UID is in, once, so that many
  // groups and many cards with one UID don't multiply; and whether what a MEMBER names has a card.
  std::vector<NarrowStringView> TakeGroupsOf(NarrowStringView uid);
  bool HasCardOf(NarrowStringView member) const;

 private:
  enum class Look : std::uint8_t { ForGroups, ForMembers, None };
  struct Member {
    std::vector<std::size_t> groups;
    bool hasCard = false;
  };
  std::vector<NarrowString> names_;
  std::unordered_map<NarrowString, Member> members_;  // by UID without its scheme, in small letters
  Look look_ = Look::ForGroups;
};

// Whether the lines are a group's card: the one that says so, or null.
const CardLine* GroupMarkOf(const std::vector<CardLine>& lines);
// Its group's name; empty where none stands there.
NarrowString GroupNameOf(const std::vector<CardLine>& lines);

}  // namespace pim
