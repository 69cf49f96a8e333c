// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/records/TableStore.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <stdexcept>
#include <utility>

#include "store/MemoryTransactions.h"
#include "store/RecordVisits.h"
#include "store/TableRows.h"
#include "support/CallerIdPictures.h"

namespace pim {

class TableStore::Impl {
 public:
  explicit Impl(TableStore& store)
      : store_(store), transactions_(Changes(store, known_, isStale_)) {}

  // The host's transactions; what they take back isn't known any more.
  class Changes {
   public:
    Changes(TableStore& store, KnownContent& known, bool& isStale)
        : store_(store), known_(known), isStale_(isStale) {}
    bool IsOpen() const { return depth_ > 0; }
    void Begin() {
      store_.BeginChanges();
      ++depth_;
      if (std::exchange(isStale_, false)) known_ = {};
    }
    void Commit() {
      store_.CommitChanges();
      --depth_;
    }
    void Rollback() noexcept {
      known_ = {};
      store_.RollBackChanges();
      --depth_;
    }

   private:
    TableStore& store_;
    KnownContent& known_;
    bool& isStale_;
    std::size_t depth_ = 0;
  };

  // The next operation learns anew what it needs to know: one may be under way that is using it.
  void Forget() noexcept { isStale_ = true; }
  void SetPictureReader(PictureReader reader) {
    pictures_ = std::move(reader);
    Forget();
  }
  GuardedTransactions<Changes>& transactions() { return transactions_; }

  StoredRecords<CContact> Contacts() {
    return {store_.Contacts(), given_.contacts, ContactMap(), pictures_, key_, known_.contacts};
  }
  StoredRecords<CCalendar> Items() {
    return {store_.Items(), given_.items, CalendarMap(), pictures_, key_, known_.items};
  }
  StoredGroups Groups() { return {store_.Groups(), given_.groups, known_}; }
  StoredLinks Links() {
    return {store_.Links(), given_.links, store_.Contacts(), store_.Groups(), known_};
  }

  // Views don't nest, and a transaction shows one state by itself.
  bool BeginView() {
    if (views_ == 0 && !transactions_.log().IsOpen()) {
      if (!transactions_.Try([this] { store_.BeginView(); })) return false;
      hasView_ = true;
    }
    ++views_;
    return true;
  }
  void EndView() noexcept {
    if (--views_ == 0 && std::exchange(hasView_, false)) store_.EndView();
  }

  // Hands `visitor` what next(), which is null at the end, gives: the exceptions of the visitor
  // pass, while those of the tables fail the reading.
  template <class Next, class Visitor>
  std::int32_t VisitEach(Next next, const Visitor& visitor) {
    return transactions_.Read([&] {
      if (!BeginView()) return kFailure;
      struct Scope {
        Impl& impl;
        ~Scope() { impl.EndView(); }
      } const scope{*this};
      std::int32_t visited = 0;
      for (std::int32_t key = 0;; ++visited) {
        decltype(next(key)) row;
        if (!transactions_.Try([&] { row = next(key); })) return kFailure;
        if (row == nullptr) return visited;
        if (!visitor(key, *row)) return visited + 1;
      }
    });
  }
  template <class Row, class Wanted, class Visitor>
  std::int32_t Visit(RowTable<Row>& table, Wanted isWanted, const Visitor& visitor) {
    return VisitEach(
        [&](std::int32_t& key) {
          auto row = NextRow(table, key);
          while (row != nullptr && !isWanted(*row)) row = NextRow(table, key);
          return row;
        },
        visitor);
  }
  template <class Row, class Visitor>
  std::int32_t VisitKeys(RowTable<Row>& table, std::span<const std::int32_t> keys,
                         const Visitor& visitor) {
    auto left = keys.begin();
    return VisitEach(
        [&](std::int32_t& key) {
          std::shared_ptr<const Row> row;
          while (row == nullptr && left != keys.end()) row = FindRow(table, key = *left++);
          return row;
        },
        visitor);
  }

  static constexpr std::int32_t kFailure = GuardedTransactions<Changes>::kFailure;

