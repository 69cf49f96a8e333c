// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/store/SqliteStore.h"

#include <algorithm>
#include <iterator>

#include "platform/AppData.h"
#include "platform/CodePages.h"
#include "platform/Visible.h"
#include "store/Digest.h"
#include "store/GroupTables.h"
#include "store/PictureCopies.h"
#include "store/SqlText.h"
#include "store/SqliteHistory.h"
#include "store/StoreFile.h"
#include "support/CallerIdPictures.h"

namespace pim {

namespace {

// The links of contacts to groups, those of an import under way being told to its recorder.
class WatchedLinks {
 public:
  WatchedLinks(LinkTable& links, ImportRecorder& recorder) : links_(links), recorder_(recorder) {}

  std::int64_t Count(std::int32_t contact, std::int32_t group) {
    return links_.Count(contact, group);
  }
  void Insert(std::span<LinkRow> links) {
    links_.Insert(links);
    recorder_.AddLinks(links);
  }

 private:
  LinkTable& links_;
  ImportRecorder& recorder_;
};

// The same for groups.
class WatchedGroups {
 public:
  WatchedGroups(GroupTable& groups, ImportRecorder& recorder)
      : groups_(groups), recorder_(recorder) {}

  std::int32_t HighestKey() { return groups_.HighestKey(); }
  const GivenKeys& Given() const { return groups_.Given(); }
  bool Holds(std::int32_t key) { return groups_.Holds(key); }
  std::int32_t Find(WideStringView name) { return groups_.Find(name); }
  void Rename(std::int32_t key, WideStringView name) { groups_.Rename(key, name); }
  void Insert(std::int32_t key, WideStringView name) {
    groups_.Insert(key, name);
    recorder_.AddGroup(key);
  }

 private:
  GroupTable& groups_;
  ImportRecorder& recorder_;
};

// A store of an earlier version that is only read has no tables of what came later.
bool HasAllTables(Database& db) {
  Statement version(db, "PRAGMA user_version");
  Rows rows(version);
  return rows.Next() && version.Integer(0) >= kStoreVersion;
}

FingerprintKey KeyOf(Database& db, bool hasTables) {
  return hasTables ? StoreSettings(db).Key(false) : NewFingerprintKey();
}

}  // namespace

class SqliteStore::Impl final : public RecordStore {
 public:
  Impl(const std::string& path, StoreAccess access, std::chrono::milliseconds lockWait,
       std::function<bool()> givesUp)
      : db_(OpenStoreFile(path, access, {lockWait, std::move(givesUp)})) {
    for (TransactionMember* member : {static_cast<TransactionMember*>(&contacts_.contents()),
                                      static_cast<TransactionMember*>(&items_.contents()),
                                      static_cast<TransactionMember*>(&recorder_)})
      transactions_.Join(*member);
  }
  ~Impl() override {
    while (transactions_.Rollback()) {
    }
    static_cast<void>(transactions_.Succeeds([this] { recorder_.Interrupt(); }));
  }

  std::int32_t CountContacts() { return Count(storedContacts_); }
  std::int32_t CountItemsWithoutKind() { return Count(itemsWithoutKind_); }
  void SetPictureReader(PictureReader reader) {
    services_.pictureOf = std::move(reader);
    contacts_.contents().Drop();
  }
  bool KeepsPictures() const { return hasTables_; }
  PictureCopies& copies() { return copies_; }
  std::int32_t NamesPicture(WideStringView name) {
    return transactions_.Try([&] { return pictures_.IsNamed(name) ? 1 : 0; });
  }
  NarrowString ReadPicture(WideStringView name) {
    std::optional<NarrowString> bytes;
    if (hasTables_)
      static_cast<void>(transactions_.Succeeds([&] { bytes = pictures_.Read(name); }));
    return bytes ? std::move(*bytes) : NarrowString();
  }
  bool HasLeftPictures() {
    bool hasSome = false;
    if (hasTables_)
      static_cast<void>(transactions_.Succeeds([&] { hasSome = !pictures_.Left().empty(); }));
    return hasSome;
  }
  std::int32_t RemoveLeftPictures();

