// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/vcard4/GroupBook.h"

#include <algorithm>
#include <utility>

#include "formats/vcard4/CardWords.h"
#include "support/Ascii.h"

namespace pim {
namespace {

// The same for all ways in which one contact is named.
NarrowString MemberKey(NarrowStringView uid) {
  uid = Trim(uid);
  if (EqualsIgnoringCase(uid.substr(0, kUuidStart.size()), kUuidStart))
    uid.remove_prefix(kUuidStart.size());
  NarrowString key(uid);
  std::ranges::transform(key, key.begin(), ToLower);
  return key;
}

const CardLine* LineOf(const std::vector<CardLine>& lines, CardProperty property) {
  const auto line = std::ranges::find_if(lines, [property](const CardLine& candidate) {
    return PropertyOf(candidate.name) == property && !Trim(candidate.value).empty();
  });
  return line == lines.end() ? nullptr : &*line;
}

}  // namespace

const CardLine* GroupMarkOf(const std::vector<CardLine>& lines) {
  for (const CardLine& line : lines) {
    if (PropertyOf(line.name) == CardProperty::Kind &&
        EqualsIgnoringCase(Trim(line.value), kGroupKind))
      return &line;
  }
  return nullptr;
}

NarrowString GroupNameOf(const std::vector<CardLine>& lines) {
  NarrowString name;
  NarrowString decoded;
  for (const CardProperty property : {CardProperty::FormattedName, CardProperty::Name}) {
    const CardLine* const line = LineOf(lines, property);
    if (line == nullptr || !name.empty()) continue;
    bool isExact = true;
    const NarrowStringView value = ValueOf(*line, decoded, isExact);
    const bool isWhole = property == CardProperty::FormattedName;
    UnescapeText(isWhole ? value : value.substr(0, FindUnescaped(value, ';')), name);
  }
  return name;
}

void GroupBook::Take(NarrowStringView card) {
  const CardText text(card);
  if (GroupMarkOf(text.lines()) == nullptr) {
    const CardLine* const uid = LineOf(text.lines(), CardProperty::Uid);
    const auto member = look_ == Look::ForMembers && uid != nullptr
                            ? members_.find(MemberKey(uid->value))
                            : members_.end();
    if (member != members_.end()) member->second.hasCard = true;
    return;
  }
  if (look_ != Look::ForGroups) return;
  NarrowString name = GroupNameOf(text.lines());
  if (name.empty()) return;
  const std::size_t group = names_.size();
  names_.push_back(std::move(name));
  for (const CardLine& line : text.lines()) {
    if (PropertyOf(line.name) != CardProperty::Member) continue;
    std::vector<std::size_t>& groups = members_[MemberKey(line.value)].groups;
    // One may be named twice.
    if (groups.empty() || groups.back() != group) groups.push_back(group);
  }
}

void GroupBook::EndLook() {
  look_ = look_ == Look::ForGroups && !members_.empty() ? Look::ForMembers : Look::None;
}

std::vector<NarrowStringView> GroupBook::TakeGroupsOf(NarrowStringView uid) {
  std::vector<NarrowStringView> names;
  const auto member = members_.find(MemberKey(uid));
  if (member == members_.end()) return names;
  const std::vector<std::size_t> groups = std::exchange(member->second.groups, {});
  names.reserve(groups.size());
  for (const std::size_t group : groups) names.emplace_back(names_[group]);
  return names;
}

bool GroupBook::HasCardOf(NarrowStringView member) const {
  const auto known = members_.find(MemberKey(member));
  return known != members_.end() && known->second.hasCard;
}

}  // namespace pim
