// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/RowInserter.h"

#include "store/FieldIo.h"
#include "store/SqlText.h"

namespace pim {

namespace {

constexpr std::size_t kRowsAtOnce = 32;  // twice as many gain nothing more

}  // namespace

RowInserter::RowInserter(Database& db, std::span<const FieldMap> fields, const SqlOfRows& sqlOf)
    : fields_(fields), one_(db, sqlOf(1)), many_(db, sqlOf(kRowsAtOnce)) {}

RowInserter::RowInserter(Database& db, std::string_view table, std::string_view key,
                         std::span<const FieldMap> fields)
    : RowInserter(db, fields,
                  [&](std::size_t rows) { return InsertSql(table, key, fields, rows); }) {}

void RowInserter::Start(std::size_t rows) {
  left_ = rows;
  bound_ = 0;
  inserted_ = 0;
}

void RowInserter::Add(std::int64_t key, void* entry) {
  if (bound_ == 0 && left_ < kRowsAtOnce) {
    BindRow(one_, 1, key, fields_, entry);
    inserted_ += one_.RunChanging();
  } else {
    const std::size_t column = bound_ * (fields_.size() + 1);
    BindRow(many_, static_cast<int>(column) + 1, key, fields_, entry);
    if (++bound_ == kRowsAtOnce) {
      bound_ = 0;
      inserted_ += many_.RunChanging();
    }
  }
  --left_;
}

}  // namespace pim
