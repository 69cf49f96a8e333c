// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// An application's own records as a store: the library imports into them, and exports from them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "pim/records/TableStore.h"

// What takes back each change of the transactions that are open, the last one first.
using Undos = std::vector<std::function<void()>>;

// One table; an application with a database asks that one instead of a map.
template <class Row>
class MapTable final : public pim::RowTable<Row> {
 public:
  explicit MapTable(Undos& undos) : undos_(undos) {}

  std::shared_ptr<const Row> Find(std::int32_t key) override {
    const auto found = rows_.find(key);
    return found == rows_.end() ? nullptr : found->second;
  }
  std::shared_ptr<const Row> Next(std::int32_t& key) override {
    const auto next = rows_.upper_bound(key);
    if (next == rows_.end()) return nullptr;
    key = next->first;
    return next->second;
  }
  std::int32_t HighestKey() override { return rows_.empty() ? 0 : rows_.rbegin()->first; }
  void Put(std::int32_t key, std::shared_ptr<const Row> row) override {
    undos_.push_back([this, key, before = Find(key)] { Set(key, before); });
    Set(key, row);
  }
  // The map's own node is kept, so that taking it back needs no memory and can't fail.
  void Erase(std::int32_t key) override {
    const auto kept = std::make_shared<typename Rows::node_type>();
    undos_.push_back([this, kept] { rows_.insert(std::move(*kept)); });
    *kept = rows_.extract(key);
  }

 private:
  using Rows = std::map<std::int32_t, std::shared_ptr<const Row>>;

  void Set(std::int32_t key, const std::shared_ptr<const Row>& row) {
    if (row == nullptr) {
      rows_.erase(key);
    } else {
      rows_[key] = row;
    }
  }

  Rows rows_;
  Undos& undos_;
};

class OwnStore : public pim::TableStore {
 protected:
  pim::RowTable<pim::CContact>& Contacts() override { return contacts_; }
  pim::RowTable<pim::CCalendar>& Items() override { return items_; }
  pim::RowTable<pim::CContactGroup>& Groups() override { return groups_; }
  pim::RowTable<pim::CContactGroupPair>& Links() override { return links_; }

  void BeginChanges() override { marks_.push_back(undos_.size()); }
  void CommitChanges() override {
    marks_.pop_back();
    if (marks_.empty()) undos_.clear();
  }
  void RollBackChanges() noexcept override {
    for (; undos_.size() > marks_.back(); undos_.pop_back()) undos_.back()();
    marks_.pop_back();
  }

 private:
  Undos undos_;
  std::vector<std::size_t> marks_;  // where each transaction that is open begins in them
  MapTable<pim::CContact> contacts_{undos_};
  MapTable<pim::CCalendar> items_{undos_};
  MapTable<pim::CContactGroup> groups_{undos_};
  MapTable<pim::CContactGroupPair> links_{undos_};
};
