// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/records/MemoryStore.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "store/HistoryRules.h"
#include "store/MemoryHistory.h"
#include "store/RecordVisits.h"

namespace pim {

namespace {

template <class Records>
auto AppendTo(Records& records) {
  return [&records](auto record) {
    records.Add(std::move(record));
    return true;
  };
}

}  // namespace

class MemoryStore::Impl final : public RecordStore {
 public:
  void SetPictureReader(PictureReader reader) {
    tables_.services.pictures = std::move(reader);
    contacts_.ForgetContents();
  }

  std::int32_t LoadContacts(CContacts& contacts) override {
    return Visit(contacts_, kEachRecord, AppendTo(contacts));
  }
  std::int32_t LoadContactGroups(CContactGroups& groups) override {
    for (const auto& [key, stored] : groups_.entries()) {
      CContactGroup& group = groups.AddNew();
      group.group_id = key;
      group.group_name = stored.name;
    }
    return static_cast<std::int32_t>(groups_.entries().size());
  }
  std::int32_t LoadContactGroupPairs(CContactGroupPairs& pairs) override {
    for (const auto& [number, link] : links_.entries()) {
      CContactGroupPair& pair = pairs.AddNew();
      pair.contact_id = link.contact;
      pair.group_id = link.group;
    }
    return static_cast<std::int32_t>(links_.entries().size());
  }
  std::int32_t LoadCalendars(CalendarType kind, CCalendars& items) override {
    return Visit(items_, OfKind(kind), AppendTo(items));
  }
  std::int32_t VisitContacts(const std::function<bool(CContact&)>& visitor) override {
    return Visit(contacts_, kEachRecord, [&](const auto& contact) { return visitor(*contact); });
  }
  std::int32_t VisitCalendars(CalendarType kind,
                              const std::function<bool(CCalendar&)>& visitor) override {
    return Visit(items_, OfKind(kind), [&](const auto& item) { return visitor(*item); });
  }
  std::int32_t VisitContacts(std::span<const std::int32_t> keys,
                             const std::function<bool(CContact&)>& visitor) override {
    return transactions_.Read([&] {
      return contacts_.VisitKeys(keys, [&](const auto& contact) { return visitor(*contact); });
    });
  }
  std::int32_t VisitCalendars(std::span<const std::int32_t> keys,
                              const std::function<bool(CCalendar&)>& visitor) override {
    return transactions_.Read(
        [&] { return items_.VisitKeys(keys, [&](const auto& item) { return visitor(*item); }); });
  }

  std::int32_t DeleteContacts(std::span<const std::int32_t> keys,
                              std::vector<WideString>& pictures) override {
    return transactions_.Store([&] {
      KeySet erased;
      for (const std::int32_t key : keys)
        if (contacts_.Holds(key)) erased.insert(key);
      const std::vector<WideString> left = contacts_.PicturesOfNoOther(erased);
      for (const std::int32_t key : erased) {
        contacts_.Erase(key);
        links_.EraseOf(key);
      }
      pictures.insert(pictures.end(), left.begin(), left.end());
      return static_cast<std::int32_t>(erased.size());
    });
  }
  std::int32_t DeleteCalendars(std::span<const std::int32_t> keys) override {
    return transactions_.Store([&] {
      return static_cast<std::int32_t>(
          std::ranges::count_if(keys, [this](std::int32_t key) { return items_.Erase(key); }));
    });
  }

  std::int32_t SaveContacts(CContacts& contacts, std::int32_t saveOption, bool saveFlag) override {
    return SaveGuarded(contacts, [&](KeyGuard<CContacts>& keys) {
      return transactions_.Store([&] {
        if (saveOption > 0 && !groups_.Holds(saveOption))
          throw std::runtime_error(NoSuchGroup(saveOption));
        const std::int32_t saved = SaveRecords(contacts, saveFlag, contacts_, keys);
        if (saveOption > 0) LinkContacts(contacts, saveOption, links_);
        return saved;
      });
    });
  }
  std::int32_t SaveContactGroups(CContactGroups& groups, bool /*saveFlag*/) override {
    return SaveGuarded(groups, [&](auto&) {
      return transactions_.Store([&] { return SaveGroups(groups, groups_); });
    });
  }
  std::int32_t SaveContactGroupPairs(CContactGroupPairs& pairs) override {
    return transactions_.Store([&] { return SaveLinks(pairs, links_); });
  }
  std::int32_t SaveCalendars(CCalendars& items, bool saveFlag) override {
    return SaveGuarded(items, [&](KeyGuard<CCalendars>& keys) {
      return transactions_.Store([&] { return SaveRecords(items, saveFlag, items_, keys); });
    });
  }

  bool Begin() override { return transactions_.Begin(); }
  // A file of an import ends in the transaction in which it began.
  bool Commit() override {
    const CurrentImport& current = tables_.services.current;
    if (current.file != 0 && current.fileDepth == tables_.log().depth())
      return transactions_.Fail(kFileIsStillBeingRead) == 0;
    return transactions_.Commit();
  }
  bool Rollback() noexcept override { return transactions_.Rollback(); }
  bool BeginReading() override {
    transactions_.BeginReading();
    return true;
  }
  void EndReading() noexcept override { transactions_.EndReading(); }
  ImportHistory* History() noexcept override { return &history_; }
  std::string LastError() const override { return transactions_.problem(); }

 private:
  template <class Record, class Wanted, class Visitor>
  std::int32_t Visit(const MemoryRecords<Record>& records, Wanted isWanted, Visitor visitor) {
    return transactions_.Read([&] { return records.Visit(isWanted, visitor); });
  }

  MemoryTables tables_;
  MemoryTransactions& transactions_ = tables_.transactions();
  MemoryRecords<CContact>& contacts_ = tables_.contacts;
  MemoryRecords<CCalendar>& items_ = tables_.items;
  MemoryGroups& groups_ = tables_.groups;
  MemoryLinks& links_ = tables_.links;
  MemoryHistory history_{tables_};
};

MemoryStore::MemoryStore() : MemoryStore(std::make_unique<Impl>()) {}

MemoryStore::MemoryStore(std::unique_ptr<Impl> impl)
    : ForwardingStore(*impl), impl_(std::move(impl)) {}

MemoryStore::~MemoryStore() = default;

void MemoryStore::SetPictureReader(PictureReader reader) {
  impl_->SetPictureReader(std::move(reader));
}

}  // namespace pim
