// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/records/PreviewStore.h"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "platform/LetterCase.h"
#include "records/SaveRecords.h"
#include "support/CallerIdPictures.h"

namespace pim {
namespace {

// Beyond the keys of any store that there is, where nobody has looked at its records.
constexpr std::int32_t kProvisionalKeys = 1 << 30;

std::int32_t VisitAll(RecordStore& store, const std::function<bool(CContact&)>& visitor) {
  return store.VisitContacts(visitor);
}
std::int32_t VisitAll(RecordStore& store, const std::function<bool(CCalendar&)>& visitor) {
  std::int32_t visited = 0;
  for (const CalendarType kind : {CalendarType::Event, CalendarType::Todo, CalendarType::Memo}) {
    const std::int32_t some = store.VisitCalendars(kind, visitor);
    if (some < 0) return some;
    visited += some;
  }
  return visited;
}
std::int32_t VisitKey(RecordStore& store, std::int32_t key,
                      const std::function<bool(CContact&)>& visitor) {
  return store.VisitContacts({&key, 1}, visitor);
}
std::int32_t VisitKey(RecordStore& store, std::int32_t key,
                      const std::function<bool(CCalendar&)>& visitor) {
  return store.VisitCalendars({&key, 1}, visitor);
}

std::int32_t Checked(RecordStore& store, std::int32_t result) {
  if (result < 0) throw std::runtime_error(store.LastError());
  return result;
}

// The records of one kind that a preview has taken, beside those of the store.
template <class Record>
class PreviewTable {
 public:
  PreviewTable(RecordStore& store, const RecordMap& map, const PictureReader& pictures)
      : store_(store), map_(map), pictures_(pictures) {}

  bool Holds(std::int32_t key) {
    return keys_.contains(key) ||
           Checked(store_, VisitKey(store_, key, [](Record&) { return true; })) > 0;
  }
  std::int32_t HighestKey() const {
    return given_.HighestWith(contents_ ? highest_ : kProvisionalKeys);
  }
  const GivenKeys& Given() const { return given_; }
  static bool NeedsPrints() { return false; }
  Fingerprint PrintOf(Record& record) const { return FingerprintOf(map_, &record, key_); }
  void Insert(std::span<const FreshRecord<Record>> records) {
    for (const auto& [record, print] : records) {
      given_.Add(record->tag);
      taken_.push_back(record->tag);
      keys_.insert(record->tag);
      fresh_.push_back(record);
    }
  }
  // Gives up the new records of the last save, in their order.
  std::vector<const Record*> TakeFresh() { return std::exchange(fresh_, {}); }
  void Update(std::int32_t, Record&) {}
  ContentIndex* Contents(bool isWanted) {
    if (!contents_ && isWanted) {
      contents_.emplace(pictures_, pictures_, key_);
      const auto add = [this](Record& record) {
        if (!IsStoredKey(record.tag)) return true;
        highest_ = std::max(highest_, record.tag);
        contents_->Add(record.tag, PrintOf(record), PhotoOf(record));
        return true;
      };
      if (const std::int32_t visited = VisitAll(store_, add); visited < 0) {
        contents_.reset();
        Checked(store_, visited);
      }
    }
    return contents_ ? &*contents_ : nullptr;
  }

  std::size_t Mark() const { return taken_.size(); }
  void GoBack(std::size_t mark) {
    for (; taken_.size() > mark; taken_.pop_back()) {
      keys_.erase(taken_.back());
      if (contents_) contents_->Remove(taken_.back());
    }
  }

 private:
  RecordStore& store_;
  const RecordMap& map_;
  const PictureReader& pictures_;
  FingerprintKey key_ = NewFingerprintKey();
  std::optional<ContentIndex> contents_;
  std::int32_t highest_ = 0;  // key of the store
  GivenKeys given_;
  std::vector<std::int32_t> taken_;  // in their order
  std::unordered_set<std::int32_t> keys_;
  std::vector<const Record*> fresh_;
};

// The groups of the store, read at first use, and those that the preview has taken.
class PreviewGroups {
 public:
  explicit PreviewGroups(RecordStore& store) : store_(store) {}

  bool Holds(std::int32_t key) { return Names().contains(key); }
  std::int32_t Find(WideStringView name) {
    Names();
    const auto found = keys_.find(FoldLetterCase(name));
    return found == keys_.end() ? 0 : found->second;
  }
  std::int32_t HighestKey() {
    Names();
    return given_.HighestWith(highest_);
  }
  const GivenKeys& Given() const { return given_; }
  std::int32_t Insert(std::int32_t key, WideStringView name) {
    given_.Add(key);
    taken_.push_back(key);
    Put(key, name);
    return key;
  }
  void Rename(std::int32_t, WideStringView) {}

  std::int32_t AppendTaken(CContactGroups& groups) {
    for (const std::int32_t key : taken_) {
      CContactGroup& group = groups.AddNew();
      group.group_id = key;
      group.group_name = names_.at(key);
    }
    return static_cast<std::int32_t>(taken_.size());
  }
  std::size_t Mark() const { return taken_.size(); }
  void GoBack(std::size_t mark) {
    for (; taken_.size() > mark; taken_.pop_back()) {
      keys_.erase(FoldLetterCase(names_.at(taken_.back())));
      names_.erase(taken_.back());
    }
  }

 private:
  std::unordered_map<std::int32_t, WideString>& Names() {
    if (loaded_) return names_;
    CContactGroups groups;
    Checked(store_, store_.LoadContactGroups(groups));
    for (std::int32_t i = 0; i < groups.GetCount(); ++i) {
      if (!IsStoredKey(groups[i].group_id)) continue;
      highest_ = std::max(highest_, groups[i].group_id);
      Put(groups[i].group_id, groups[i].group_name);
    }
    loaded_ = true;
    return names_;
  }
  void Put(std::int32_t key, WideStringView name) {
    names_.emplace(key, name);
    keys_.emplace(FoldLetterCase(name), key);
  }

