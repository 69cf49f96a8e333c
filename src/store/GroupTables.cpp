#include "store/GroupTables.h"

#include <vector>

#include "pim/store/SqliteStore.h"
#include "platform/LetterCase.h"
#include "records/StoreLayout.h"
#include "store/SqlText.h"
#include "store/StoredForms.h"

namespace pim {

namespace {

constexpr std::string_view kGroupKey = "group_id";
constexpr std::string_view kFoldedName = "group_name_folded";

}  // namespace

GroupTable::GroupTable(Database& db)
    : all_(db, SelectSql(kGroupTable, kGroupKey, GroupFields()) + " ORDER BY 1"),
      holds_(db, SelectKeysSql(kGroupTable, kGroupKey, kGroupKey)),
      find_(db, SelectKeysSql(kGroupTable, kGroupKey, kFoldedName)),
      highest_(db, HighestKeySql(kGroupTable, kGroupKey)),
      insert_(db, InsertSql(kGroupTable, kGroupKey, GroupFields())),
      update_(db, UpdateSql(kGroupTable, kGroupKey, GroupFields())) {}

std::int32_t GroupTable::Load(CContactGroups& groups) {
  std::int32_t count = 0;
  for (Rows rows(all_); rows.Next(); ++count) {
    CContactGroup& group = groups.AddNew();
    group.group_id = KeyFromStored(all_.Integer(0));
    fields_.Read(all_, 1, FieldRef(&group.group_name));
  }
  return count;
}

std::int32_t GroupTable::HighestKey() {
  Rows rows(highest_);
  return given_.HighestWith(rows.Next() ? KeyFromStored(highest_.Integer(0)) : 0);
}

void GroupTable::FoldNames() {
  std::vector<std::pair<std::int64_t, WideText>> groups;
  WideText folded;
  for (Rows rows(all_); rows.Next();) {
    WideText name;
    fields_.Read(all_, 1, FieldRef(&name));
    folded.clear();
    if (!all_.IsNull(2)) fields_.Read(all_, 2, FieldRef(&folded));
    if (all_.IsNull(2) || !(folded == FoldLetterCase(name)))
      groups.emplace_back(all_.Integer(0), std::move(name));
  }
  for (const auto& [key, name] : groups) Run(update_, key, name);
}

bool GroupTable::Holds(std::int32_t key) {
  holds_.Bind(1, std::int64_t{key});
  Rows rows(holds_);
  return rows.Next();
}

std::int32_t GroupTable::Find(WideStringView name) {
  AppendStoredText(FoldLetterCase(name), find_.Buffer(1));
  find_.BindBuffer(1);
  for (Rows rows(find_); rows.Next();)
    if (const std::int32_t key = KeyFromStored(find_.Integer(0)); IsStoredKey(key)) return key;
  return 0;
}

// An empty name is an empty text and no NULL, so that it is found again.
void GroupTable::Run(Statement& statement, std::int64_t key, WideStringView name) {
  statement.Bind(1, key);
  AppendStoredText(name, statement.Buffer(2));
  statement.BindBuffer(2);
  AppendStoredText(FoldLetterCase(name), statement.Buffer(3));
  statement.BindBuffer(3);
  statement.Run();
}

LinkTable::LinkTable(Database& db)
    : db_(db),
      all_(db, SelectSql(kLinkTable, KeyOf(StoreTable(kLinkTable)), LinkFields()) + " ORDER BY 1"),
      count_(db,
             "SELECT count(*) FROM Contacts_ContactGroups WHERE contact_id = ? AND "
             "group_id = ?"),
      insert_(db, "INSERT INTO Contacts_ContactGroups (contact_id, group_id) VALUES (?, ?)") {}

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

std::int64_t LinkTable::Count(std::int32_t contact, std::int32_t group) {
  count_.Bind(1, std::int64_t{contact});
  count_.Bind(2, std::int64_t{group});
  Rows rows(count_);
  return rows.Next() ? count_.Integer(0) : 0;
}

void LinkTable::Insert(std::int32_t contact, std::int32_t group) {
  insert_.Bind(1, std::int64_t{contact});
  insert_.Bind(2, std::int64_t{group});
  try {
    insert_.Run();
  } catch (const StoreError&) {
    if (sqlite3_extended_errcode(db_.handle()) == SQLITE_CONSTRAINT_FOREIGNKEY)
      db_.Fail(NoSuchLink(contact, group));
    throw;
  }
}

}  // namespace pim
