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
#include <utility>

#include "pim/records/TableStore.h"
#include "platform/LetterCase.h"
#include "records/SaveRecords.h"

namespace pim {

// A host's tables (TableStore) as the rules of saving meet them.

// Calls visit(key, row) by ascending key until it gives false. The table may change meanwhile.
template <class Row, class Visit>
void VisitRows(RowTable<Row>& table, Visit visit) {
  std::int32_t key = 0;
  while (const std::shared_ptr<const Row> row = table.Next(key))
    if (!visit(key, *row)) return;
}

// Maps reach fields for reading and writing alike.
template <class Record>
void* FieldsOf(const Record& record) {
  return const_cast<Record*>(&record);
}

template <class Record>
std::unique_ptr<Record> Copied(const RecordMap& map, std::int32_t key, const Record& record) {
  auto copy = std::make_unique<Record>();
  CopyRecord(map, FieldsOf(record), copy.get());
  copy->tag = key;
  return copy;
}

// One of the tables as the rules of saving meet it.
template <class Row>
class TableRows {
 public:
  explicit TableRows(RowTable<Row>& table, GivenKeys& given) : table_(table), given_(given) {}

  bool Holds(std::int32_t key) { return table_.Find(key) != nullptr; }
  std::int32_t HighestKey() { return given_.HighestWith(table_.HighestKey()); }
  const GivenKeys& Given() const { return given_; }

 protected:
  void Put(std::int32_t key, std::shared_ptr<const Row> row) {
    table_.Put(key, std::move(row));
    given_.Add(key);
  }
  RowTable<Row>& table() { return table_; }

 private:
  RowTable<Row>& table_;
  GivenKeys& given_;
};

// What is known of the tables' content, until something else than saving changes it.
struct KnownContent {
  std::optional<ContentIndex> contacts;
  std::optional<ContentIndex> items;
  std::optional<std::unordered_map<WideString, std::int32_t>> groups;  // by folded name
  std::optional<std::map<std::pair<std::int32_t, std::int32_t>, std::int64_t>> links;
};

struct GivenTableKeys {
  GivenKeys contacts;
  GivenKeys items;
  GivenKeys groups;
  GivenKeys links;
};

template <class Record>
class StoredRecords : public TableRows<Record> {
 public:
  StoredRecords(RowTable<Record>& table, GivenKeys& given, const RecordMap& map,
                const PictureReader& pictures, const FingerprintKey& key,
                std::optional<ContentIndex>& contents)
      : TableRows<Record>(table, given),
        map_(map),
        pictures_(pictures),
        key_(key),
        contents_(contents) {}

  bool NeedsPrints() const { return false; }
  Fingerprint PrintOf(const Record& record) const {
    return FingerprintOf(map_, FieldsOf(record), key_);
  }
  void Update(std::int32_t key, const Record& record) { this->Put(key, Copied(map_, key, record)); }
  void Insert(std::span<const FreshRecord<Record>> records) {
    for (const auto& [record, print] : records)
      this->Put(record->tag, Copied(map_, record->tag, *record));
  }
  ContentIndex* Contents(bool isWanted) {
    if (!contents_ && isWanted) {
      ContentIndex filled(pictures_, pictures_, key_);
      VisitRows(this->table(), [&](std::int32_t key, const Record& record) {
        filled.Add(key, PrintOf(record), PhotoOf(record));
        return true;
      });
      contents_ = std::move(filled);
    }
    return contents_ ? &*contents_ : nullptr;
  }

 private:
  const RecordMap& map_;
  const PictureReader& pictures_;
  const FingerprintKey& key_;
  std::optional<ContentIndex>& contents_;
};

class StoredGroups : public TableRows<CContactGroup> {
 public:
  StoredGroups(RowTable<CContactGroup>& table, GivenKeys& given, KnownContent& known)
      : TableRows(table, given), known_(known) {}

  std::int32_t Find(WideStringView name) {
    const auto& names = Names();
    const auto found = names.find(FoldLetterCase(name));
    return found == names.end() ? 0 : found->second;
  }
  void Insert(std::int32_t key, WideStringView name) {
    auto group = std::make_shared<CContactGroup>();
    group->group_id = key;
    group->group_name = name;
    Put(key, std::move(group));
    Names()[FoldLetterCase(name)] = key;
  }
  void Rename(std::int32_t key, WideStringView name) {
    Names().erase(FoldLetterCase(table().Find(key)->group_name));
    Insert(key, name);
  }

 private:
  std::unordered_map<WideString, std::int32_t>& Names() {
    if (!known_.groups) {
      std::unordered_map<WideString, std::int32_t> names;
      VisitRows(table(), [&](std::int32_t key, const CContactGroup& group) {
        names[FoldLetterCase(group.group_name)] = key;
        return true;
      });
      known_.groups = std::move(names);
    }
    return *known_.groups;
  }

  KnownContent& known_;
};

class StoredLinks : public TableRows<CContactGroupPair> {
 public:
  StoredLinks(RowTable<CContactGroupPair>& table, GivenKeys& given, RowTable<CContact>& contacts,
              RowTable<CContactGroup>& groups, KnownContent& known)
      : TableRows(table, given), contacts_(contacts), groups_(groups), known_(known) {}

  std::int64_t Count(std::int32_t contact, std::int32_t group) {
    if (!known_.links) {
      known_.links.emplace();
      VisitRows(table(), [&](std::int32_t, const CContactGroupPair& link) {
        ++(*known_.links)[{link.contact_id, link.group_id}];
        return true;
      });
    }
    const auto found = known_.links->find({contact, group});
    return found == known_.links->end() ? 0 : found->second;
  }
  void Insert(std::span<const LinkRow> links) {
    NewKeys keys(*this);
    for (const auto& [contact, group] : links) {
      if (contacts_.Find(contact) == nullptr || groups_.Find(group) == nullptr)
        throw std::runtime_error(NoSuchLink(contact, group));
      auto link = std::make_shared<CContactGroupPair>();
      link->contact_id = contact;
      link->group_id = group;
      Put(keys.Next(), std::move(link));
      if (known_.links) ++(*known_.links)[{contact, group}];
    }
  }

 private:
  RowTable<CContact>& contacts_;
  RowTable<CContactGroup>& groups_;
  KnownContent& known_;
};

}  // namespace pim
