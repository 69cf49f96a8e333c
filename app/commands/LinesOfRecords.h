// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "pim/stream/TextAccount.h"

namespace pim::app {

// From which physical lines of a text its records came, by the text's account.
class LinesOfRecords {
 public:
  struct Lines {
    std::int64_t first = 0;
    std::int64_t last = 0;
  };

  // Begins with another text.
  void Clear() { lines_.clear(); }
  void Take(const AccountEntry& entry);
  // The lines of a record whose entries have come.
  Lines Of(std::int64_t record) const;

 private:
  std::vector<Lines> lines_;  // by the index of the record
  bool hasEnded_ = false;     // the last one
  int depth_ = 0;             // of objects in it
};

}  // namespace pim::app
