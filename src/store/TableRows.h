// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "pim/records/TableStore.h"
#include "platform/LetterCase.h"
#include "records/SaveRecords.h"
#include "store/LinkIndex.h"
#include "store/NamedPictures.h"

namespace pim {

// A host's tables (TableStore) as the rules of saving meet them.

// The row of that key, or null. Tables aren't asked for keys that no store gives.
template <class Row>
std::shared_ptr<const Row> FindRow(RowTable<Row>& table, std::int32_t key) {
  return IsStoredKey(key) ? table.Find(key) : nullptr;
}

// The row with the lowest key above `key`, which becomes that key; or null when there is none.
template <class Row>
std::shared_ptr<const Row> NextRow(RowTable<Row>& table, std::int32_t& key) {
  const std::int32_t before = key;
  std::shared_ptr<const Row> row = table.Next(key);
  if (row != nullptr && (key <= before || !IsStoredKey(key))) {
    throw std::runtime_error("a row has the key " + std::to_string(key) + " behind the key " +
                             std::to_string(before) + ", where none can have it");
  }
  return row;
}

// Calls visit(key, row) for each row by ascending key.
template <class Row, class Visit>
void VisitRows(RowTable<Row>& table, Visit visit) {
  std::int32_t key = 0;
  while (const std::shared_ptr<const Row> row = NextRow(table, key)) visit(key, *row);
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

  bool Holds(std::int32_t key) { return FindRow(table_, key) != nullptr; }
  std::int32_t HighestKey() { return given_.HighestWith(table_.HighestKey()); }
  const GivenKeys& Given() const { return given_; }

 protected:
  void Put(std::int32_t key, std::shared_ptr<const Row> row) {
    table_.Put(key, std::move(row));
    given_.Add(key);
  }
  void Erase(std::int32_t key) {
    table_.Erase(key);
    given_.Add(key);  // so that it isn't given again
  }
  RowTable<Row>& table() { return table_; }

 private:
  RowTable<Row>& table_;
  GivenKeys& given_;
};

// What is known of the tables' content, until something else than the store changes it.
struct KnownRecords {
  std::optional<ContentIndex> contents;
  std::optional<NamedPictures> pictures;
};
struct KnownContent {
  KnownRecords contacts;
  KnownRecords items;
  // Names in one letter case, with the keys: a host's own groups may share one.
  std::optional<std::set<std::pair<WideString, std::int32_t>>> groups;
  std::optional<LinkIndex<std::int32_t>> links;
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
                const PictureReader& reader, const FingerprintKey& key, KnownRecords& known)
      : TableRows<Record>(table, given), map_(map), reader_(reader), key_(key), known_(known) {}

  bool NeedsPrints() const { return false; }
  Fingerprint PrintOf(const Record& record) const {
    return FingerprintOf(map_, FieldsOf(record), key_);
  }
  void Update(std::int32_t key, const Record& record) {
    if (known_.pictures) known_.pictures->Remove(PhotoOf(*this->table().Find(key)));
    Store(key, record);
  }
  void Insert(std::span<const FreshRecord<Record>> records) {
    for (const auto& [record, print] : records) Store(record->tag, *record);
  }
  // The records that are there of those with the keys.
  std::map<std::int32_t, std::shared_ptr<const Record>> Held(std::span<const std::int32_t> keys) {
    std::map<std::int32_t, std::shared_ptr<const Record>> held;
    for (const std::int32_t key : keys)
      if (auto record = FindRow(this->table(), key)) held.emplace(key, std::move(record));
    return held;
  }
  void Erase(std::int32_t key, const Record& record) {
    TableRows<Record>::Erase(key);
    if (known_.contents) known_.contents->Remove(key);
    if (known_.pictures) known_.pictures->Remove(PhotoOf(record));
  }
  ContentIndex* Contents(bool isWanted) {
    if (!known_.contents && isWanted) {
      ContentIndex filled(reader_, reader_, key_);
      VisitRows(this->table(), [&](std::int32_t key, const Record& record) {
        filled.Add(key, PrintOf(record), PhotoOf(record));
      });
      known_.contents = std::move(filled);
    }
    return known_.contents ? &*known_.contents : nullptr;
  }
  // Those of the pictures' names, one for each of some records, that no other record has.
  std::vector<WideString> PicturesOfNoOther(const std::vector<WideString>& names) {
    if (names.empty()) return {};
    if (!known_.pictures) {
      NamedPictures all;
      VisitRows(this->table(),
                [&](std::int32_t, const Record& record) { all.Add(PhotoOf(record)); });
      known_.pictures = std::move(all);
    }
    return known_.pictures->OfNoOther(names);
  }

 private:
  void Store(std::int32_t key, const Record& record) {
    this->Put(key, Copied(map_, key, record));
    if (known_.pictures) known_.pictures->Add(PhotoOf(record));
  }

  const RecordMap& map_;
  const PictureReader& reader_;
  const FingerprintKey& key_;
  KnownRecords& known_;
};

class StoredGroups : public TableRows<CContactGroup> {
 public:
  StoredGroups(RowTable<CContactGroup>& table, GivenKeys& given, KnownContent& known)
      : TableRows(table, given), known_(known) {}

  // The lowest key where several have the name.
  std::int32_t Find(WideStringView name) {
    const WideString folded = FoldLetterCase(name);
    const auto found = Names().lower_bound({folded, 0});
    return found == Names().end() || found->first != folded ? 0 : found->second;
  }
  std::int32_t Insert(std::int32_t key, WideStringView name) {
    auto group = std::make_shared<CContactGroup>();
    group->group_id = key;
    group->group_name = name;
    Put(key, std::move(group));
    Names().emplace(FoldLetterCase(name), key);
    return key;
  }
  void Rename(std::int32_t key, WideStringView name) {
    Names().erase({FoldLetterCase(table().Find(key)->group_name), key});
    Insert(key, name);
  }

 private:
  std::set<std::pair<WideString, std::int32_t>>& Names() {
    if (!known_.groups) {
      std::set<std::pair<WideString, std::int32_t>> names;
      VisitRows(table(), [&](std::int32_t key, const CContactGroup& group) {
        names.emplace(FoldLetterCase(group.group_name), key);
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
    return Index().Count(contact, group);
  }
  void Insert(std::span<const LinkRow> links) {
    NewKeys keys(*this);
    for (const auto& [contact, group] : links) {
      if (FindRow(contacts_, contact) == nullptr || FindRow(groups_, group) == nullptr)
        throw std::runtime_error(NoSuchLink(contact, group));
      auto link = std::make_shared<CContactGroupPair>();
      link->contact_id = contact;
      link->group_id = group;
      const std::int32_t key = keys.Next();
      Put(key, std::move(link));
      if (known_.links) known_.links->Add({contact, group, key});
    }
  }
  void EraseOf(std::int32_t contact) {
    for (const auto& link : Index().Of(contact)) {
      Erase(link.number);
      known_.links->Remove(link);
    }
  }

 private:
  LinkIndex<std::int32_t>& Index() {
    if (!known_.links) {
      LinkIndex<std::int32_t> index;
      VisitRows(table(), [&](std::int32_t key, const CContactGroupPair& link) {
        index.Add({link.contact_id, link.group_id, key});
      });
      known_.links = std::move(index);
    }
    return *known_.links;
  }

  RowTable<CContact>& contacts_;
  RowTable<CContactGroup>& groups_;
  KnownContent& known_;
};

}  // namespace pim
