// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <deque>
#include <string_view>

#include "store/Statement.h"

namespace pim {

// Deletes rows of one table with those of every table that refers to them. Runs inside the caller's
// transaction.
class RecordEraser {
 public:
  RecordEraser(Database& db, std::string_view table);

  // Those from the first key to the last one; gives how many there were.
  std::int32_t Erase(std::int32_t first, std::int32_t last);

 private:
  std::deque<Statement> references_;
  Statement rows_;
};

}  // namespace pim
