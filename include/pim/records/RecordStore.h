// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "pim/Export.h"
#include "pim/records/TypeCodes.h"
#include "pim/support/Strings.h"

namespace pim {

class CCalendar;
class CCalendars;
class CContact;
class CContactGroupPairs;
class CContactGroups;
class CContacts;
class ImportHistory;

// The store as operations see it, and what binds one to them. A store, with its transactions and
// its history, is used by one thread at a time; stores of several threads may work at once. Handles
// are for the whole process, and binding, unbinding and finding a store may be done by any thread
// at any time.

// Gives the bytes of a contact's picture by the name in its `photo`, or none when there is no such
// file. A store asks it when two contacts may be the same but for their pictures.
using PictureReader = std::function<NarrowString(WideStringView name)>;

// Where records are kept. One object is one open store.
//
// Each operation gives a number of records, or -1 when the store fails; after -1 the store and the
// collection are as they were before the call, and LastError tells what was wrong. Where memory is
// short, saves of this library's stores fail so; each store tells of its loads.
//
// Keys 0, 65535 and negative ones mean "not stored yet" and are never given out. Saving a record
// whose key is in the store updates it; any other record is new and gets a fresh key.
class PIM_EXPORT RecordStore {
 public:
  virtual ~RecordStore();

  // Append the stored records by ascending key. A contact comes with an empty list of group names.
  [[nodiscard]] virtual std::int32_t LoadContacts(CContacts& contacts) = 0;
  [[nodiscard]] virtual std::int32_t LoadContactGroups(CContactGroups& groups) = 0;
  [[nodiscard]] virtual std::int32_t LoadContactGroupPairs(CContactGroupPairs& pairs) = 0;
  [[nodiscard]] virtual std::int32_t LoadCalendars(CalendarType kind, CCalendars& items) = 0;

  // The same records one by one, for stores larger than memory should hold. The record is the
  // visitor's to read during the call; a visitor that gives false ends the visit early. A visitor
  // must not call this store. What it throws passes to the caller.
  [[nodiscard]] virtual std::int32_t VisitContacts(
      const std::function<bool(CContact&)>& visitor) = 0;
  [[nodiscard]] virtual std::int32_t VisitCalendars(
      CalendarType kind, const std::function<bool(CCalendar&)>& visitor) = 0;
  // The records that have these keys, in the order of the keys; a key that none has is passed over.
  // Items of all kinds share their keys.
  [[nodiscard]] virtual std::int32_t VisitContacts(
      std::span<const std::int32_t> keys, const std::function<bool(CContact&)>& visitor) = 0;
  [[nodiscard]] virtual std::int32_t VisitCalendars(
      std::span<const std::int32_t> keys, const std::function<bool(CCalendar&)>& visitor) = 0;

  // Store the records of a collection in their order, as CContacts::SaveToDB,
  // CContactGroups::SaveToDB, CContactGroupPairs::SaveToDB and CCalendars::SaveToDB tell.
  [[nodiscard]] virtual std::int32_t SaveContacts(CContacts& contacts, std::int32_t saveOption,
                                                  bool saveFlag) = 0;
  [[nodiscard]] virtual std::int32_t SaveContactGroups(CContactGroups& groups, bool saveFlag) = 0;
  [[nodiscard]] virtual std::int32_t SaveContactGroupPairs(CContactGroupPairs& pairs) = 0;
  [[nodiscard]] virtual std::int32_t SaveCalendars(CCalendars& items, bool saveFlag) = 0;

  // Delete the records that have these keys, with all that belongs to them, in one transaction, and
  // give how many there were. Pictures' files stay: the names of those that no stored contact has
  // any more are added to `pictures`, for the caller to remove once all is committed.
  [[nodiscard]] virtual std::int32_t DeleteContacts(std::span<const std::int32_t> keys,
                                                    std::vector<WideString>& pictures) = 0;
  [[nodiscard]] virtual std::int32_t DeleteCalendars(std::span<const std::int32_t> keys) = 0;

  // Transactions nest: an inner one can be rolled back alone. Each gives false when it fails.
  // Use StoreTransaction, which pairs them.
  [[nodiscard]] virtual bool Begin() = 0;
  [[nodiscard]] virtual bool Commit() = 0;
  virtual bool Rollback() noexcept = 0;

  // From BeginReading to EndReading all loads and visits see one state of the store, and nothing
  // can be written. They nest. False when it fails. Use StoreReading, which pairs them.
  [[nodiscard]] virtual bool BeginReading() = 0;
  virtual void EndReading() noexcept = 0;

  // What the store remembers of its imports (pim/store/ImportHistory.h): the store's own, good as
  // long as it lives. Null for a store that remembers nothing.
  [[nodiscard]] virtual ImportHistory* History() noexcept { return nullptr; }

  // What went wrong last, in English, naming the store's file where there is one.
  virtual std::string LastError() const = 0;

  // How much of a text is best read and stored at a time, in bytes: more where each save has to ask
  // a server.
  [[nodiscard]] virtual std::size_t TextAtOnce() const noexcept;
};

// One transaction that holds several operations together: rolled back unless committed.
class PIM_EXPORT StoreTransaction {
 public:
  // Begins it; `store` must outlive this.
  [[nodiscard]] explicit StoreTransaction(RecordStore& store)
      : store_(store), open_(store.Begin()) {}
  StoreTransaction(const StoreTransaction&) = delete;
  StoreTransaction& operator=(const StoreTransaction&) = delete;
  ~StoreTransaction() {
    if (open_) store_.Rollback();
  }

  // Whether it has begun and isn't committed yet.
  [[nodiscard]] bool IsOpen() const noexcept { return open_; }
  // False when the store fails; then everything since the beginning is undone.
  [[nodiscard]] bool Commit() {
    if (!open_) return false;
    open_ = false;
    if (store_.Commit()) return true;
    store_.Rollback();
    return false;
  }

 private:
  RecordStore& store_;
  bool open_;
};

// Several readings that see one state of the store.
class PIM_EXPORT StoreReading {
 public:
  // Begins them; `store` must outlive this.
  [[nodiscard]] explicit StoreReading(RecordStore& store)
      : store_(store), open_(store.BeginReading()) {}
  StoreReading(const StoreReading&) = delete;
  StoreReading& operator=(const StoreReading&) = delete;
  ~StoreReading() {
    if (open_) store_.EndReading();
  }
  // Whether they have begun.
  [[nodiscard]] bool IsOpen() const noexcept { return open_; }

 private:
  RecordStore& store_;
  bool open_;
};

// Binds a store to a handle for the collections' operations, from 1. The store stays the caller's
// and must outlive the binding; the binding must outlive each operation with its handle.
class PIM_EXPORT StoreBinding {
 public:
  // Gives the store a handle that none had before. Throws std::bad_alloc.
  [[nodiscard]] explicit StoreBinding(RecordStore& store);
  StoreBinding(const StoreBinding&) = delete;
  StoreBinding& operator=(const StoreBinding&) = delete;
  ~StoreBinding();

  // The handle, for `db` of the operations.
  std::int32_t db() const noexcept { return db_; }

 private:
  std::int32_t db_;
};

// The store bound to the handle `db`, or null. Whoever bound it owns it. Allocates nothing.
[[nodiscard]] PIM_EXPORT RecordStore* StoreForHandle(std::int32_t db) noexcept;

}  // namespace pim
