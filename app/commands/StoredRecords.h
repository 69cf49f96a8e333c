// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <tuple>
#include <unordered_set>
#include <vector>

#include "app/commands/Options.h"
#include "app/commands/Session.h"
#include "app/output/Fields.h"
#include "pim/manager/ContactExport.h"
#include "pim/records/ContactGroups.h"

namespace pim::app {

// By what records are sorted: those without a time or name come last.
struct SortKey {
  double time = 0;
  bool isNameless = false;
  std::string name = {};

  bool operator<(const SortKey& other) const {
    return std::tie(time, isNameless, name) < std::tie(other.time, other.isNameless, other.name);
  }
};

// The stored records of one kind that a filter chooses. One state of the store is seen while this
// lives. Operations throw Failure or Interrupted.
template <class Record>
class StoredRecords {
 public:
  using Visitor = std::function<void(Record&)>;

  StoredRecords(const StoredRecords&) = delete;
  StoredRecords& operator=(const StoredRecords&) = delete;
  virtual ~StoredRecords() = default;

  // Each of them by ascending key. May be called again, and gives the same ones then.
  void Visit(const Visitor& visitor);
  // Whether they come with the names of their groups, where they have some. They do at first.
  void BringGroups(bool brings) { bringsGroups_ = brings; }
  // Those that have the keys, in the order of the keys, whatever the filter says; keys that no
  // record has are passed over.
  virtual void VisitKeys(std::span<const std::int32_t> keys, const Visitor& visitor) = 0;
  // The keys of those that the filter chooses, ascending.
  std::vector<std::int32_t> Keys();

  SortKey SortKeyOf(const Record& record, ListOrder order) const;

 protected:
  StoredRecords(Session& session, Filter filter);

  Session& session() { return session_; }
  const Filter& filter() const { return filter_; }
  bool bringsGroups() const { return bringsGroups_; }

  virtual void VisitAll(const Visitor& visitor) = 0;
  // What can be told of a record besides its words.
  virtual bool IsInGroup(const Record&) const { return true; }
  virtual bool HasName(const Record& record) const = 0;
  // By what it is sorted.
  virtual WideString NameOf(const Record& record) const = 0;
  virtual COleDateTime TimeOf(const Record& record) const = 0;

 private:
  bool IsChosen(const Record& record);

  Session& session_;
  StoreReading reading_;
  Filter filter_;
  bool bringsGroups_ = true;
  LocalTimes times_;
  std::vector<std::string> words_;  // folded
  std::string text_;                // of one record
};

// Contacts come with the names of their groups.
class StoredContacts final : public StoredRecords<CContact> {
 public:
  StoredContacts(Session& session, Filter filter);
  void VisitKeys(std::span<const std::int32_t> keys, const Visitor& visitor) override;

  // How many there are; 0 where a filter chooses, and nobody knows yet.
  std::int32_t CountAll();
  const CContactGroups& groups() const { return groups_; }
  const CContactGroupPairs& pairs() const { return pairs_; }

 private:
  void VisitAll(const Visitor& visitor) override;
  bool IsInGroup(const CContact& contact) const override;
  bool HasName(const CContact& contact) const override;
  WideString NameOf(const CContact& contact) const override;
  COleDateTime TimeOf(const CContact& contact) const override;

  void FindMembers(const std::string& group);

  CContactGroups groups_;
  CContactGroupPairs pairs_;
  std::unordered_set<std::int32_t> members_;  // of the filter's group
};

class StoredItems final : public StoredRecords<CCalendar> {
 public:
  // Tells of items that another program stored as of no kind.
  StoredItems(Session& session, CalendarType kind, Filter filter);
  void VisitKeys(std::span<const std::int32_t> keys, const Visitor& visitor) override;

 private:
  void VisitAll(const Visitor& visitor) override;
  bool HasName(const CCalendar& item) const override;
  WideString NameOf(const CCalendar& item) const override;
  COleDateTime TimeOf(const CCalendar& item) const override;

  CalendarType kind_;
};

// The keys that a command line names. Throws WrongUsage for what is no key.
std::vector<std::int32_t> KeysOf(const std::vector<std::string>& operands);

// Complains of pictures that the store couldn't make where they are looked for. Gives the exit
// status.
int TellPicturesNotMade(Session& session);

// Removes the files of pictures whose contacts are gone for good, and tells of those that can't be
// removed. Gives how many were. Throws Failure when the store fails.
std::int32_t RemoveLeftPictures(Session& session);

void TellNoSuchKey(RecordKind kind, std::int32_t key);

}  // namespace pim::app
