// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "records/SaveRecords.h"
#include "store/Database.h"

namespace pim {

// The keys of one table where the engine gives them, so many at a time. Those that a save takes and
// doesn't use wait for the next one.
class KeySequence {
 public:
  KeySequence(Database& db, std::string_view table) : db_(db), table_(table) {}

  // 0 where the engine gives none. `wanted` is how many more will be asked for, this one included.
  std::int32_t Next(std::size_t wanted) {
    if (next_ == taken_.size()) {
      taken_ = db_.TakeKeys(table_, wanted);
      next_ = 0;
    }
    return taken_.empty() ? 0 : taken_[next_++];
  }

 private:
  Database& db_;
  std::string_view table_;
  std::vector<std::int32_t> taken_;
  std::size_t next_ = 0;
};

// The keys of one save's new records: those that the engine gives, else those behind the highest.
template <class Storage>
class FreshKeys {
 public:
  FreshKeys(Storage& storage, KeySequence& sequence, std::size_t wanted)
      : storage_(storage), sequence_(sequence), wanted_(wanted) {}

  // Throws std::length_error when there is none left.
  std::int32_t Next() {
    if (!behindHighest_) {
      const std::int32_t key = sequence_.Next(wanted_);
      if (wanted_ > 1) --wanted_;
      if (key != 0) return key;
      behindHighest_.emplace(storage_);
    }
    return behindHighest_->Next();
  }

 private:
  Storage& storage_;
  KeySequence& sequence_;
  std::size_t wanted_;
  std::optional<NewKeys<Storage>> behindHighest_;
};

}  // namespace pim
