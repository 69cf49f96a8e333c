// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "records/ContentIndex.h"
#include "store/StoreTransactions.h"

namespace pim {

// The contents of stored records of one kind, as far as this process knows them.
class ContentCache final : public TransactionMember {
 public:
  // The index, or null where none is wanted and there is none: what `make` gives then holds
  // everything. `dataVersion` changes when another program has changed the store.
  template <class Make>
  ContentIndex* Get(bool isWanted, std::int64_t dataVersion, Make make) {
    if (dataVersion != dataVersion_) Drop();
    if (!index_ && isWanted) index_ = make();
    dataVersion_ = dataVersion;
    return index_ ? &*index_ : nullptr;
  }
  // For the records from the first key to the last one, which are stored no more.
  void Remove(std::int32_t first, std::int32_t last) {
    // An index that is made behind this holds none of them.
    if (!index_) ++changesOfDropped_;
    for (std::int64_t key = first; index_ && key <= last; ++key)
      index_->Remove(static_cast<std::int32_t>(key));
  }
  void Drop() {
    changesOfDropped_ = Changes() + 1;
    index_.reset();
  }

  void Begun(std::size_t) override { marks_.push_back(Changes()); }
  void CheckCommit(std::size_t) override {}
  void Committed(std::size_t) override { marks_.pop_back(); }
  // Forgets what is no longer so, if anything has changed.
  void RolledBack(std::size_t) noexcept override {
    if (Changes() != marks_.back()) Drop();
    marks_.pop_back();
  }

 private:
  // Grows with each change to the contents, the dropping of all of them included.
  std::size_t Changes() const { return changesOfDropped_ + (index_ ? index_->changes() : 0); }

  std::optional<ContentIndex> index_;
  std::size_t changesOfDropped_ = 0;
  std::int64_t dataVersion_ = 0;
  std::vector<std::size_t> marks_;  // one for each open transaction
};

}  // namespace pim
