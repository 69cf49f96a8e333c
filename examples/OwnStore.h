// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// An application's own records as a store: the library imports into them, and exports from them.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "pim/records/TableStore.h"

// One table; an application with a database asks that one instead of a map.
template <class Row>
class MapTable final : public pim::RowTable<Row> {
 public:
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
    rows_[key] = std::move(row);
  }
  void Erase(std::int32_t key) override { rows_.erase(key); }

 private:
  std::map<std::int32_t, std::shared_ptr<const Row>> rows_;
};

class OwnStore final : public pim::TableStore {
 protected:
  pim::RowTable<pim::CContact>& Contacts() override { return tables_.contacts; }
  pim::RowTable<pim::CCalendar>& Items() override { return tables_.items; }
  pim::RowTable<pim::CContactGroup>& Groups() override { return tables_.groups; }
  pim::RowTable<pim::CContactGroupPair>& Links() override { return tables_.links; }

  // Rows are shared, so that a copy of the tables costs a few words a row.
  void BeginChanges() override { before_.push_back(tables_); }
  void CommitChanges() override { before_.pop_back(); }
  void RollBackChanges() noexcept override {
    tables_ = std::move(before_.back());
    before_.pop_back();
  }

 private:
  struct Tables {
    MapTable<pim::CContact> contacts;
    MapTable<pim::CCalendar> items;
    MapTable<pim::CContactGroup> groups;
    MapTable<pim::CContactGroupPair> links;
  };

  Tables tables_;
  std::vector<Tables> before_;  // one for each transaction that is open
};
