// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "store/DatabaseStoreImpl.h"
#include "store/GroupTables.h"
#include "store/PictureCopies.h"
#include "store/RecordTable.h"
#include "store/SqlHistory.h"
#include "store/WatchedTables.h"

namespace pim {

// The store over a database, whichever it is.
class SqlStore final : public DatabaseStore::Impl {
 public:
  explicit SqlStore(std::unique_ptr<Database> db);
  ~SqlStore() override;

  Database& database() override { return *db_; }
  std::string Name() const override { return db_->name(); }
  bool IsNew() const noexcept override { return db_->IsNew(); }
  bool MayTryAgain() const noexcept override { return db_->MayTryAgain(); }

  std::int32_t CountContacts() override { return Count(storedContacts_); }
  std::int32_t CountItemsWithoutKind() override { return Count(itemsWithoutKind_); }
  void SetPictureReader(PictureReader reader) override;
  bool KeepsPictures() const override { return hasTables_; }
  void MakePictures(bool makes) override { copies_.Switch(makes); }
  std::int64_t PicturesNotMade() const override { return copies_.NotMade(); }
  std::string PictureProblem() const override { return copies_.Problem(); }
  std::int32_t NamesPicture(WideStringView name) override;
  NarrowString ReadPicture(WideStringView name) override;
  bool HasLeftPictures() override;
  std::int32_t RemoveLeftPictures() override;
  std::int64_t CopyFrom(Impl& source,
                        const std::function<void(std::int64_t rows)>& progress) override;

  std::int32_t LoadContacts(CContacts& contacts) override;
  std::int32_t LoadContactGroups(CContactGroups& groups) override;
  std::int32_t LoadContactGroupPairs(CContactGroupPairs& pairs) override;
  std::int32_t LoadCalendars(CalendarType kind, CCalendars& items) override;
  std::int32_t VisitContacts(const std::function<bool(CContact&)>& visitor) override;
  std::int32_t VisitCalendars(CalendarType kind,
                              const std::function<bool(CCalendar&)>& visitor) override;
  std::int32_t VisitContacts(std::span<const std::int32_t> keys,
                             const std::function<bool(CContact&)>& visitor) override;
  std::int32_t VisitCalendars(std::span<const std::int32_t> keys,
                              const std::function<bool(CCalendar&)>& visitor) override;

  std::int32_t DeleteContacts(std::span<const std::int32_t> keys,
                              std::vector<WideString>& pictures) override;
  std::int32_t DeleteCalendars(std::span<const std::int32_t> keys) override;

  std::int32_t SaveContacts(CContacts& contacts, std::int32_t saveOption, bool saveFlag) override;
  std::int32_t SaveContactGroups(CContactGroups& groups, bool saveFlag) override;
  std::int32_t SaveContactGroupPairs(CContactGroupPairs& pairs) override;
  std::int32_t SaveCalendars(CCalendars& items, bool saveFlag) override;

  bool Begin() override;
  bool Commit() override;
  bool Rollback() noexcept override;
  bool BeginReading() override;
  void EndReading() noexcept override;
  ImportHistory* History() noexcept override { return &history_; }
  std::string LastError() const override { return transactions_.problem(); }
  std::size_t TextAtOnce() const noexcept override {
    constexpr std::size_t kServerText = std::size_t{2} << 20;  // some thousand records
    return db_->IsShared() ? kServerText : RecordStore::TextAtOnce();
  }

 private:
  class Settled;

  void Settle() noexcept;
  template <class Records, class Load>
  std::int32_t Append(Records& records, Load load);
  template <class Table, class Record>
  std::int32_t VisitStored(RecordReader& reader, std::int64_t filter,
                           const std::function<bool(Record&)>& visitor);
  template <class Record, class Records>
  std::int32_t VisitKeys(RecordTable<Record, Records>& table, std::span<const std::int32_t> keys,
                         const std::function<bool(Record&)>& visitor);
  void NeedPicture(const CContact& contact);
  template <class Other>
  void NeedPicture(const Other&) {}
  std::int32_t Count(Statement& counting);
  void FoldGroupNames();
  void FollowOthers();
  void AdoptSettings();

  std::unique_ptr<Database> db_;
  StoreTransactions transactions_{*db_};
  bool hasTables_ = db_->HasAllTables();
  PictureTable pictures_{*db_};
  PictureCopies copies_{pictures_};
  ImportRecorder recorder_{*db_};
  TableServices services_;
  ContactTable contacts_{services_, ContactMap()};
  ItemTable items_{services_, CalendarMap()};
  RecordReader itemsOfKind_{*db_, CalendarMap(), "calendar_type"};
  Statement storedContacts_;
  Statement itemsWithoutKind_;
  GroupTable groups_{*db_};
  LinkTable links_{*db_};
  WatchedGroups watchedGroups_{groups_, recorder_};
  WatchedLinks watchedLinks_{links_, recorder_};
  SqlHistory history_{transactions_, hasTables_, services_, contacts_, items_, groups_};
  Statement forgetOutsideChanges_;
  std::int64_t foldedAt_ = 0;  // the outside version for which all names are folded
};

}  // namespace pim