 private:
  TableStore& store_;
  PictureReader pictures_ = ReadCallerIdPicture;
  FingerprintKey key_ = NewFingerprintKey();
  KnownContent known_;
  bool isStale_ = false;  // what is known
  GivenTableKeys given_;
  GuardedTransactions<Changes> transactions_;
  int views_ = 0;         // that were begun and not ended
  bool hasView_ = false;  // the host's own
};

namespace {

// Hands `visitor` a copy of each record.
template <class Record>
auto CopyFor(const RecordMap& map, const std::function<bool(Record&)>& visitor) {
  return [&map, &visitor](std::int32_t key, const Record& record) {
    return visitor(*Copied(map, key, record));
  };
}

// Runs `load`, after whose failure the collection is as it was.
template <class Records, class Load>
std::int32_t LoadWholly(Records& records, Load load) {
  const std::int32_t before = records.GetCount();
  const std::int32_t loaded = load();
  while (loaded < 0 && records.GetCount() > before) records.TakeLast();
  return loaded;
}

template <class Records, class Record>
auto AppendCopy(const RecordMap& map, Records& records) {
  return [&map, &records](std::int32_t key, const Record& record) {
    records.Add(Copied(map, key, record));
    return true;
  };
}

}  // namespace

TableStore::TableStore() : impl_(std::make_unique<Impl>(*this)) {}
TableStore::~TableStore() = default;

void TableStore::SetPictureReader(PictureReader reader) {
  impl_->SetPictureReader(std::move(reader));
}
void TableStore::TablesChanged() noexcept { impl_->Forget(); }

std::int32_t TableStore::LoadContacts(CContacts& contacts) {
  return LoadWholly(contacts, [&] {
    return impl_->Visit(Contacts(), kEachRecord,
                        AppendCopy<CContacts, CContact>(ContactMap(), contacts));
  });
}
std::int32_t TableStore::LoadContactGroups(CContactGroups& groups) {
  return LoadWholly(groups, [&] {
    return impl_->Visit(Groups(), kEachRecord, [&](std::int32_t key, const CContactGroup& stored) {
      CContactGroup& group = groups.AddNew();
      group.group_id = key;
      group.group_name = stored.group_name;
      return true;
    });
  });
}
std::int32_t TableStore::LoadContactGroupPairs(CContactGroupPairs& pairs) {
  return LoadWholly(pairs, [&] {
    return impl_->Visit(Links(), kEachRecord, [&](std::int32_t, const CContactGroupPair& link) {
      pairs.AddNew() = link;
      return true;
    });
  });
}
std::int32_t TableStore::LoadCalendars(CalendarType kind, CCalendars& items) {
  return LoadWholly(items, [&] {
    return impl_->Visit(Items(), OfKind(kind),
                        AppendCopy<CCalendars, CCalendar>(CalendarMap(), items));
  });
}

std::int32_t TableStore::VisitContacts(const std::function<bool(CContact&)>& visitor) {
  return impl_->Visit(Contacts(), kEachRecord, CopyFor(ContactMap(), visitor));
}
std::int32_t TableStore::VisitCalendars(CalendarType kind,
                                        const std::function<bool(CCalendar&)>& visitor) {
  return impl_->Visit(Items(), OfKind(kind), CopyFor(CalendarMap(), visitor));
}
std::int32_t TableStore::VisitContacts(std::span<const std::int32_t> keys,
                                       const std::function<bool(CContact&)>& visitor) {
  return impl_->VisitKeys(Contacts(), keys, CopyFor(ContactMap(), visitor));
}
std::int32_t TableStore::VisitCalendars(std::span<const std::int32_t> keys,
                                        const std::function<bool(CCalendar&)>& visitor) {
  return impl_->VisitKeys(Items(), keys, CopyFor(CalendarMap(), visitor));
}

std::int32_t TableStore::SaveContacts(CContacts& contacts, std::int32_t saveOption, bool saveFlag) {
  return SaveGuarded(contacts, [&](KeyGuard<CContacts>& keys) {
    return impl_->transactions().Store([&] {
      if (saveOption > 0 && FindRow(Groups(), saveOption) == nullptr)
        throw std::runtime_error(NoSuchGroup(saveOption));
      StoredRecords<CContact> stored = impl_->Contacts();
      const std::int32_t saved = SaveRecords(contacts, saveFlag, stored, keys);
      if (saveOption > 0) {
        StoredLinks links = impl_->Links();
        LinkContacts(contacts, saveOption, links);
      }
      return saved;
    });
  });
}
std::int32_t TableStore::SaveContactGroups(CContactGroups& groups, bool /*saveFlag*/) {
  return SaveGuarded(groups, [&](auto&) {
    return impl_->transactions().Store([&] {
      StoredGroups stored = impl_->Groups();
      return SaveGroups(groups, stored);
    });
  });
}
std::int32_t TableStore::SaveContactGroupPairs(CContactGroupPairs& pairs) {
  return impl_->transactions().Store([&] {
    StoredLinks stored = impl_->Links();
    return SaveLinks(pairs, stored);
  });
}
std::int32_t TableStore::SaveCalendars(CCalendars& items, bool saveFlag) {
  return SaveGuarded(items, [&](KeyGuard<CCalendars>& keys) {
    return impl_->transactions().Store([&] {
      StoredRecords<CCalendar> stored = impl_->Items();
      return SaveRecords(items, saveFlag, stored, keys);
    });
  });
}

std::int32_t TableStore::DeleteContacts(std::span<const std::int32_t> keys,
                                        std::vector<WideString>& pictures) {
  std::vector<WideString> left;
  const std::int32_t deleted = impl_->transactions().Store([&] {
    StoredRecords<CContact> stored = impl_->Contacts();
    StoredLinks links = impl_->Links();
    const auto doomed = stored.Held(keys);
    std::vector<WideString> named;
    for (const auto& [key, contact] : doomed)
      if (!contact->photo.empty()) named.push_back(contact->photo.str());
    left = stored.PicturesOfNoOther(named);
    pictures.reserve(pictures.size() + left.size());
    for (const auto& [key, contact] : doomed) {
      links.EraseOf(key);
      stored.Erase(key, *contact);
    }
    return static_cast<std::int32_t>(doomed.size());
  });
  if (deleted >= 0) std::ranges::move(left, std::back_inserter(pictures));
  return deleted;
}
std::int32_t TableStore::DeleteCalendars(std::span<const std::int32_t> keys) {
  return impl_->transactions().Store([&] {
    StoredRecords<CCalendar> stored = impl_->Items();
    const auto doomed = stored.Held(keys);
    for (const auto& [key, item] : doomed) stored.Erase(key, *item);
    return static_cast<std::int32_t>(doomed.size());
  });
}

bool TableStore::Begin() { return impl_->transactions().Begin(); }
bool TableStore::Commit() { return impl_->transactions().Commit(); }
bool TableStore::Rollback() noexcept { return impl_->transactions().Rollback(); }
bool TableStore::BeginReading() {
  if (!impl_->BeginView()) return false;
  impl_->transactions().BeginReading();
  return true;
}
void TableStore::EndReading() noexcept {
  impl_->transactions().EndReading();
  impl_->EndView();
}
std::string TableStore::LastError() const { return impl_->transactions().problem(); }

}  // namespace pim
