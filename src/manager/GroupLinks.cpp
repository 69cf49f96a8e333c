// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "manager/GroupLinks.h"

#include "support/GroupKey.h"

namespace pim {

void GroupsByName::Add(WideStringView name, std::int32_t groupId) {
  ids_.try_emplace(GroupKey(name), groupId);
}

const std::int32_t* GroupsByName::Find(WideStringView name) const {
  const auto found = ids_.find(GroupKey(name));
  return found == ids_.end() ? nullptr : &found->second;
}

bool GroupLinker::LoadGroups() {
  CContactGroups stored;
  const bool done = stored.OpenFromDB(db_) >= 0;
  for (std::int32_t i = 0; i < stored.GetCount(); ++i)
    if (stored[i].group_id > 0) groups_.Add(stored[i].group_name, stored[i].group_id);
  loaded_ = done;
  return done;
}

std::int32_t GroupLinker::GroupIdOf(WideStringView name, bool& done) {
  if (!loaded_ && !LoadGroups()) done = false;  // most cards name no group
  if (const std::int32_t* groupId = groups_.Find(name)) return *groupId;
  CContactGroups created;
  CContactGroup& group = created.AddNew();
  group.group_name = name;
  if (created.SaveToDB(db_, true) < 0) {
    done = false;  // the next contact that names the group tries again
  } else {
    groups_.Add(name, group.group_id);
  }
  return group.group_id;
}

bool GroupLinker::Link(const CContacts& contacts) {
  bool done = true;
  CContactGroupPairs pairs;
  // Records that were left out as equal bear one key, and bring each link once among them.
  std::unordered_map<std::uint64_t, std::int32_t> makers;
  for (std::int32_t i = 0; i < contacts.GetCount(); ++i) {
    for (const WideText& name : contacts[i].groups()) {
      const std::int32_t groupId = GroupIdOf(name, done);
      if (groupId <= 0) continue;  // a link to no group would cost the others theirs
      const std::uint64_t link = std::uint64_t{static_cast<std::uint32_t>(contacts[i].tag)} << 32 |
                                 static_cast<std::uint32_t>(groupId);
      if (makers.try_emplace(link, i).first->second != i) continue;
      CContactGroupPair& pair = pairs.AddNew();
      pair.contact_id = contacts[i].tag;
      pair.group_id = groupId;
    }
  }
  return pairs.SaveToDB() >= 0 && done;
}

GroupNames::GroupNames(const CContactGroups& groups, const CContactGroupPairs& pairs) {
  std::unordered_map<std::int32_t, WideStringView> byId;
  for (std::int32_t i = 0; i < groups.GetCount(); ++i)
    byId.try_emplace(groups[i].group_id, groups[i].group_name.view());
  for (std::int32_t i = 0; i < pairs.GetCount(); ++i) {
    const auto group = byId.find(pairs[i].group_id);
    names_[pairs[i].contact_id].emplace_back(group == byId.end() ? WideStringView{}
                                                                 : group->second);
  }
}

void GroupNames::AttachTo(CContact& contact) {
  const auto found = names_.find(contact.tag);
  if (found == names_.end()) return;
  for (const WideString& name : found->second) contact.NewGroup(name);
  names_.erase(found);
}

}  // namespace pim
