// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "records/RecordMap.h"

#include "pim/records/VObject.h"

namespace pim {

namespace {

constexpr FieldMap kXItemFields[] = {
    {"name", Field<CXItem, &CXItem::name>},
    {"value", Field<CXItem, &CXItem::value>},
    {"params", Field<CXItem, &CXItem::params>},
};

constexpr FieldMap kGroupFields[] = {
    {"group_name", Field<GroupRow, &GroupRow::name>},
    {"group_name_folded", Field<GroupRow, &GroupRow::foldedName>},
};

constexpr FieldMap kLinkFields[] = {
    {"contact_id", Field<LinkRow, &LinkRow::contactId>},
    {"group_id", Field<LinkRow, &LinkRow::groupId>},
};

struct FieldCopier {
  template <class Value>
  void operator()(Value* source, Value* target) const {
    *target = *source;
  }
  void operator()(const PictureName& source, const PictureName& target) const {
    *target.name = *source.name;
  }
  void operator()(const WholeSeconds& source, const WholeSeconds& target) const {
    *target.time = *source.time;
  }
  // Nothing of their own, or fields of two kinds, which no column has.
  template <class Source, class Target>
  void operator()(const Source&, const Target&) const {}
};

void Copy(std::span<const FieldMap> fields, void* from, void* to) {
  for (const FieldMap& field : fields)
    std::visit(FieldCopier{}, field.field(from), field.field(to));
}

}  // namespace

void CopyRecord(const RecordMap& map, void* from, void* to) {
  Copy(map.fields, from, to);
  RuleRow source;
  RuleRow target;
  for (const ListMap& list : map.lists) {
    for (std::size_t i = 0; i < list.count(from); ++i) {
      void* entry = list.add(to, target);
      if (entry == nullptr) continue;
      Copy(list.fields, list.at(from, i, source), entry);
      if (list.finish != nullptr) list.finish(to, target);
    }
  }
}

std::span<const FieldMap> GroupFields() { return kGroupFields; }

std::span<const FieldMap> LinkFields() { return kLinkFields; }

std::span<const FieldMap> XItemFields() { return kXItemFields; }

}  // namespace pim
