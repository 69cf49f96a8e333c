// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "records/RecordMap.h"
#include "store/FieldIo.h"
#include "store/Statement.h"

namespace pim {

// Inserts rows of one table, several by each statement, since to run one costs more than to bind a
// row, or in bulk where the engine has a way for many.
class RowInserter {
 public:
  // Gives the statement for so many rows.
  using SqlOfRows = std::function<std::string(std::size_t rows)>;

  // Rows of nothing but references, by statements alone: one that leads nowhere is left out.
  RowInserter(Database& db, std::span<const FieldMap> references);
  // Rows of a key, of the record or of a list's owner, and the fields of an entry.
  RowInserter(Database& db, std::string_view table, std::string_view key,
              std::span<const FieldMap> fields);
  // Rows of any columns.
  RowInserter(Database& db, std::string_view table, std::vector<std::string_view> columns);

  // So many calls of Add follow; the last one inserts what the others have left.
  void Start(std::size_t rows);
  // `bind` is handed the place of the row, and the number of its first column.
  template <class Bind>
  void AddRow(Bind bind) {
    if (inBulk_) {
      bind(static_cast<Parameters&>(*bulk_), 1);
      bulk_->EndRow();
      ++inserted_;
      if (--left_ == 0) bulk_->Finish();
      return;
    }
    const bool isAlone = bound_ == 0 && left_ < kRowsAtOnce;
    Statement& statement = isAlone ? one_ : many_;
    bind(statement.parameters(), static_cast<int>(bound_ * columns_) + 1);
    if (isAlone || ++bound_ == kRowsAtOnce) {
      bound_ = 0;
      RunRows(statement, isAlone ? 1 : kRowsAtOnce);
    }
    --left_;
  }
  void Add(std::int64_t key, std::span<const FieldMap> fields, void* entry) {
    AddRow([&](Parameters& row, int index) { BindRow(row, index, key, fields, entry); });
  }
  // The rows since Start that met the statement's condition.
  std::size_t inserted() const { return inserted_; }

 private:
  static constexpr std::size_t kRowsAtOnce = 32;  // twice as many gain nothing more

  RowInserter(Database& db, std::size_t columns, bool hasCondition, const SqlOfRows& sqlOf);
  void RunRows(Statement& statement, std::size_t rows);

  std::size_t columns_;
  bool hasCondition_;
  bool inBulk_ = false;
  std::unique_ptr<BulkRows> bulk_;
  Statement one_;
  Statement many_;
  std::size_t left_ = 0;   // rows to come
  std::size_t bound_ = 0;  // in `many_`, of those that it takes
  std::size_t inserted_ = 0;
};

}  // namespace pim
