// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/GroupTables.h"

#include <algorithm>
#include <unordered_set>
#include <vector>

#include "platform/LetterCase.h"
#include "records/StoreLayout.h"
#include "store/SqlText.h"
#include "store/StoredForms.h"

namespace pim {

namespace {

constexpr std::string_view kGroupKey = "group_id";
constexpr std::string_view kFoldedName = "group_name_folded";

std::string HoldsOwnerSql(const FieldMap& reference) {
  const std::string_view key = reference.column;
  return SelectKeysSql(OwnerOf({key, ColumnType::Integer, KeyMark::Reference}), key, key);
}

// Nothing where another one has the name already, which only a server sees.
std::string InsertNewGroupSql() {
  std::vector<std::string_view> columns{kGroupKey};
  for (const FieldMap& field : GroupFields()) columns.push_back(field.column);
  return InsertSql(kGroupTable, columns, 1) + " ON CONFLICT DO NOTHING";
}

bool HasRow(Statement& statement, std::int32_t key) {
  statement.Bind(1, std::int64_t{key});
  Rows rows(statement);
  return rows.Next();
}

}  // namespace

GroupTable::GroupTable(Database& db)
    : db_(db),
      sequence_(db, kGroupTable),
      claims_(db),
      all_(db, SelectSql(kGroupTable, kGroupKey, GroupFields()) + " ORDER BY 1"),
      holds_(db, SelectKeysSql(kGroupTable, kGroupKey, kGroupKey)),
      find_(db, SelectKeysSql(kGroupTable, kGroupKey, kFoldedName)),
      highest_(db, HighestKeySql(kGroupTable, kGroupKey)),
      insert_(db, InsertNewGroupSql()),
      update_(db, UpdateSql(kGroupTable, kGroupKey, GroupFields())),
      unfold_(db, "UPDATE ContactGroups SET group_name_folded = NULL WHERE group_id = ?"),
      eraser_(db, kGroupTable) {}

std::int32_t GroupTable::Load(CContactGroups& groups) {
  std::int32_t count = 0;
  for (Rows rows(all_); rows.Next(); ++count) {
    CContactGroup& group = groups.AddNew();
    group.group_id = KeyFromStored(all_.Integer(0));
    fields_.Read(all_.row(), 1, FieldRef(&group.group_name));
  }
  return count;
}

std::int32_t GroupTable::HighestKey() {
  Rows rows(highest_);
  return given_.HighestWith(rows.Next() ? KeyFromStored(highest_.Integer(0)) : 0);
}

void GroupTable::Erase(std::int32_t key) {
  given_.Add(key);  // so that it isn't given again
  claims_.ForgetNames();
  eraser_.Erase(key, key);
}

void GroupTable::FoldNames() {
  std::vector<std::pair<std::int64_t, WideText>> groups;
  WideText folded;
  for (Rows rows(all_); rows.Next();) {
    WideText name;
    fields_.Read(all_.row(), 1, FieldRef(&name));
    folded.clear();
    if (!all_.IsNull(2)) fields_.Read(all_.row(), 2, FieldRef(&folded));
    if (all_.IsNull(2) || !(folded == FoldLetterCase(name)))
      groups.emplace_back(all_.Integer(0), std::move(name));
  }
  // An index refuses a second group of a name, which then is found by its key alone.
  const bool isUnique = db_.IsShared();
  for (const auto& [key, name] : groups) {
    if (!isUnique) break;
    unfold_.Bind(1, key);
    unfold_.Run();
  }
  for (const auto& [key, name] : groups)
    if (!isUnique || Find(name) == 0) Rename(key, name);
}

bool GroupTable::Holds(std::int32_t key) { return HasRow(holds_, key); }

std::int32_t GroupTable::Find(WideStringView name) {
  const WideString folded = FoldLetterCase(name);
  if (const std::int32_t claimed = claims_.Find(folded); claimed != 0) return claimed;
  AppendStoredText(folded, find_.Buffer(1));
  find_.BindBuffer(1);
  for (Rows rows(find_); rows.Next();)
    if (const std::int32_t key = KeyFromStored(find_.Integer(0)); IsStoredKey(key)) return key;
  return 0;
}

// An empty name is an empty text and no NULL, so that it is found again.
void GroupTable::Bind(Statement& statement, std::int64_t key, WideStringView name) {
  statement.Bind(1, key);
  AppendStoredText(name, statement.Buffer(2));
  statement.BindBuffer(2);
  AppendStoredText(FoldLetterCase(name), statement.Buffer(3));
  statement.BindBuffer(3);
}

std::int32_t GroupTable::Insert(std::int32_t key, WideStringView name) {
  Bind(insert_, key, name);
  const bool isClaimedLater = db_.IsShared();
  if (isClaimedLater) insert_.BindNull(3);
  if (insert_.RunChanging() == 0) {
    const std::int32_t namesake = Find(name);
    if (namesake == 0) db_.Fail("its group " + std::to_string(key) + " is there already");
    return namesake;
  }
  given_.Add(key);
  if (isClaimedLater) claims_.Add(key, FoldLetterCase(name));
  return key;
}

void GroupTable::Rename(std::int64_t key, WideStringView name) {
  Bind(update_, key, name);
  if (claims_.Holds(KeyFromStored(key))) {
    claims_.ForgetNames();
    update_.BindNull(3);
  }
  update_.Run();
}

LinkTable::LinkTable(Database& db)
    : db_(db),
      all_(db, SelectSql(kLinkTable, KeyOf(StoreTable(kLinkTable)), LinkFields()) + " ORDER BY 1"),
      ofContacts_(db, kLinkTable, LinkFields()[0].column, LinkFields()[1].column),
      count_(db, CountSql(kLinkTable, LinkFields())),
      insert_(db, LinkFields()),
      insertChecked_(db, kLinkTable, LinkFields()[0].column, LinkFields().subspan(1)),
      contacts_(db, "Contacts", LinkFields()[0].column, LinkFields()[0].column),
      groups_(db, kGroupTable, LinkFields()[1].column, LinkFields()[1].column),
      holdsContact_(db, HoldsOwnerSql(LinkFields()[0])),
      holdsGroup_(db, HoldsOwnerSql(LinkFields()[1])) {}

std::int32_t LinkTable::Load(CContactGroupPairs& pairs) {
  std::int32_t count = 0;
  for (Rows rows(all_); rows.Next();) {
    const std::int32_t contact = KeyFromStored(all_.Integer(1));
    const std::int32_t group = KeyFromStored(all_.Integer(2));
    if (contact == 0 || group == 0) continue;  // of records that have no key here either
    CContactGroupPair& pair = pairs.AddNew();
    pair.contact_id = contact;
    pair.group_id = group;
    ++count;
  }
  return count;
}

void LinkTable::Expect(const CContactGroupPairs& pairs) {
  if (!db_.IsShared()) return;
  expected_.clear();
  std::vector<std::int32_t> contacts;
  contacts.reserve(static_cast<std::size_t>(pairs.GetCount()));
  for (std::int32_t i = 0; i < pairs.GetCount(); ++i) contacts.push_back(pairs[i].contact_id);
  ofContacts_.Visit(std::move(contacts), [this](Statement& row) {
    ++expected_[{KeyFromStored(row.Integer(0)), KeyFromStored(row.Integer(1))}];
  });
}

std::int64_t LinkTable::Count(std::int32_t contact, std::int32_t group) {
  if (db_.IsShared()) {
    const auto found = expected_.find({contact, group});
    return found == expected_.end() ? 0 : found->second;
  }
  count_.Bind(1, std::int64_t{contact});
  count_.Bind(2, std::int64_t{group});
  Rows rows(count_);
  return rows.Next() ? count_.Integer(0) : 0;
}

void LinkTable::Insert(std::span<LinkRow> links) {
  if (db_.IsShared()) return InsertChecked(links);
  insert_.Start(links.size());
  for (LinkRow& link : links) insert_.Add(link.contactId, LinkFields().subspan(1), &link);
  if (insert_.inserted() < links.size()) CheckOwners(links);
}

// Nobody deletes owners meanwhile.
void LinkTable::InsertChecked(std::span<LinkRow> links) {
  std::vector<std::int32_t> owners[2];
  for (const auto& [contact, group] : links) {
    owners[0].push_back(contact);
    owners[1].push_back(group);
  }
  std::unordered_set<std::int32_t> missing[2];
  for (std::size_t kind : {0U, 1U}) {
    missing[kind].insert(owners[kind].begin(), owners[kind].end());
    (kind == 0 ? contacts_ : groups_).Visit(std::move(owners[kind]), [&](Statement& row) {
      missing[kind].erase(KeyFromStored(row.Integer(0)));
    });
  }
  for (const auto& [contact, group] : links) {
    if (missing[0].contains(contact) || missing[1].contains(group))
      db_.Fail(NoSuchLink(contact, group));
  }
  insertChecked_.Start(links.size());
  for (LinkRow& link : links) insertChecked_.Add(link.contactId, LinkFields().subspan(1), &link);
}

void LinkTable::CheckOwners(std::span<const LinkRow> links) {
  for (const auto& [contact, group] : links) {
    if (!HasRow(holdsContact_, contact) || !HasRow(holdsGroup_, group))
      db_.Fail(NoSuchLink(contact, group));
  }
}

}  // namespace pim
