// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/ImportUndo.h"

#include <algorithm>
#include <unordered_set>

#include "store/StoredForms.h"

namespace pim {
namespace {

// So many records are compared at a time, so that memory doesn't grow with the import.
constexpr std::size_t kComparedAtOnce = 1024;

}  // namespace

ImportUndo::ImportUndo(TableServices& services, ContactTable& contacts, ItemTable& items,
                       GroupTable& groups)
    : services_(services),
      contacts_(contacts),
      items_(items),
      groups_(groups),
      imports_(services.db),
      contactOrigins_(services.db, StoredKind::Contact),
      itemOrigins_(services.db, StoredKind::Item),
      linksOfImport_(services.db,
                     "SELECT contact_id, group_id FROM ImportedLinks WHERE import_id = ?"),
      forgetLinks_(services.db, "DELETE FROM ImportedLinks WHERE import_id = ?"),
      dropLink_(services.db,
                "DELETE FROM Contacts_ContactGroups WHERE link_id = (SELECT max(link_id) FROM "
                "Contacts_ContactGroups WHERE contact_id = ? AND group_id = ?)"),
      groupsOfImport_(services.db,
                      "SELECT group_id, group_name, coalesce(group_name, '') <> coalesce(name, '') "
                      "FROM ImportedGroups "
                      "JOIN ContactGroups USING (group_id) WHERE import_id = ? ORDER BY 1"),
      membersOf_(services.db,
                 "SELECT contact_id FROM Contacts_ContactGroups WHERE group_id = ? ORDER BY 1") {}

std::int32_t ImportUndo::Choose(const UndoOptions& options) {
  const std::optional<std::int32_t> import =
      options.import ? options.import : imports_.LastStanding();
  if (!import) services_.db.Fail(kNothingToUndo);
  const std::string problem = WhyNotUndone(*import, imports_.StateOf(*import));
  if (!problem.empty()) services_.db.Fail(problem);
  return *import;
}

void ImportUndo::Plan(const UndoOptions& options, UndoResult& result) {
  result = {};
  doomedContacts_.Clear();
  doomedItems_.Clear();
  doomedLinks_.clear();
  doomedGroups_.clear();
  force_ = options.force;
  progress_ = options.progress;
  compared_ = 0;
  result.import = Choose(options);
  PlanRecords(contactOrigins_, contacts_, doomedContacts_, result);
  PlanRecords(itemOrigins_, items_, doomedItems_, result);
  PlanLinks(result);
  PlanGroups(result);
  PlanPictures(result);
}

template <class Table>
void ImportUndo::PlanRecords(OriginTable& origins, Table& table, KeyRanges& doomed,
                             UndoResult& result) {
  std::vector<OriginTable::KeyedPrint> rows;
  const auto compare = [&] {
    Compare(rows, table, doomed, result);
    compared_ += std::ssize(rows);
    rows.clear();
    if (progress_) progress_(compared_);
  };
  origins.VisitOfImport(result.import, [&](const OriginTable::KeyedPrint& row) {
    if (force_) {
      doomed.Add(row.key);
      return;
    }
    rows.push_back(row);
    if (rows.size() >= kComparedAtOnce) compare();
  });
  compare();
}

// Records whose keys lie close together are read together.
template <class Record, class Records>
void ImportUndo::Compare(std::span<const OriginTable::KeyedPrint> rows,
                         RecordTable<Record, Records>& table, KeyRanges& doomed,
                         UndoResult& result) {
  using KindTable = RecordTable<Record, Records>;
  constexpr std::int32_t kReadAtOnce = 32;  // they may be large
  RecordReader& reader = table.reader();
  std::unordered_set<std::int32_t> touched;  // by a program that has columns of its own
  if (!rows.empty()) {
    table.others().Visit(rows.front().key, rows.back().key,
                         [&touched](std::int32_t key) { touched.insert(key); });
  }
  while (!rows.empty()) {
    reader.GoTo(rows.front().key);
    Records some;
    const std::int64_t span = std::int64_t{rows.back().key} - rows.front().key + 1;
    const bool isDense = span <= 4 * std::ssize(rows);
    const bool isThere = reader.ReadSome(0, isDense ? kReadAtOnce : 1, KindTable::NewIn(some)) &&
                         some[0].tag == rows.front().key;
    if (!isThere) {
      rows = rows.subspan(1);
      continue;
    }
    for (std::int32_t i = 0; i < some.GetCount() && !rows.empty(); ++i) {
      Record& record = some[i];
      while (!rows.empty() && rows.front().key < record.tag) rows = rows.subspan(1);
      if (rows.empty() || rows.front().key != record.tag) continue;
      if (!touched.contains(record.tag) && table.StoredPrintOf(record) == rows.front().print) {
        doomed.Add(record.tag);
      } else {
        result.keptRecords.push_back({KindOf(record), record.tag, NameOf(record)});
      }
      rows = rows.subspan(1);
    }
  }
}

void ImportUndo::PlanLinks(UndoResult& result) {
  linksOfImport_.Bind(1, std::int64_t{result.import});
  for (Rows rows(linksOfImport_); rows.Next();) {
    const Link link{KeyFromStored(linksOfImport_.Integer(0)),
                    KeyFromStored(linksOfImport_.Integer(1))};
    if (!doomedContacts_.Holds(link.contact)) doomedLinks_.push_back(link);
  }
  std::ranges::sort(doomedLinks_, [](const Link& one, const Link& other) { return one < other; });
  result.links = std::ssize(doomedLinks_);
}

// Links beyond those that go: each link of the import takes one away.
bool ImportUndo::HasOtherMembers(std::int32_t group) {
  membersOf_.Bind(1, std::int64_t{group});
  std::int32_t before = 0;
  std::int64_t sameBefore = 0;
  for (Rows rows(membersOf_); rows.Next();) {
    const std::int32_t contact = KeyFromStored(membersOf_.Integer(0));
    sameBefore = contact == before ? sameBefore + 1 : 0;
    before = contact;
    if (doomedContacts_.Holds(contact)) continue;
    const auto [first, last] =
        std::equal_range(doomedLinks_.begin(), doomedLinks_.end(), Link{contact, group});
    if (last - first <= sameBefore) return true;
  }
  return false;
}

void ImportUndo::PlanGroups(UndoResult& result) {
  groupsOfImport_.Bind(1, std::int64_t{result.import});
  FieldReader fields;
  for (Rows rows(groupsOfImport_); rows.Next();) {
    const std::int32_t group = KeyFromStored(groupsOfImport_.Integer(0));
    const bool isRenamed = groupsOfImport_.Integer(2) != 0;
    if (force_ || !(isRenamed || HasOtherMembers(group))) {
      doomedGroups_.push_back(group);
      continue;
    }
    WideText name;
    if (!groupsOfImport_.IsNull(1)) fields.Read(groupsOfImport_.row(), 1, FieldRef(&name));
    result.keptGroups.push_back(name.str());
  }
  result.groups = std::ssize(doomedGroups_);
}

void ImportUndo::PlanPictures(UndoResult& result) {
  pictures_.clear();
  for (const auto& [first, last] : doomedContacts_.All()) {
    result.contacts += std::int64_t{last} - first + 1;
    services_.pictures.AddNames(first, last, pictures_);
  }
  for (const auto& [first, last] : doomedItems_.All())
    result.items += std::int64_t{last} - first + 1;
  std::ranges::sort(pictures_);
  pictures_.erase(std::unique(pictures_.begin(), pictures_.end()), pictures_.end());
  const auto stays = [this](std::int32_t contact) { return !doomedContacts_.Holds(contact); };
  std::erase_if(pictures_, [&](const WideString& name) {
    return services_.pictures.CountNaming(name, stays) > 0;
  });
  result.pictures = std::ssize(pictures_);
}

void ImportUndo::Apply(UndoResult& result) {
  for (const Link& link : doomedLinks_) {
    dropLink_.Bind(1, std::int64_t{link.contact});
    dropLink_.Bind(2, std::int64_t{link.group});
    dropLink_.Run();
  }
  forgetLinks_.Bind(1, std::int64_t{result.import});
  forgetLinks_.Run();
  for (const auto& [first, last] : doomedContacts_.All()) contacts_.Erase(first, last);
  for (const auto& [first, last] : doomedItems_.All()) items_.Erase(first, last);
  for (const std::int32_t group : doomedGroups_) groups_.Erase(group);
  services_.pictures.Leave(std::move(pictures_));
  imports_.SetUndone(result.import, result.contacts + result.items,
                     std::ssize(result.keptRecords) + std::ssize(result.keptGroups));
}

}  // namespace pim
