// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/SqlStore.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "store/Digest.h"
#include "store/SqlText.h"
#include "store/StoreCopy.h"
#include "support/CallerIdPictures.h"

namespace pim {
namespace {

FingerprintKey KeyOf(Database& db, bool hasTables) {
  return hasTables ? StoreSettings(db).Key(false) : NewFingerprintKey();
}

std::vector<KeyRanges::Range> RangesOf(std::span<const std::int32_t> keys) {
  KeyRanges ranges;
  for (const std::int32_t key : keys) ranges.Add(key);
  return ranges.All();
}

}  // namespace

// However a reading ends.
class SqlStore::Settled {
 public:
  explicit Settled(SqlStore& store) : store_(store) {}
  Settled(const Settled&) = delete;
  Settled& operator=(const Settled&) = delete;
  ~Settled() { store_.Settle(); }

 private:
  SqlStore& store_;
};

SqlStore::SqlStore(std::unique_ptr<Database> db)
    : db_(std::move(db)),
      services_{*db_,      KeyOf(*db_, hasTables_), recorder_,
                pictures_, ReadCallerIdPicture,     [this] { FollowOthers(); }},
      storedContacts_(*db_, CountSql(ContactMap().table, {})),
      itemsWithoutKind_(*db_, CountOthersSql("Calendars", "calendar_type",
                                             {static_cast<std::int32_t>(CalendarType::Event),
                                              static_cast<std::int32_t>(CalendarType::Todo),
                                              static_cast<std::int32_t>(CalendarType::Memo)})),
      forgetOutsideChanges_(*db_, "DELETE FROM OutsideChanges") {
  for (TransactionMember* member : {static_cast<TransactionMember*>(&contacts_.contents()),
                                    static_cast<TransactionMember*>(&items_.contents()),
                                    static_cast<TransactionMember*>(&recorder_),
                                    static_cast<TransactionMember*>(&groups_.claims())})
    transactions_.Join(*member);
}

SqlStore::~SqlStore() {
  while (transactions_.Rollback()) {
  }
  static_cast<void>(transactions_.Succeeds([this] { recorder_.Interrupt(); }));
}

void SqlStore::SetPictureReader(PictureReader reader) {
  services_.pictureOf = std::move(reader);
  contacts_.contents().Drop();
}

std::int32_t SqlStore::NamesPicture(WideStringView name) {
  return transactions_.See([&] { return pictures_.IsNamed(name) ? 1 : 0; });
}

NarrowString SqlStore::ReadPicture(WideStringView name) {
  std::optional<NarrowString> bytes;
  if (hasTables_) static_cast<void>(transactions_.Succeeds([&] { bytes = pictures_.Read(name); }));
  return bytes ? std::move(*bytes) : NarrowString();
}

bool SqlStore::HasLeftPictures() {
  return hasTables_ && transactions_.See([&] { return pictures_.Left().empty() ? 0 : 1; }) > 0;
}

// Files go ahead of the rows that tell of them, so that a program which ends in between leaves
// none that nobody knows of. One that holds something else by now is its host's.
std::int32_t SqlStore::RemoveLeftPictures() {
  if (!HasCallerIdFolder() || !HasLeftPictures()) return 0;
  return transactions_.Store([&] {
    std::int32_t removed = 0;
    for (const auto& [name, digest] : pictures_.Left()) {
      const bool isOurs = !name.empty() && !pictures_.IsNamed(name) &&
                          DigestOf(ReadCallerIdPicture(name)) == digest;
      if (isOurs && !copies_.Remove(name)) continue;  // the next call tries again
      pictures_.ForgetLeft(name);
      removed += isOurs ? 1 : 0;
    }
    return removed;
  });
}

std::int64_t SqlStore::CopyFrom(Impl& source,
                                const std::function<void(std::int64_t rows)>& progress) {
  std::int64_t copied = 0;
  std::exception_ptr thrown;
  const std::int32_t result = transactions_.StoreAlone([&] {
    StoreCopy copy(source.database(), *db_);
    copied = copy.Run([&](std::int64_t rows) {
      try {
        if (progress) progress(rows);
        return true;
      } catch (...) {
        thrown = std::current_exception();
        return false;
      }
    });
    AdoptSettings();
    contacts_.RenewStoredContents();
    items_.RenewStoredContents();
    return 0;
  });
  if (result < 0) {
    static_cast<void>(transactions_.Try([&] {
      AdoptSettings();
      return 0;
    }));
  }
  if (thrown) std::rethrow_exception(thrown);
  return result < 0 ? -1 : copied;
}

// The secret is that of the store that was copied.
void SqlStore::AdoptSettings() {
  services_.key = KeyOf(*db_, hasTables_);
  contacts_.contents().Drop();
  items_.contents().Drop();
}

std::int32_t SqlStore::LoadContacts(CContacts& contacts) {
  return Append(contacts, [&] { contacts_.reader().ReadAll(0, ContactTable::NewIn(contacts)); });
}

std::int32_t SqlStore::LoadContactGroups(CContactGroups& groups) {
  return Append(groups, [&] { groups_.Load(groups); });
}

std::int32_t SqlStore::LoadContactGroupPairs(CContactGroupPairs& pairs) {
  return Append(pairs, [&] { links_.Load(pairs); });
}

std::int32_t SqlStore::LoadCalendars(CalendarType kind, CCalendars& items) {
  return Append(items, [&] {
    itemsOfKind_.ReadAll(static_cast<std::int64_t>(kind), ItemTable::NewIn(items));
  });
}

std::int32_t SqlStore::VisitContacts(const std::function<bool(CContact&)>& visitor) {
  return VisitStored<ContactTable, CContact>(contacts_.reader(), 0, visitor);
}

std::int32_t SqlStore::VisitCalendars(CalendarType kind,
                                      const std::function<bool(CCalendar&)>& visitor) {
  return VisitStored<ItemTable, CCalendar>(itemsOfKind_, static_cast<std::int64_t>(kind), visitor);
}

std::int32_t SqlStore::VisitContacts(std::span<const std::int32_t> keys,
                                     const std::function<bool(CContact&)>& visitor) {
  return VisitKeys<CContact, CContacts>(contacts_, keys, visitor);
}

std::int32_t SqlStore::VisitCalendars(std::span<const std::int32_t> keys,
                                      const std::function<bool(CCalendar&)>& visitor) {
  return VisitKeys<CCalendar, CCalendars>(items_, keys, visitor);
}

std::int32_t SqlStore::DeleteContacts(std::span<const std::int32_t> keys,
                                      std::vector<WideString>& pictures) {
  std::vector<WideString> left;
  const std::int32_t deleted = transactions_.StoreAlone([&] {
    std::vector<WideString> named;
    std::int32_t count = 0;
    for (const auto& [first, last] : RangesOf(keys)) {
      pictures_.AddNames(first, last, named);
      count += contacts_.Erase(first, last);
    }
    left = pictures_.Leave(std::move(named));
    pictures.reserve(pictures.size() + left.size());
    return count;
  });
  if (deleted >= 0) std::ranges::move(left, std::back_inserter(pictures));
  return deleted;
}

std::int32_t SqlStore::DeleteCalendars(std::span<const std::int32_t> keys) {
  return transactions_.StoreAlone([&] {
    std::int32_t count = 0;
    for (const auto& [first, last] : RangesOf(keys)) count += items_.Erase(first, last);
    return count;
  });
}

std::int32_t SqlStore::SaveContacts(CContacts& contacts, std::int32_t saveOption, bool saveFlag) {
  saveOption = groups_.claims().Current(saveOption);
  return SaveGuarded(contacts, [&](KeyGuard<CContacts>& keys) {
    return transactions_.Store([&] {
      if (saveOption > 0 && !groups_.Holds(saveOption)) db_->Fail(NoSuchGroup(saveOption));
      const std::int32_t saved = SaveRecords(contacts, saveFlag, contacts_, keys);
      if (saveOption > 0) LinkContacts(contacts, saveOption, watchedLinks_);
      return saved;
    });
  });
}

std::int32_t SqlStore::SaveContactGroups(CContactGroups& groups, bool /*saveFlag*/) {
  return SaveGuarded(groups, [&](auto&) {
    return transactions_.Store([&] {
      FoldGroupNames();
      return SaveGroups(groups, watchedGroups_);
    });
  });
}

std::int32_t SqlStore::SaveContactGroupPairs(CContactGroupPairs& pairs) {
  const GroupClaims& claims = groups_.claims();
  if (!claims.HaveSomeBecome())
    return transactions_.Store([&] { return SaveLinks(pairs, watchedLinks_); });
  CContactGroupPairs current;
  for (std::int32_t i = 0; i < pairs.GetCount(); ++i) {
    CContactGroupPair& pair = current.AddNew();
    pair.contact_id = pairs[i].contact_id;
    pair.group_id = claims.Current(pairs[i].group_id);
  }
  return transactions_.Store([&] { return SaveLinks(current, watchedLinks_); });
}

std::int32_t SqlStore::SaveCalendars(CCalendars& items, bool saveFlag) {
  return SaveGuarded(items, [&](KeyGuard<CCalendars>& keys) {
    return transactions_.Store([&] { return SaveRecords(items, saveFlag, items_, keys); });
  });
}

bool SqlStore::Begin() {
  return transactions_.Succeeds([&] { transactions_.Begin(); });
}

bool SqlStore::Commit() {
  return transactions_.Succeeds([&] { transactions_.Commit(); });
}

bool SqlStore::Rollback() noexcept {
  foldedAt_ = 0;
  return transactions_.Rollback();
}

bool SqlStore::BeginReading() {
  return transactions_.Succeeds([&] { db_->BeginReading(); });
}

void SqlStore::EndReading() noexcept {
  db_->EndReading();
  Settle();
}

// Behind the last of several readings.
void SqlStore::Settle() noexcept {
  if (!db_->IsBeingRead()) static_cast<void>(transactions_.Succeeds([this] { copies_.Settle(); }));
}

// Appends what `load` reads, or nothing.
template <class Records, class Load>
std::int32_t SqlStore::Append(Records& records, Load load) {
  const Settled settled(*this);
  const std::int32_t before = records.GetCount();
  const std::int32_t result = transactions_.Try([&] {
    const ReadTransaction reading(*db_);
    load();
    for (std::int32_t i = before; i < records.GetCount(); ++i) NeedPicture(records[i]);
    return records.GetCount() - before;
  });
  while (result < 0 && records.GetCount() > before) records.TakeLast();
  return result;
}

template <class Table, class Record>
std::int32_t SqlStore::VisitStored(RecordReader& reader, std::int64_t filter,
                                   const std::function<bool(Record&)>& visitor) {
  const Settled settled(*this);
  return transactions_.Read([&](auto& guard) {
    return Table::VisitSome(reader, filter, [&](Record& record) {
      NeedPicture(record);
      return guard([&] { return visitor(record); });
    });
  });
}

template <class Record, class Records>
std::int32_t SqlStore::VisitKeys(RecordTable<Record, Records>& table,
                                 std::span<const std::int32_t> keys,
                                 const std::function<bool(Record&)>& visitor) {
  const Settled settled(*this);
  return transactions_.Read([&](auto& guard) {
    std::int32_t count = 0;
    for (const std::int32_t key : keys) {
      Records one;
      if (!table.reader().ReadOne(key, table.NewIn(one))) continue;
      ++count;
      NeedPicture(one[0]);
      if (!guard([&] { return visitor(one[0]); })) break;
    }
    return count;
  });
}

void SqlStore::NeedPicture(const CContact& contact) {
  if (hasTables_) copies_.Need(contact.photo);
}

std::int32_t SqlStore::Count(Statement& counting) {
  return transactions_.See([&] {
    Rows rows(counting);
    return rows.Next() ? static_cast<std::int32_t>(counting.Integer(0)) : 0;
  });
}

// Another program may have renamed a group without knowing of the column that finds it.
void SqlStore::FoldGroupNames() {
  const std::int64_t version = db_->OutsideVersion();
  if (version == foldedAt_) return;
  groups_.FoldNames();
  foldedAt_ = version;
}

void SqlStore::FollowOthers() {
  // First, so that a change whose note comes later is seen by the next call.
  if (forgetOutsideChanges_.RunChanging() == 0) return;
  groups_.FoldNames();
  contacts_.RenewStoredContents();
  items_.RenewStoredContents();
}

}  // namespace pim
