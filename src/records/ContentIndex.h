// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <unordered_set>

#include "pim/records/RecordStore.h"
#include "pim/support/WideText.h"
#include "records/Fingerprint.h"

namespace pim {

// The stored records by what they hold, for saves that leave out what is there already. A picture
// is read only when the rest of two contacts is equal, and once.
class ContentIndex {
 public:
  // Pictures are compared by what the readers give: `stored` for those of stored records, `sought`
  // for those of records that may be stored already.
  ContentIndex(PictureReader stored, PictureReader sought, const FingerprintKey& key)
      : stored_(std::move(stored)), sought_(std::move(sought)), key_(key) {}

  void Add(std::int32_t key, const Fingerprint& content, WideStringView photo);
  // For a record that was stored before, with what it holds now.
  void Replace(std::int32_t key, const Fingerprint& content, WideStringView photo);
  // For a record that is stored no more.
  void Remove(std::int32_t key);
  // The key of a stored record that holds the same.
  std::optional<std::int32_t> Find(const Fingerprint& content, WideStringView photo);

  // Grows with each Add, Replace and Remove.
  std::size_t changes() const { return changes_; }

 private:
  struct Entry {
    std::int32_t key;
    std::uint32_t generation;  // of the key's content
  };
  struct UnreadEntry {
    Entry entry;
    WideText photo;
  };

  bool IsCurrent(const Entry& entry) const;
  // Whether a record that holds the same but for its picture was ever added.
  bool Knows(const Fingerprint& content) const;
  Fingerprint WithPicture(const Fingerprint& content, const PictureReader& pictures,
                          WideStringView photo) const;

  PictureReader stored_;
  PictureReader sought_;
  FingerprintKey key_;
  std::unordered_multimap<Fingerprint, Entry, FingerprintHash> exact_;
  std::unordered_multimap<Fingerprint, UnreadEntry, FingerprintHash> unread_;
  std::unordered_set<Fingerprint, FingerprintHash> read_;        // whose pictures were read
  std::unordered_map<std::int32_t, std::uint32_t> generations_;  // of keys that were replaced
  std::size_t changes_ = 0;
};

}  // namespace pim
