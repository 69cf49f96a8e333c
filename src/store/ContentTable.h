// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "records/Fingerprint.h"
#include "records/RecordMap.h"
#include "store/AmongRows.h"
#include "store/RowInserter.h"
#include "store/Statement.h"

namespace pim {

// What the records of one kind hold, by their fingerprints without pictures, for stores that look
// equal records up there. Runs inside the caller's transaction.
class ContentTable {
 public:
  struct Row {
    std::int32_t key;  // of the record
    Fingerprint print;
  };
  struct Found {
    Row row;
    WideString photo;  // the name of the record's picture; empty for none
  };

  struct Names {
    std::string table;
    std::string records;  // their table
    std::string key;      // of both
  };

  // `photoColumn`, of the records' own table, is empty where they have no pictures.
  ContentTable(Database& db, const RecordMap& map, std::string_view photoColumn);

  void Insert(std::span<const Row> rows);
  void Change(const Row& row);
  // The records that hold one of these.
  std::vector<Found> Find(std::span<const Fingerprint> prints);
  // Forgets those of records that aren't there any more.
  void Sweep() { sweep_.Run(); }
  // Those of the records from the first key to the last one.
  std::map<std::int32_t, Fingerprint> Between(std::int32_t first, std::int32_t last);

 private:
  ContentTable(Database& db, const Names& names, std::string_view photoColumn);

  void AddPhotos(std::span<Found> records);

  bool hasPhotos_;
  RowInserter insert_;
  Statement change_;
  Statement find_;
  AmongRows photos_;
  Statement between_;
  Statement sweep_;
  FieldReader fields_;
};

}  // namespace pim