  RecordStore& store_;
  bool loaded_ = false;
  std::unordered_map<std::int32_t, WideString> names_;
  std::unordered_map<WideString, std::int32_t> keys_;  // by the name in one letter case
  std::int32_t highest_ = 0;
  GivenKeys given_;
  std::vector<std::int32_t> taken_;
};

}  // namespace

class PreviewStore::Impl final : public ForwardingStore {
 public:
  explicit Impl(RecordStore& store) : ForwardingStore(store), store_(store), groups_(store) {}

  void SetPictureReader(PictureReader reader) { pictures_ = std::move(reader); }
  void OnSaved(TellContact tellContact, TellCalendar tellCalendar) {
    tellContact_ = std::move(tellContact);
    tellCalendar_ = std::move(tellCalendar);
  }

  std::int32_t LoadContactGroups(CContactGroups& groups) override {
    const std::int32_t stored = store_.LoadContactGroups(groups);
    return stored < 0 ? Fail(store_.LastError()) : stored + groups_.AppendTaken(groups);
  }
  std::int32_t SaveContacts(CContacts& contacts, std::int32_t saveOption, bool saveFlag) override {
    return Save(contacts, contacts_, tellContact_, [&](KeyGuard<CContacts>& keys) {
      if (saveOption > 0 && !groups_.Holds(saveOption))
        throw std::runtime_error(NoSuchGroup(saveOption));
      return SaveRecords(contacts, saveFlag, contacts_, keys);
    });
  }
  std::int32_t SaveCalendars(CCalendars& items, bool saveFlag) override {
    return Save(items, items_, tellCalendar_, [&](KeyGuard<CCalendars>& keys) {
      return SaveRecords(items, saveFlag, items_, keys);
    });
  }
  std::int32_t SaveContactGroups(CContactGroups& groups, bool /*saveFlag*/) override {
    return SaveGuarded(groups,
                       [&](auto&) { return Try([&] { return SaveGroups(groups, groups_); }); });
  }
  std::int32_t SaveContactGroupPairs(CContactGroupPairs& pairs) override {
    return pairs.GetCount();
  }
  std::int32_t DeleteContacts(std::span<const std::int32_t>, std::vector<WideString>&) override {
    return Fail(kNothingDeleted);
  }
  std::int32_t DeleteCalendars(std::span<const std::int32_t>) override {
    return Fail(kNothingDeleted);
  }

  bool Begin() override {
    marks_.push_back({contacts_.Mark(), items_.Mark(), groups_.Mark()});
    return true;
  }
  bool Commit() override {
    if (marks_.empty()) return false;
    marks_.pop_back();
    return true;
  }
  bool Rollback() noexcept override {
    if (marks_.empty()) return false;
    contacts_.GoBack(marks_.back().contacts);
    items_.GoBack(marks_.back().items);
    groups_.GoBack(marks_.back().groups);
    marks_.pop_back();
    return true;
  }
  ImportHistory* History() noexcept override { return nullptr; }
  std::string LastError() const override {
    return problem_.empty() ? store_.LastError() : problem_;
  }

 private:
  static constexpr const char* kNothingDeleted = "nothing is deleted where nothing is written";

  template <class Records, class Table, class Tell, class SaveAll>
  std::int32_t Save(Records& records, Table& table, const Tell& tell, SaveAll saveAll) {
    const std::int32_t saved = SaveGuarded(
        records, [&](KeyGuard<Records>& keys) { return Try([&] { return saveAll(keys); }); });
    const auto fresh = table.TakeFresh();
    if (saved < 0 || !tell) return saved;
    auto next = fresh.begin();
    for (std::int32_t i = 0; i < records.GetCount(); ++i) {
      const bool isNew = next != fresh.end() && *next == &records[i];
      if (isNew) ++next;
      tell(records[i], isNew);
    }
    return saved;
  }

  template <class Operation>
  std::int32_t Try(Operation operation) {
    try {
      return operation();
    } catch (const std::exception& error) {
      return Fail(error.what());
    }
  }
  std::int32_t Fail(std::string problem) {
    problem_ = std::move(problem);
    return -1;
  }

  struct Mark {
    std::size_t contacts;
    std::size_t items;
    std::size_t groups;
  };

  RecordStore& store_;
  PictureReader pictures_ = ReadCallerIdPicture;
  PreviewTable<CContact> contacts_{store_, ContactMap(), pictures_};
  PreviewTable<CCalendar> items_{store_, CalendarMap(), pictures_};
  PreviewGroups groups_;
  TellContact tellContact_;
  TellCalendar tellCalendar_;
  std::vector<Mark> marks_;  // one for each open transaction
  std::string problem_;
};

PreviewStore::PreviewStore(RecordStore& store) : PreviewStore(std::make_unique<Impl>(store)) {}

PreviewStore::PreviewStore(std::unique_ptr<Impl> impl)
    : ForwardingStore(static_cast<RecordStore&>(*impl)), impl_(std::move(impl)) {}

PreviewStore::~PreviewStore() = default;

void PreviewStore::SetPictureReader(PictureReader reader) {
  impl_->SetPictureReader(std::move(reader));
}

void PreviewStore::OnSaved(TellContact tellContact, TellCalendar tellCalendar) {
  impl_->OnSaved(std::move(tellContact), std::move(tellCalendar));
}

}  // namespace pim
