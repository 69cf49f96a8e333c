// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "pim/Export.h"
#include "pim/records/Calendar.h"
#include "pim/records/Contact.h"
#include "pim/records/ContactGroups.h"
#include "pim/records/RecordStore.h"

namespace pim {

// A host's own database as a store. One thread at a time uses a TableStore, with its tables, which
// are called in that thread alone. Where memory is short, a save fails with -1, and a load or visit
// may throw std::bad_alloc.

// The rows of one kind in a host's own database, by their keys: any above 0 but 65535, which means
// "not stored yet". No row of another key is asked for, and one that Next gives fails what the
// store is doing. An operation that throws a std::exception fails that as well, with its text as
// the reason.
template <class Row>
class RowTable {
 public:
  RowTable() = default;
  RowTable(const RowTable&) = default;
  RowTable& operator=(const RowTable&) = default;
  virtual ~RowTable() = default;

  // The row of that key, or null.
  virtual std::shared_ptr<const Row> Find(std::int32_t key) = 0;
  // The row with the lowest key above `key`, which becomes that key; or null when there is none.
  virtual std::shared_ptr<const Row> Next(std::int32_t& key) = 0;
  // 0 for an empty table. New rows get the keys behind it, but none that had a row which this store
  // has deleted. It can't know what an earlier store over the same tables has deleted: where those
  // keys mustn't come again either, this is to be the highest key that there ever was.
  virtual std::int32_t HighestKey() = 0;
  // Inserts the row, or replaces the one of that key. The row stays as it is for ever, so that a
  // table may keep it.
  virtual void Put(std::int32_t key, std::shared_ptr<const Row> row) = 0;
  // Removes the row of a key that is there.
  virtual void Erase(std::int32_t key) = 0;
};

// A store over a database of the host's own, which gives four tables and transactions. The rules
// of saving stand here: which records are updates and which are new, what keys these get, what is
// left out as equal to a stored record, which groups and links are there already, and that an
// operation is done wholly or not at all. It remembers no imports.
//
// What it has read of the tables to know that, it keeps; a host that changes them past it calls
// TablesChanged.
class PIM_EXPORT TableStore : public RecordStore {
 public:
  TableStore();
  ~TableStore() override;
  TableStore(const TableStore&) = delete;
  TableStore& operator=(const TableStore&) = delete;

  // Replaces the way to a contact's picture; by default it lies in GetCallerIdPath().
  void SetPictureReader(PictureReader reader);

  [[nodiscard]] std::int32_t LoadContacts(CContacts& contacts) final;
  [[nodiscard]] std::int32_t LoadContactGroups(CContactGroups& groups) final;
  [[nodiscard]] std::int32_t LoadContactGroupPairs(CContactGroupPairs& pairs) final;
  [[nodiscard]] std::int32_t LoadCalendars(CalendarType kind, CCalendars& items) final;
  [[nodiscard]] std::int32_t VisitContacts(const std::function<bool(CContact&)>& visitor) final;
  [[nodiscard]] std::int32_t VisitCalendars(CalendarType kind,
                                            const std::function<bool(CCalendar&)>& visitor) final;
  [[nodiscard]] std::int32_t VisitContacts(std::span<const std::int32_t> keys,
                                           const std::function<bool(CContact&)>& visitor) final;
  [[nodiscard]] std::int32_t VisitCalendars(std::span<const std::int32_t> keys,
                                            const std::function<bool(CCalendar&)>& visitor) final;
  [[nodiscard]] std::int32_t SaveContacts(CContacts& contacts, std::int32_t saveOption,
                                          bool saveFlag) final;
  [[nodiscard]] std::int32_t SaveContactGroups(CContactGroups& groups, bool saveFlag) final;
  [[nodiscard]] std::int32_t SaveContactGroupPairs(CContactGroupPairs& pairs) final;
  [[nodiscard]] std::int32_t SaveCalendars(CCalendars& items, bool saveFlag) final;
  [[nodiscard]] std::int32_t DeleteContacts(std::span<const std::int32_t> keys,
                                            std::vector<WideString>& pictures) final;
  [[nodiscard]] std::int32_t DeleteCalendars(std::span<const std::int32_t> keys) final;
  [[nodiscard]] bool Begin() final;
  [[nodiscard]] bool Commit() final;
  bool Rollback() noexcept final;
  [[nodiscard]] bool BeginReading() final;
  void EndReading() noexcept final;
  std::string LastError() const final;

 protected:
  // The four tables, each time the same ones. Items of all three kinds share one; the key of a link
  // is a number of its own, by which links stand in the order in which they were stored.
  virtual RowTable<CContact>& Contacts() = 0;
  virtual RowTable<CCalendar>& Items() = 0;
  virtual RowTable<CContactGroup>& Groups() = 0;
  virtual RowTable<CContactGroupPair>& Links() = 0;

  // Transactions over all four, which nest. What Begin and Commit throw fails the operation; a
  // transaction that couldn't be committed is then rolled back.
  virtual void BeginChanges() = 0;
  virtual void CommitChanges() = 0;
  virtual void RollBackChanges() noexcept = 0;

  // Between the two, which hold each load and visit or, from BeginReading to EndReading, several of
  // them, the tables are to show one state. They don't nest and aren't called in a transaction.
  // Nothing by default, which is right where nobody else changes the tables.
  virtual void BeginView() {}
  virtual void EndView() noexcept {}

  // To be called when others have changed the tables; the next operation reads them anew where it
  // must know them. A table may call it from within its own operations, as a database does that
  // tells of each change, which has each of the store's own changes cost a reading, too.
  void TablesChanged() noexcept;

 private:
  class PIM_HIDDEN Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace pim
