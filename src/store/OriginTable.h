// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

#include "pim/store/ImportHistory.h"
#include "records/Fingerprint.h"
#include "store/RowInserter.h"
#include "store/Statement.h"

namespace pim {

// Where the records of one kind came from: the table named after theirs. Runs inside the caller's
// transaction.
class OriginTable {
 public:
  struct Row {
    std::int32_t key = 0;  // of the record
    std::int64_t file = 0;
    std::int64_t firstLine = 0;  // 0: not told
    std::int64_t lastLine = 0;
    Fingerprint print;
  };

  OriginTable(Database& db, StoredKind kind);

  // Rows are collected, and stored by Flush.
  void Add(const Row& row) { rows_.push_back(row); }
  void Flush();
  // Lets go what is collected.
  void Forget() { rows_.clear(); }
  // The fingerprint of a record that this import brought, or the file of it that is being read.
  void Change(std::int32_t key, std::int32_t import, std::int64_t file, const Fingerprint& print);
  // Forgets the origins of records that another program has deleted and that bore these keys,
  // which new records get.
  void ForgetKeys(std::int32_t first, std::int32_t last);
  bool HoldsRecord(std::int32_t key);
  // False when no import brought the record.
  bool Find(std::int32_t key, RecordOrigin& origin);
  // The records that an import brought and that are still there, by ascending key.
  struct KeyedPrint {
    std::int32_t key;
    Fingerprint print;
  };
  void VisitOfImport(std::int32_t import, const std::function<void(const KeyedPrint&)>& visitor);

 private:
  struct Names {
    std::string table;
    std::string records;  // their table
    std::string key;      // of both
  };
  OriginTable(Database& db, const Names& names);

  std::vector<Row> rows_;
  RowInserter insert_;
  Statement change_;
  Statement forget_;
  Statement holdsRecord_;
  Statement find_;
  Statement ofImport_;
};

}  // namespace pim
