// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <utility>
#include <vector>

namespace pim {

// An ordered collection that owns its records. A record's address stays the same while it is in a
// collection. Indexes run from 0 and must lie below the count.
//
// One thread at a time may change a collection or a record in it; threads may read it together.
// What adds a record throws std::bad_alloc.
template <class Record>
class Collection {
 public:
  Collection() = default;
  Collection(const Collection&) = delete;
  Collection(Collection&&) noexcept = default;
  Collection& operator=(const Collection&) = delete;
  Collection& operator=(Collection&&) noexcept = default;
  ~Collection() = default;

  // Adds an empty record as the last one, and gives it.
  Record& AddNew() { return *records_.emplace_back(std::make_unique<Record>()); }
  // Takes over a record of another collection, as the last one.
  Record& Add(std::unique_ptr<Record> record) { return *records_.emplace_back(std::move(record)); }
  // Gives up the last record; the collection must not be empty.
  std::unique_ptr<Record> TakeLast() {
    std::unique_ptr<Record> last = std::move(records_.back());
    records_.pop_back();
    return last;
  }

  // The number of records.
  std::int32_t GetCount() const { return static_cast<std::int32_t>(records_.size()); }
  // The record of that index, which isn't checked.
  Record& GetAt(std::int32_t index) { return *records_[static_cast<std::size_t>(index)]; }
  const Record& GetAt(std::int32_t index) const {
    return *records_[static_cast<std::size_t>(index)];
  }
  Record& operator[](std::int32_t index) { return GetAt(index); }
  const Record& operator[](std::int32_t index) const { return GetAt(index); }

  // The index of that very record, or -1.
  std::int32_t Find(const Record* record) const {
    for (std::size_t i = 0; i < records_.size(); ++i)
      if (records_[i].get() == record) return static_cast<std::int32_t>(i);
    return -1;
  }
  // Frees the record and closes the gap. An index or record that isn't here changes nothing.
  void Delete(std::int32_t index) {
    if (index >= 0 && index < GetCount()) records_.erase(records_.begin() + index);
  }
  void Delete(const Record* record) { Delete(Find(record)); }
  // Frees all records.
  void DeleteAll() { records_.clear(); }
  // Frees the records for which `condition` holds, in linear time.
  template <class Condition>
  void DeleteIf(Condition condition) {
    std::erase_if(records_, [&](const auto& record) { return condition(*record); });
  }

 private:
  std::vector<std::unique_ptr<Record>> records_;
};

}  // namespace pim