  std::int32_t LoadContacts(CContacts& contacts) override {
    return Append(contacts, [&] { contacts_.reader().ReadAll(0, ContactTable::NewIn(contacts)); });
  }
  std::int32_t LoadContactGroups(CContactGroups& groups) override {
    return Append(groups, [&] { groups_.Load(groups); });
  }
  std::int32_t LoadContactGroupPairs(CContactGroupPairs& pairs) override {
    return Append(pairs, [&] { links_.Load(pairs); });
  }
  std::int32_t LoadCalendars(CalendarType kind, CCalendars& items) override {
    return Append(items, [&] {
      itemsOfKind_.ReadAll(static_cast<std::int64_t>(kind), ItemTable::NewIn(items));
    });
  }
  std::int32_t VisitContacts(const std::function<bool(CContact&)>& visitor) override {
    return VisitStored<ContactTable, CContact>(contacts_.reader(), 0, visitor);
  }
  std::int32_t VisitCalendars(CalendarType kind,
                              const std::function<bool(CCalendar&)>& visitor) override {
    return VisitStored<ItemTable, CCalendar>(itemsOfKind_, static_cast<std::int64_t>(kind),
                                             visitor);
  }
  std::int32_t VisitContacts(std::span<const std::int32_t> keys,
                             const std::function<bool(CContact&)>& visitor) override {
    return VisitKeys<CContact, CContacts>(contacts_, keys, visitor);
  }
  std::int32_t VisitCalendars(std::span<const std::int32_t> keys,
                              const std::function<bool(CCalendar&)>& visitor) override {
    return VisitKeys<CCalendar, CCalendars>(items_, keys, visitor);
  }

  std::int32_t DeleteContacts(std::span<const std::int32_t> keys,
                              std::vector<WideString>& pictures) override {
    std::vector<WideString> left;
    const std::int32_t deleted = transactions_.Store([&] {
      std::vector<WideString> named;
      for (const std::int32_t key : keys) pictures_.AddNames(key, key, named);
      const std::int32_t count = Erase(contacts_, keys);
      left = pictures_.Leave(std::move(named));
      pictures.reserve(pictures.size() + left.size());
      return count;
    });
    if (deleted >= 0) std::ranges::move(left, std::back_inserter(pictures));
    return deleted;
  }
  std::int32_t DeleteCalendars(std::span<const std::int32_t> keys) override {
    return transactions_.Store([&] { return Erase(items_, keys); });
  }

  std::int32_t SaveContacts(CContacts& contacts, std::int32_t saveOption, bool saveFlag) override {
    return SaveGuarded(contacts, [&](KeyGuard<CContacts>& keys) {
      return transactions_.Store([&] {
        if (saveOption > 0 && !groups_.Holds(saveOption)) db_->Fail(NoSuchGroup(saveOption));
        const std::int32_t saved = SaveRecords(contacts, saveFlag, contacts_, keys);
        if (saveOption > 0) LinkContacts(contacts, saveOption, watchedLinks_);
        return saved;
      });
    });
  }
  std::int32_t SaveContactGroups(CContactGroups& groups, bool /*saveFlag*/) override {
    return SaveGuarded(groups, [&](auto&) {
      return transactions_.Store([&] {
        FoldGroupNames();
        return SaveGroups(groups, watchedGroups_);
      });
    });
  }
  std::int32_t SaveContactGroupPairs(CContactGroupPairs& pairs) override {
    return transactions_.Store([&] { return SaveLinks(pairs, watchedLinks_); });
  }
  std::int32_t SaveCalendars(CCalendars& items, bool saveFlag) override {
    return SaveGuarded(items, [&](KeyGuard<CCalendars>& keys) {
      return transactions_.Store([&] { return SaveRecords(items, saveFlag, items_, keys); });
    });
  }

  bool Begin() override {
    return transactions_.Succeeds([&] { transactions_.Begin(); });
  }
  bool Commit() override {
    return transactions_.Succeeds([&] { transactions_.Commit(); });
  }
  bool Rollback() noexcept override {
    foldedAt_ = 0;
    return transactions_.Rollback();
  }
  bool BeginReading() override {
    return transactions_.Succeeds([&] { db_->BeginReading(); });
  }
  void EndReading() noexcept override {
    db_->EndReading();
    Settle();
  }
  ImportHistory* History() noexcept override { return &history_; }
  std::string LastError() const override { return transactions_.problem(); }

 private:
  // However a reading ends.
  class Settled {
   public:
    explicit Settled(Impl& impl) : impl_(impl) {}
    Settled(const Settled&) = delete;
    Settled& operator=(const Settled&) = delete;
    ~Settled() { impl_.Settle(); }

   private:
    Impl& impl_;
  };
  // Behind the last of several readings.
  void Settle() noexcept {
    if (!db_->IsBeingRead())
      static_cast<void>(transactions_.Succeeds([this] { copies_.Settle(); }));
  }

  template <class Table>
  static std::int32_t Erase(Table& table, std::span<const std::int32_t> keys) {
    std::int32_t erased = 0;
    for (const std::int32_t key : keys) erased += table.Erase(key, key);
    return erased;
  }

