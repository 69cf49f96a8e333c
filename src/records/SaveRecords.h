// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <span>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "pim/records/Calendar.h"
#include "pim/records/ContactGroups.h"
#include "pim/records/Contacts.h"
#include "records/ContentIndex.h"

namespace pim {

// The rules of saving, once for all stores: which records are updates and which are new, what keys
// the new ones get, which are left out as equal to stored ones, which links and groups are there
// already. What a store has itself is a storage, a class that finds, inserts and changes rows and
// decides nothing; the functions below tell what they ask of one. They run inside a transaction of
// the store and let pass what the storage throws: the store then rolls back, and a KeyGuard gives
// the collection its former keys, so that a save is done wholly or not at all.

// Whether a record's key can be one that a store gave.
constexpr bool IsStoredKey(std::int32_t key) { return key > 0 && key != kUnsavedTag; }

// The highest key that a store has given, so that one whose record was rolled back isn't given
// again: a collection may still hold it. The last key of all is left out, or none behind it could
// be given.
class GivenKeys {
 public:
  void Add(std::int32_t key) {
    if (key != std::numeric_limits<std::int32_t>::max()) highest_ = std::max(highest_, key);
  }
  std::int32_t highest() const { return highest_; }
  std::int32_t HighestWith(std::int32_t stored) const { return std::max(highest_, stored); }

 private:
  std::int32_t highest_ = 0;
};

// The keys of one save's new records, for any storage that has HighestKey() (0 where there is
// none), Given() and Holds(key): those behind the highest, or, once another program has used the
// last one, the gaps behind those that were given, and at last all gaps.
template <class Storage>
class NewKeys {
 public:
  explicit NewKeys(Storage& storage)
      : storage_(storage), highest_(storage.HighestKey()), gap_(storage.Given().highest()) {}

  // Throws std::length_error when there is none left.
  std::int32_t Next() {
    if (highest_ != kLast) return highest_ = After(highest_);
    // Keys that were given by this save needn't be held yet: they end with the last one of all.
    do {
      if (gap_ >= kLast - 1) {
        if (isSecondRound_) throw std::length_error("no key is left for another record");
        isSecondRound_ = true;
        gap_ = 0;
      }
      gap_ = After(gap_);
    } while (storage_.Holds(gap_));
    return gap_;
  }

 private:
  static constexpr std::int32_t kLast = std::numeric_limits<std::int32_t>::max();
  static std::int32_t After(std::int32_t key) { return key + 1 == kUnsavedTag ? key + 2 : key + 1; }

  Storage& storage_;
  std::int32_t highest_;
  std::int32_t gap_;
  bool isSecondRound_ = false;
};

inline WideStringView PhotoOf(const CContact& contact) { return contact.photo; }
inline WideStringView PhotoOf(const CCalendar&) { return {}; }

inline std::int32_t& KeyField(CVObject& record) { return record.tag; }
inline std::int32_t& KeyField(CContactGroup& group) { return group.group_id; }

// A record that equals a stored one leaves the picture to that one.
inline void ForgetPhoto(CContact& contact) { contact.photo.clear(); }
inline void ForgetPhoto(CCalendar&) {}
inline void ForgetPhoto(CContactGroup&) {}

// Puts a collection's keys back unless the save is done.
template <class Records>
class KeyGuard {
 public:
  explicit KeyGuard(Records& records) : records_(records) {
    keys_.reserve(static_cast<std::size_t>(records.GetCount()));
    for (std::int32_t i = 0; i < records.GetCount(); ++i) keys_.push_back(KeyField(records[i]));
  }
  KeyGuard(const KeyGuard&) = delete;
  KeyGuard& operator=(const KeyGuard&) = delete;
  ~KeyGuard() {
    for (std::size_t i = 0; i < keys_.size(); ++i)
      KeyField(records_[static_cast<std::int32_t>(i)]) = keys_[i];
  }
  void Keep() {
    keys_.clear();
    for (const std::int32_t index : duplicates_) ForgetPhoto(records_[index]);
  }
  // Takes note of a record that equals a stored one.
  void AddDuplicate(std::int32_t index) { duplicates_.push_back(index); }

