// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "platform/LetterCase.h"
#include "records/SaveRecords.h"
#include "store/HistoryRules.h"
#include "store/LinkIndex.h"
#include "store/MemoryTransactions.h"
#include "store/NamedPictures.h"
#include "support/CallerIdPictures.h"

namespace pim {

using KeySet = std::unordered_set<std::int32_t>;

// The import that is under way: what is stored meanwhile is its own.
struct CurrentImport {
  struct Saved {
    StoredKind kind;
    std::int32_t key;
  };

  std::int32_t import = 0;    // 0: there is none
  std::int64_t file = 0;      // that is being read
  std::size_t fileDepth = 0;  // of the transaction in which it ends
  NarrowStringView bytes;     // of the file
  std::vector<Saved> untold;  // records whose lines aren't told yet
};

// What the tables of both kinds of record share.
struct MemoryServices {
  MemoryTransactions transactions;
  PictureReader pictures = ReadCallerIdPicture;
  FingerprintKey key = NewFingerprintKey();
  CurrentImport current;
};

// The records of one kind, with what is known of their content. Changes are made in a transaction.
template <class Record>
class MemoryRecords {
 public:
  struct Entry {
    std::shared_ptr<Record> record;
    RecordOrigin origin;
    Fingerprint print;  // that it had when an import brought it
  };
  using Records = std::map<std::int32_t, Entry>;

  MemoryRecords(const RecordMap& map, MemoryServices& services)
      : map_(map), services_(services), log_(services.transactions.log()) {}

  bool Holds(std::int32_t key) const { return records_.contains(key); }
  const Records& entries() const { return records_; }
  bool NeedsPrints() const { return services_.current.file != 0; }
  Fingerprint PrintOf(Record& record) const { return FingerprintOf(map_, &record, services_.key); }
  bool IsChanged(const Entry& entry) const {
    return WithPicture(PrintOf(*entry.record), *entry.record) != entry.print;
  }

  void Insert(std::span<const FreshRecord<Record>> records) {
    CurrentImport& current = services_.current;
    for (const auto& [record, print] : records) {
      const std::int32_t key = record->tag;
      log_.Add([this, key] { Forget(key); });
      given_.Add(key);
      Entry entry{Copy(key, *record), {}, {}};
      if (current.file != 0) {
        entry.origin = {current.import, current.file, 0, 0};
        entry.print = WithPicture(print, *record);
      }
      Put(key, std::move(entry));
      if (current.file == 0) continue;
      log_.Add([&current] { current.untold.pop_back(); });
      current.untold.push_back({KindOf(*record), key});
    }
  }
  void Update(std::int32_t key, Record& record) {
    Entry entry = records_.at(key);
    log_.Add([this, key, before = entry] { Put(key, before); });
    entry.record = Copy(key, record);
    // What an import changes of its own is what it brought.
    const std::int32_t import = services_.current.import;
    if (import != 0 && entry.origin.import == import)
      entry.print = WithPicture(PrintOf(*entry.record), *entry.record);
    Put(key, std::move(entry));
  }
  void SetLines(const RecordLines& lines) {
    const auto found = records_.find(lines.key);
    if (found == records_.end()) return;  // it was deleted meanwhile
    Entry& entry = found->second;
    log_.Add([this, key = lines.key, before = entry] { Put(key, before); });
    entry.origin.firstLine = lines.firstLine;
    entry.origin.lastLine = lines.lastLine;
  }
  // False when there is no record of that key.
  bool Erase(std::int32_t key) {
    const auto found = records_.find(key);
    if (found == records_.end()) return false;
    const auto kept = std::make_shared<typename Records::node_type>();
    log_.Add([this, kept] { PutBack(std::move(*kept)); });
    if (ContentIndex* contents = Contents(false); contents != nullptr) contents->Remove(key);
    pictures_.Remove(PhotoOf(*found->second.record));
    *kept = records_.extract(found);
    return true;
  }
  // The pictures that these records name and no other one does.
  std::vector<WideString> PicturesOfNoOther(const KeySet& keys) const {
    std::vector<WideString> names;
    for (const std::int32_t key : keys) names.emplace_back(PhotoOf(*records_.at(key).record));
    return pictures_.OfNoOther(names);
  }