  // Appends what `load` reads, or nothing.
  template <class Records, class Load>
  std::int32_t Append(Records& records, Load load) {
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
  std::int32_t VisitStored(RecordReader& reader, std::int64_t filter,
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
  std::int32_t VisitKeys(RecordTable<Record, Records>& table, std::span<const std::int32_t> keys,
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

  void NeedPicture(const CContact& contact) {
    if (hasTables_) copies_.Need(contact.photo);
  }
  template <class Other>
  void NeedPicture(const Other&) {}

  std::int32_t Count(Statement& counting) {
    return transactions_.Try([&] {
      Rows rows(counting);
      return rows.Next() ? static_cast<std::int32_t>(counting.Integer(0)) : 0;
    });
  }

  // Another program may have renamed a group without knowing of the column that finds it.
  void FoldGroupNames() {
    const std::int64_t version = DataVersion();
    if (version == foldedAt_) return;
    groups_.FoldNames();
    foldedAt_ = version;
  }

  std::int64_t DataVersion() {
    Rows rows(dataVersion_);
    return rows.Next() ? dataVersion_.Integer(0) : 0;
  }

  std::unique_ptr<Database> db_;
  StoreTransactions transactions_{*db_};
  bool hasTables_ = HasAllTables(*db_);
  Statement dataVersion_{*db_, "PRAGMA data_version"};
  PictureTable pictures_{*db_};
  PictureCopies copies_{pictures_};
  ImportRecorder recorder_{*db_};
  TableServices services_{*db_,      KeyOf(*db_, hasTables_), recorder_,
                          pictures_, ReadCallerIdPicture,     [this] { return DataVersion(); }};
  ContactTable contacts_{services_, ContactMap()};
  ItemTable items_{services_, CalendarMap()};
  RecordReader itemsOfKind_{*db_, CalendarMap(), "calendar_type"};
  Statement storedContacts_{*db_, CountSql(ContactMap().table, {})};
  Statement itemsWithoutKind_{*db_,
                              CountOthersSql("Calendars", "calendar_type",
                                             {static_cast<std::int32_t>(CalendarType::Event),
                                              static_cast<std::int32_t>(CalendarType::Todo),
                                              static_cast<std::int32_t>(CalendarType::Memo)})};
  GroupTable groups_{*db_};
  LinkTable links_{*db_};
  WatchedGroups watchedGroups_{groups_, recorder_};
  WatchedLinks watchedLinks_{links_, recorder_};
  SqliteHistory history_{transactions_, hasTables_, services_, contacts_, items_, groups_};
  std::int64_t foldedAt_ = 0;  // the data version for which all names are folded
};

// Files go ahead of the rows that tell of them, so that a program which ends in between leaves
// none that nobody knows of. One that holds something else by now is its host's.
std::int32_t SqliteStore::Impl::RemoveLeftPictures() {
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

StoreError::StoreError(const std::string& path, const std::string& problem)
    : std::runtime_error(VisibleUtf8(WideFromUtf8(path)) + ": " + problem) {}
StoreError::~StoreError() = default;
NoStoreError::~NoStoreError() = default;

SqliteStore::SqliteStore(const std::string& path, std::chrono::milliseconds lockWait,
                         std::function<bool()> givesUp)
    : SqliteStore(path, StoreAccess::Create, lockWait, std::move(givesUp)) {}

SqliteStore::SqliteStore(const std::string& path, StoreAccess access,
                         std::chrono::milliseconds lockWait, std::function<bool()> givesUp)
    : SqliteStore(std::make_unique<Impl>(path, access, lockWait, std::move(givesUp))) {}

SqliteStore::SqliteStore(std::unique_ptr<Impl> impl)
    : ForwardingStore(*impl), impl_(std::move(impl)) {}

SqliteStore::~SqliteStore() = default;

std::int32_t SqliteStore::CountContacts() { return impl_->CountContacts(); }

std::int32_t SqliteStore::CountItemsWithoutKind() { return impl_->CountItemsWithoutKind(); }

void SqliteStore::SetPictureReader(PictureReader reader) {
  impl_->SetPictureReader(std::move(reader));
}

bool SqliteStore::KeepsPictures() const { return impl_->KeepsPictures(); }

void SqliteStore::MakePictures(bool makes) { impl_->copies().Switch(makes); }

std::int64_t SqliteStore::PicturesNotMade() const { return impl_->copies().NotMade(); }

std::string SqliteStore::PictureProblem() const { return impl_->copies().Problem(); }

std::int32_t SqliteStore::NamesPicture(WideStringView name) { return impl_->NamesPicture(name); }

NarrowString SqliteStore::ReadPicture(WideStringView name) { return impl_->ReadPicture(name); }

bool SqliteStore::HasLeftPictures() { return impl_->HasLeftPictures(); }

std::int32_t SqliteStore::RemoveLeftPictures() { return impl_->RemoveLeftPictures(); }

}  // namespace pim
