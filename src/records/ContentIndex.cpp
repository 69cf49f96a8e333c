// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "records/ContentIndex.h"

namespace pim {

void ContentIndex::Add(std::int32_t key, const Fingerprint& content, WideStringView photo) {
  ++changes_;
  const auto replaced = generations_.find(key);
  const Entry entry{key, replaced == generations_.end() ? 0 : replaced->second};
  if (photo.empty()) {
    exact_.emplace(content, entry);
  } else {
    unread_.emplace(content, UnreadEntry{entry, photo});
  }
}

void ContentIndex::Replace(std::int32_t key, const Fingerprint& content, WideStringView photo) {
  ++generations_[key];
  Add(key, content, photo);
}

void ContentIndex::Remove(std::int32_t key) {
  ++changes_;
  ++generations_[key];
}

std::optional<std::int32_t> ContentIndex::Find(const Fingerprint& content, WideStringView photo) {
  if (!Knows(content)) return std::nullopt;
  for (auto unread = unread_.find(content); unread != unread_.end();
       unread = unread_.find(content)) {
    if (IsCurrent(unread->second.entry)) {
      exact_.emplace(WithPicture(content, stored_, unread->second.photo), unread->second.entry);
      read_.insert(content);
    }
    unread_.erase(unread);
  }
  const Fingerprint sought = WithPicture(content, sought_, photo);
  for (auto found = exact_.find(sought); found != exact_.end(); found = exact_.find(sought)) {
    if (IsCurrent(found->second)) return found->second.key;
    exact_.erase(found);
  }
  return std::nullopt;
}

bool ContentIndex::IsCurrent(const Entry& entry) const {
  const auto replaced = generations_.find(entry.key);
  return entry.generation == (replaced == generations_.end() ? 0 : replaced->second);
}

bool ContentIndex::Knows(const Fingerprint& content) const {
  return exact_.contains(content) || unread_.contains(content) || read_.contains(content);
}

// A picture that isn't there is none.
Fingerprint ContentIndex::WithPicture(const Fingerprint& content, const PictureReader& pictures,
                                      WideStringView photo) const {
  const NarrowString bytes = photo.empty() ? NarrowString{} : pictures(photo);
  if (bytes.empty()) return content;
  return Joined(content, FingerprintOf(bytes, key_));
}

}  // namespace pim