  const GivenKeys& Given() const { return given_; }
  std::int32_t HighestKey() const {
    return given_.HighestWith(records_.empty() ? 0 : records_.rbegin()->first);
  }
  // The index, which may be changed until the transaction ends, or null where none is wanted and
  // there is none.
  ContentIndex* Contents(bool isWanted) {
    if (!contents_ && isWanted) {
      ContentIndex filled(services_.pictures, services_.pictures, services_.key);
      for (const auto& [key, entry] : records_)
        filled.Add(key, PrintOf(*entry.record), PhotoOf(*entry.record));
      contents_ = std::move(filled);
    }
    if (!contents_) return nullptr;
    log_.Add([this] { ForgetContents(); });
    return &*contents_;
  }
  void ForgetContents() { contents_.reset(); }

  // Reads copies of those that have the keys, until `visitor` gives false.
  template <class Visitor>
  std::int32_t VisitKeys(std::span<const std::int32_t> keys, Visitor visitor) const {
    std::int32_t visited = 0;
    for (const std::int32_t key : keys) {
      const auto found = records_.find(key);
      if (found == records_.end()) continue;
      ++visited;
      if (!visitor(Copy(key, *found->second.record))) break;
    }
    return visited;
  }

  // Reads copies until `visitor` gives false or there is no other that `isWanted` takes.
  template <class Wanted, class Visitor>
  std::int32_t Visit(Wanted isWanted, Visitor visitor) const {
    std::int32_t visited = 0;
    for (const auto& [key, entry] : records_) {
      if (!isWanted(*entry.record)) continue;
      ++visited;
      if (!visitor(Copy(key, *entry.record))) break;
    }
    return visited;
  }

 private:
  std::unique_ptr<Record> Copy(std::int32_t key, Record& record) const {
    auto copy = std::make_unique<Record>();
    CopyRecord(map_, &record, copy.get());
    copy->tag = key;
    return copy;
  }
  // A picture that isn't there is none.
  Fingerprint WithPicture(const Fingerprint& print, const Record& record) const {
    const WideStringView photo = PhotoOf(record);
    const NarrowString bytes = photo.empty() ? NarrowString{} : services_.pictures(photo);
    return bytes.empty() ? print : Joined(print, FingerprintOf(bytes, services_.key));
  }
  // Wholly or not at all.
  void Put(std::int32_t key, Entry entry) {
    const auto found = records_.find(key);
    if (found == records_.end()) {
      Records fresh;
      fresh.emplace(key, std::move(entry));
      PutBack(fresh.extract(fresh.begin()));
      return;
    }
    pictures_.Add(PhotoOf(*entry.record));
    pictures_.Remove(PhotoOf(*found->second.record));
    found->second = std::move(entry);
  }
  // Needs no memory for what was here before.
  void PutBack(typename Records::node_type node) {
    if (node.empty()) return;
    pictures_.Add(PhotoOf(*node.mapped().record));
    records_.insert(records_.end(), std::move(node));
  }
  void Forget(std::int32_t key) {
    const auto found = records_.find(key);
    if (found == records_.end()) return;
    pictures_.Remove(PhotoOf(*found->second.record));
    records_.erase(found);
  }

  const RecordMap& map_;
  MemoryServices& services_;
  UndoLog& log_;
  Records records_;
  NamedPictures pictures_;
  std::optional<ContentIndex> contents_;
  GivenKeys given_;
};

class MemoryGroups {
 public:
  struct Entry {
    WideText name;
    std::int32_t import = 0;  // that made it
    WideText firstName;

    bool IsRenamed() const { return name != firstName; }
  };

  explicit MemoryGroups(MemoryServices& services)
      : current_(services.current), log_(services.transactions.log()) {}

  bool Holds(std::int32_t key) const { return groups_.contains(key); }
  const std::map<std::int32_t, Entry>& entries() const { return groups_; }
  std::int32_t Find(WideStringView name) const {
    const auto found = keys_.find(FoldLetterCase(name));
    return found == keys_.end() ? 0 : found->second;
  }
  const GivenKeys& Given() const { return given_; }
  std::int32_t HighestKey() const {
    return given_.HighestWith(groups_.empty() ? 0 : groups_.rbegin()->first);
  }
  std::int32_t Insert(std::int32_t key, WideStringView name) {
    log_.Add([this, key] { Forget(key); });
    Put(key, {WideText(name), current_.import, WideText(name)});
    given_.Add(key);
    return key;
  }
  void Rename(std::int32_t key, WideStringView name) {
    const Entry before = groups_.at(key);
    Erase(key);
    log_.Add([this, key] { Forget(key); });
    Put(key, {WideText(name), before.import, before.firstName});
  }
  void Erase(std::int32_t key) {
    log_.Add([this, key, before = groups_.at(key)] { Put(key, before); });
    Forget(key);
  }

