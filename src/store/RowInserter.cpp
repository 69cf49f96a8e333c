// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/RowInserter.h"

#include "store/SqlText.h"

namespace pim {
namespace {

// To begin and end a bulk costs about as much as so many rows by statements.
constexpr std::size_t kBulkFrom = 48;

std::vector<std::string_view> ColumnsOf(std::string_view key, std::span<const FieldMap> fields) {
  std::vector<std::string_view> columns{key};
  for (const FieldMap& field : fields) columns.push_back(field.column);
  return columns;
}

}  // namespace

RowInserter::RowInserter(Database& db, std::size_t columns, bool hasCondition,
                         const SqlOfRows& sqlOf)
    : columns_(columns),
      hasCondition_(hasCondition),
      one_(db, sqlOf(1)),
      many_(db, sqlOf(kRowsAtOnce)) {}

RowInserter::RowInserter(Database& db, std::span<const FieldMap> references)
    : RowInserter(db, references.size(), true, [&](std::size_t rows) {
        return InsertReferencesSql(kLinkTable, references, rows);
      }) {}

RowInserter::RowInserter(Database& db, std::string_view table, std::string_view key,
                         std::span<const FieldMap> fields)
    : RowInserter(db, table, ColumnsOf(key, fields)) {}

RowInserter::RowInserter(Database& db, std::string_view table,
                         std::vector<std::string_view> columns)
    : RowInserter(db, columns.size(), false,
                  [&](std::size_t rows) { return InsertSql(table, columns, rows); }) {
  bulk_ = db.RowsInto(table, columns);
}

void RowInserter::Start(std::size_t rows) {
  left_ = rows;
  bound_ = 0;
  inserted_ = 0;
  inBulk_ = bulk_ != nullptr && rows >= kBulkFrom;
  if (inBulk_) bulk_->Start();
}

void RowInserter::RunRows(Statement& statement, std::size_t rows) {
  if (hasCondition_) {
    inserted_ += statement.RunChanging();
  } else {
    statement.Run();
    inserted_ += rows;
  }
}

}  // namespace pim
