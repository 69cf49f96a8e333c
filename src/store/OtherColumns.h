// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <deque>
#include <functional>

#include "records/RecordMap.h"
#include "store/Statement.h"

namespace pim {

// The columns of records' tables, and the tables of their lists, that no field of a record goes to:
// what stands in them another program has put there. Runs inside the caller's transaction.
class OtherColumns {
 public:
  OtherColumns(Database& db, const RecordMap& map);

  // Tells each record from the first key to the last one that has something there, perhaps more
  // than once.
  void Visit(std::int32_t first, std::int32_t last,
             const std::function<void(std::int32_t key)>& visitor);

 private:
  std::deque<Statement> filled_;
};

}  // namespace pim