 private:
  Records& records_;
  std::vector<std::int32_t> keys_;
  std::vector<std::int32_t> duplicates_;
};

// Runs `save`, which is handed the guard of the collection's keys, and gives its result: below 0
// when it has failed.
template <class Records, class Save>
std::int32_t SaveGuarded(Records& records, Save save) {
  KeyGuard keys(records);
  const std::int32_t result = save(keys);
  if (result >= 0) keys.Keep();
  return result;
}

// Each function gives the number of records stored. Records whose key the store holds are updated
// first, wherever they stand: a new record is left out only for what is still there behind them,
// and no key given to it can be one of theirs.

// Calls update(index) for each record that the store holds, then insert(index) for the others.
template <class Records, class Storage, class Update, class Insert>
void SaveInOrder(Records& records, Storage& storage, Update update, Insert insert) {
  std::vector<std::int32_t> others;
  for (std::int32_t i = 0; i < records.GetCount(); ++i) {
    const std::int32_t key = KeyField(records[i]);
    if (IsStoredKey(key) && storage.Holds(key)) {
      update(i);
    } else {
      others.push_back(i);
    }
  }
  for (const std::int32_t i : others) insert(i);
}

// A record that is new and bears the key that it gets, and its fingerprint where one was wanted.
template <class Record>
struct FreshRecord {
  Record* record;
  Fingerprint print;
};

// What gives a storage's new records their keys: its own FreshKeys(wanted) where it has one.
template <class Storage>
auto KeysFor(Storage& storage, std::size_t wanted) {
  if constexpr (requires { storage.FreshKeys(wanted); }) {
    return storage.FreshKeys(wanted);
  } else {
    return NewKeys<Storage>(storage);
  }
}

// The fingerprints of a collection's records, made when they are first needed.
template <class Records, class Storage>
class PrintsOf {
 public:
  PrintsOf(Records& records, Storage& storage) : records_(records), storage_(storage) {}

  std::span<const Fingerprint> All() {
    if (prints_.empty()) {
      prints_.reserve(static_cast<std::size_t>(records_.GetCount()));
      for (std::int32_t i = 0; i < records_.GetCount(); ++i)
        prints_.push_back(storage_.PrintOf(records_[i]));
    }
    return prints_;
  }
  const Fingerprint& operator[](std::int32_t index) {
    return All()[static_cast<std::size_t>(index)];
  }

