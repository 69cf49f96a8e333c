// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "store/SqlText.h"
#include "store/Statement.h"

namespace pim {

// Two columns of the rows whose first one holds one of many keys, by few statements: each asks for
// as many as it has parameters, or for a range where the keys lie close together.
class AmongRows {
 public:
  AmongRows(Database& db, std::string_view table, std::string_view key, std::string_view other)
      : some_(db, SelectAmongSql(table, key, other, kSoughtAtOnce)),
        range_(db, SelectBetweenSql(table, key, other)) {}

  // `visitor` is handed the statement at each row, perhaps rows of other keys among them.
  template <class Visitor>
  void Visit(std::vector<std::int32_t> keys, Visitor visitor) {
    std::ranges::sort(keys);
    keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
    for (std::span<const std::int32_t> rest = keys; !rest.empty();) {
      const bool isDense = std::int64_t{rest.back()} - rest.front() < 2 * std::ssize(rest);
      Statement& rows = isDense ? range_ : some_;
      rest = isDense ? BindRange(rest) : BindSome(rest);
      for (Rows each(rows); each.Next();) visitor(rows);
    }
  }

 private:
  static constexpr std::size_t kSoughtAtOnce = 256;

  std::span<const std::int32_t> BindRange(std::span<const std::int32_t> keys) {
    range_.Bind(1, std::int64_t{keys.front()});
    range_.Bind(2, std::int64_t{keys.back()});
    return {};
  }
  // The last key stands for those that are too few.
  std::span<const std::int32_t> BindSome(std::span<const std::int32_t> keys) {
    for (std::size_t i = 0; i < kSoughtAtOnce; ++i)
      some_.Bind(static_cast<int>(i) + 1, std::int64_t{keys[std::min(i, keys.size() - 1)]});
    return keys.subspan(std::min(kSoughtAtOnce, keys.size()));
  }

  Statement some_;
  Statement range_;
};

}  // namespace pim
