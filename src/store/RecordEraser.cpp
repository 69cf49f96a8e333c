// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/RecordEraser.h"

#include "records/StoreLayout.h"
#include "store/SqlText.h"

namespace pim {

RecordEraser::RecordEraser(Database& db, std::string_view table)
    : rows_(db, DeleteRangeSql(table, KeyOf(StoreTable(table)))) {
  for (const TableLayout& other : db.Tables()) {
    for (const Column& column : other.Columns()) {
      if (RefersToOther(column.key) && OwnerOf(column) == table)
        references_.emplace_back(db, DeleteRangeSql(other.name, column.name));
    }
  }
}

std::int32_t RecordEraser::Erase(std::int32_t first, std::int32_t last) {
  const auto bound = [&](Statement& statement) -> Statement& {
    statement.Bind(1, std::int64_t{first});
    statement.Bind(2, std::int64_t{last});
    return statement;
  };
  const std::size_t erased = bound(rows_).RunChanging();
  if (erased > 0)
    for (Statement& rows : references_) bound(rows).Run();
  return static_cast<std::int32_t>(erased);
}

}  // namespace pim