 private:
  Records& records_;
  Storage& storage_;
  std::vector<Fingerprint> prints_;
};

// The index of what is stored: a storage's Contents(wanted), or its Contents(wanted, prints), which
// gives at least what holds one of the prints. Null when none is wanted and there is none.
template <class Storage, class Prints>
ContentIndex* ContentsFor(Storage& storage, bool isWanted, Prints& prints) {
  if constexpr (requires { storage.Contents(isWanted, prints); }) {
    return storage.Contents(isWanted, prints);
  } else {
    return storage.Contents(isWanted);
  }
}

// `storage` also has Update(key, record), Insert(fresh records), Contents as above, and
// PrintOf(record), which gives the record's fingerprint; NeedsPrints() tells whether Insert wants
// them.
template <class Records, class Storage>
std::int32_t SaveRecords(Records& records, bool saveFlag, Storage& storage,
                         KeyGuard<Records>& guard) {
  using Record = std::remove_reference_t<decltype(records[0])>;
  PrintsOf prints(records, storage);
  ContentIndex* contents = ContentsFor(storage, !saveFlag, prints);
  auto keys = KeysFor(storage, static_cast<std::size_t>(records.GetCount()));
  const bool needsPrints = contents != nullptr || storage.NeedsPrints();
  // Together, since storages are quicker with many at once.
  std::vector<FreshRecord<Record>> inserted;
  std::int32_t updated = 0;
  const auto update = [&](std::int32_t index) {
    Record& record = records[index];
    storage.Update(record.tag, record);
    if (contents != nullptr) contents->Replace(record.tag, prints[index], PhotoOf(record));
    ++updated;
  };
  const auto insert = [&](std::int32_t index) {
    Record& record = records[index];
    const Fingerprint print = needsPrints ? prints[index] : Fingerprint{};
    const auto stored = saveFlag ? std::nullopt : contents->Find(print, PhotoOf(record));
    if (stored) {
      record.tag = *stored;
      guard.AddDuplicate(index);
      return;
    }
    record.tag = keys.Next();
    if (contents != nullptr) contents->Add(record.tag, print, PhotoOf(record));
    inserted.push_back({&record, print});
  };
  SaveInOrder(records, storage, update, insert);
  storage.Insert(std::span<const FreshRecord<Record>>(inserted));
  return updated + static_cast<std::int32_t>(inserted.size());
}

// `storage` also has Insert(key, name), which gives the key, or that of another program's group of
// the same name that has come in between, Rename(key, name) and Find(name), which gives the group
// of that name in any letter case, or 0.
template <class Storage>
std::int32_t SaveGroups(CContactGroups& groups, Storage& storage) {
  auto keys = KeysFor(storage, 1);
  std::int32_t saved = 0;
  const auto update = [&](std::int32_t index) {
    CContactGroup& group = groups[index];
    const std::int32_t namesake = storage.Find(group.group_name);
    if (namesake != 0 && namesake != group.group_id) {
      group.group_id = namesake;
      return;
    }
    storage.Rename(group.group_id, group.group_name);
    ++saved;
  };
  const auto insert = [&](std::int32_t index) {
    CContactGroup& group = groups[index];
    const std::int32_t namesake = storage.Find(group.group_name);
    if (namesake != 0) {
      group.group_id = namesake;
      return;
    }
    const std::int32_t key = keys.Next();
    group.group_id = storage.Insert(key, group.group_name);
    if (group.group_id == key) ++saved;
  };
  SaveInOrder(groups, storage, update, insert);
  return saved;
}

// `storage` has Count(contact, group) and Insert(links), which throws when a contact or group of
// them isn't stored. It may have Expect(pairs), to find out together what it is asked for then.
template <class Storage>
std::int32_t SaveLinks(const CContactGroupPairs& pairs, Storage& storage) {
  if constexpr (requires { storage.Expect(pairs); }) storage.Expect(pairs);
  std::unordered_map<std::uint64_t, std::int64_t> alreadyThere;
  std::vector<LinkRow> inserted;
  for (std::int32_t i = 0; i < pairs.GetCount(); ++i) {
    const std::int32_t contact = pairs[i].contact_id;
    const std::int32_t group = pairs[i].group_id;
    const std::uint64_t link = std::uint64_t{static_cast<std::uint32_t>(contact)} << 32 |
                               static_cast<std::uint32_t>(group);
    const auto [stored, isFirst] = alreadyThere.try_emplace(link, 0);
    if (isFirst) stored->second = storage.Count(contact, group);
    if (stored->second-- > 0) continue;
    inserted.push_back({contact, group});
  }
  storage.Insert(std::span(inserted));
  return static_cast<std::int32_t>(inserted.size());
}

// Links each contact to the group once.
template <class Storage>
void LinkContacts(const CContacts& contacts, std::int32_t group, Storage& storage) {
  std::unordered_set<std::int32_t> linked;  // records that are equal bear one key
  CContactGroupPairs pairs;
  for (std::int32_t i = 0; i < contacts.GetCount(); ++i) {
    if (!linked.insert(contacts[i].tag).second) continue;
    CContactGroupPair& pair = pairs.AddNew();
    pair.contact_id = contacts[i].tag;
    pair.group_id = group;
  }
  SaveLinks(pairs, storage);
}

inline std::string NoSuchGroup(std::int32_t group) {
  return "there is no group " + std::to_string(group);
}
inline std::string NoSuchLink(std::int32_t contact, std::int32_t group) {
  return "contact " + std::to_string(contact) + " can't be in group " + std::to_string(group) +
         ": one of them isn't stored";
}

}  // namespace pim
