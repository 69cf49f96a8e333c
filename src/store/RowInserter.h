// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "records/RecordMap.h"
#include "store/Statement.h"

namespace pim {

// Inserts rows of one table, several by each statement: to run one costs more than to bind a row.
// A row is a key, of the record or of a list's owner, and the fields of an entry.
class RowInserter {
 public:
  // Gives the statement for so many rows.
  using SqlOfRows = std::function<std::string(std::size_t rows)>;

  RowInserter(Database& db, std::span<const FieldMap> fields, const SqlOfRows& sqlOf);
  // With no condition on the rows.
  RowInserter(Database& db, std::string_view table, std::string_view key,
              std::span<const FieldMap> fields);

  // So many calls of Add follow; the last one inserts what the others have left.
  void Start(std::size_t rows);
  void Add(std::int64_t key, void* entry);
  // The rows since Start that met the statement's condition.
  std::size_t inserted() const { return inserted_; }

 private:
  std::span<const FieldMap> fields_;
  Statement one_;
  Statement many_;
  std::size_t left_ = 0;   // rows to come
  std::size_t bound_ = 0;  // in `many_`, of those that it takes
  std::size_t inserted_ = 0;
};

}  // namespace pim
