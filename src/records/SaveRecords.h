#pragma once

#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "pim/records/Calendar.h"
#include "pim/records/ContactGroups.h"
#include "pim/records/Contacts.h"
#include "records/ContentIndex.h"

namespace pim {

// Whether a record's key can be one that a store gave.
constexpr bool IsStoredKey(std::int32_t key) { return key > 0 && key != kUnsavedTag; }

// The keys of one save, for any storage that has HighestKey() (0 where there is none) and
// Holds(key). New records get those behind the highest, or gaps once another program has used the
// last one.
template <class Storage>
class SaveKeys {
 public:
  explicit SaveKeys(Storage& storage)
      : storage_(storage), before_(storage.HighestKey()), highest_(before_) {}

  // Whether the key was in the store before this save: a record that comes with a key which the
  // save has given to another is a new one.
  bool Holds(std::int32_t key) const {
    if (!IsStoredKey(key) || (key > before_ && key <= highest_)) return false;
    return storage_.Holds(key) && !gaps_.contains(key);
  }
  // Throws std::length_error when there is none left.
  std::int32_t Next() {
    if (highest_ != kLast) return highest_ = After(highest_);
    do {
      if (gap_ == kLast) throw std::length_error("no key is left for another record");
      gap_ = After(gap_);
    } while (storage_.Holds(gap_));
    gaps_.insert(gap_);
    return gap_;
  }

 private:
  static constexpr std::int32_t kLast = std::numeric_limits<std::int32_t>::max();
  static std::int32_t After(std::int32_t key) { return key + 1 == kUnsavedTag ? key + 2 : key + 1; }

  Storage& storage_;
  std::int32_t before_;
  std::int32_t highest_;
  std::int32_t gap_ = 0;
  std::unordered_set<std::int32_t> gaps_;
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

// The rules of saving, whatever the storage. Each function gives the number of records stored.

// `storage` also has Insert(key, record), Update(key, record) and Contents(wanted), which gives the
// index of what is stored, or null when none is wanted and there is none.
template <class Records, class Storage>
std::int32_t SaveRecords(Records& records, const RecordMap& map, bool saveFlag, Storage& storage,
                         KeyGuard<Records>& guard) {
  SaveKeys keys(storage);
  ContentIndex* contents = storage.Contents(!saveFlag);
  std::int32_t saved = 0;
  for (std::int32_t i = 0; i < records.GetCount(); ++i) {
    auto& record = records[i];
    const auto print = contents != nullptr ? FingerprintOf(map, &record) : Fingerprint{};
    if (keys.Holds(record.tag)) {
      storage.Update(record.tag, record);
      if (contents != nullptr) contents->Replace(record.tag, print, PhotoOf(record));
      ++saved;
      continue;
    }
    const auto stored = saveFlag ? std::nullopt : contents->Find(print, PhotoOf(record));
    if (stored) {
      record.tag = *stored;
      guard.AddDuplicate(i);
      continue;
    }
    const std::int32_t key = keys.Next();
    storage.Insert(key, record);
    record.tag = key;
    if (contents != nullptr) contents->Add(key, print, PhotoOf(record));
    ++saved;
  }
  return saved;
}

// `storage` also has Insert(key, name), Rename(key, name) and Find(name), which gives the group of
// that name in any letter case, or 0.
template <class Storage>
std::int32_t SaveGroups(CContactGroups& groups, Storage& storage) {
  SaveKeys keys(storage);
  std::int32_t saved = 0;
  for (std::int32_t i = 0; i < groups.GetCount(); ++i) {
    CContactGroup& group = groups[i];
    const bool isStored = keys.Holds(group.group_id);
    const std::int32_t namesake = storage.Find(group.group_name);
    if (namesake != 0 && !(isStored && namesake == group.group_id)) {
      group.group_id = namesake;
      continue;
    }
    if (isStored) {
      storage.Rename(group.group_id, group.group_name);
    } else {
      const std::int32_t key = keys.Next();
      storage.Insert(key, group.group_name);
      group.group_id = key;
    }
    ++saved;
  }
  return saved;
}

// `storage` has Count(contact, group) and Insert(contact, group), which throws when one of the two
// isn't stored.
template <class Storage>
std::int32_t SaveLinks(const CContactGroupPairs& pairs, Storage& storage) {
  std::unordered_map<std::uint64_t, std::int64_t> alreadyThere;
  std::int32_t saved = 0;
  for (std::int32_t i = 0; i < pairs.GetCount(); ++i) {
    const std::int32_t contact = pairs[i].contact_id;
    const std::int32_t group = pairs[i].group_id;
    const std::uint64_t link = std::uint64_t{static_cast<std::uint32_t>(contact)} << 32 |
                               static_cast<std::uint32_t>(group);
    const auto [stored, isFirst] = alreadyThere.try_emplace(link, 0);
    if (isFirst) stored->second = storage.Count(contact, group);
    if (stored->second-- > 0) continue;
    storage.Insert(contact, group);
    ++saved;
  }
  return saved;
}

// Links each contact to the group once.
template <class Storage>
void LinkContacts(const CContacts& contacts, std::int32_t group, Storage& storage) {
  for (std::int32_t i = 0; i < contacts.GetCount(); ++i)
    if (storage.Count(contacts[i].tag, group) == 0) storage.Insert(contacts[i].tag, group);
}

inline std::string NoSuchGroup(std::int32_t group) {
  return "there is no group " + std::to_string(group);
}
inline std::string NoSuchLink(std::int32_t contact, std::int32_t group) {
  return "contact " + std::to_string(contact) + " can't be in group " + std::to_string(group) +
         ": one of them isn't stored";
}

}  // namespace pim