 private:
  void Put(std::int32_t key, const Entry& entry) {
    groups_[key] = entry;
    keys_[FoldLetterCase(entry.name)] = key;
  }
  void Forget(std::int32_t key) {
    keys_.erase(FoldLetterCase(groups_.at(key).name));
    groups_.erase(key);
  }

  const CurrentImport& current_;
  UndoLog& log_;
  std::map<std::int32_t, Entry> groups_;
  std::unordered_map<WideString, std::int32_t> keys_;  // by the name in one letter case
  GivenKeys given_;
};

// The links of contacts to groups, as SaveLinks meets them.
class MemoryLinks {
 public:
  struct Entry {
    std::int32_t contact;
    std::int32_t group;
    std::int32_t import;  // that made it of a contact that it hasn't brought
  };

  MemoryLinks(MemoryServices& services, const MemoryRecords<CContact>& contacts,
              const MemoryGroups& groups)
      : current_(services.current),
        log_(services.transactions.log()),
        contacts_(contacts),
        groups_(groups) {}

  // By their numbers, in the order in which they were stored.
  using Entries = std::map<std::int64_t, Entry>;
  const Entries& entries() const { return links_; }
  std::int64_t Count(std::int32_t contact, std::int32_t group) const {
    return index_.Count(contact, group);
  }
  void Insert(std::span<const LinkRow> links) {
    for (const auto& [contact, group] : links) {
      const auto found = contacts_.entries().find(contact);
      if (found == contacts_.entries().end() || !groups_.Holds(group))
        throw std::runtime_error(NoSuchLink(contact, group));
      const bool isBrought = found->second.origin.import == current_.import;
      const std::int64_t number = ++lastNumber_;
      log_.Add([this, number] { Forget(number); });
      Put(number, {contact, group, isBrought ? 0 : current_.import});
    }
  }
  void EraseOf(std::int32_t contact) {
    for (const auto& link : index_.Of(contact)) Erase(link.number);
  }
  template <class Doomed>
  void EraseIf(Doomed isDoomed) {
    std::vector<std::int64_t> doomed;
    for (const auto& [number, link] : links_)
      if (isDoomed(link)) doomed.push_back(number);
    for (const std::int64_t number : doomed) Erase(number);
  }

 private:
  void Erase(std::int64_t number) {
    struct Kept {
      Entries::node_type link;
      LinkIndex<std::int64_t>::Node place;
    };
    const auto kept = std::make_shared<Kept>();
    log_.Add([this, kept] {
      links_.insert(std::move(kept->link));
      index_.PutBack(std::move(kept->place));
    });
    const Entry& link = links_.at(number);
    kept->place = index_.Take({link.contact, link.group, number});
    kept->link = links_.extract(number);
  }
  void Put(std::int64_t number, const Entry& link) {
    links_.emplace_hint(links_.end(), number, link);
    index_.Add({link.contact, link.group, number});
  }
  void Forget(std::int64_t number) {
    const auto found = links_.find(number);
    if (found == links_.end()) return;
    index_.Remove({found->second.contact, found->second.group, number});
    links_.erase(found);
  }

  const CurrentImport& current_;
  UndoLog& log_;
  const MemoryRecords<CContact>& contacts_;
  const MemoryGroups& groups_;
  Entries links_;
  LinkIndex<std::int64_t> index_;
  std::int64_t lastNumber_ = 0;
};

struct MemoryTables {
  MemoryServices services;
  MemoryRecords<CContact> contacts{ContactMap(), services};
  MemoryRecords<CCalendar> items{CalendarMap(), services};
  MemoryGroups groups{services};
  MemoryLinks links{services, contacts, groups};

  MemoryTransactions& transactions() { return services.transactions; }
  UndoLog& log() { return services.transactions.log(); }
};

}  // namespace pim
