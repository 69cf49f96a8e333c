// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "formats/prepare/Preparer.h"
#include "pim/support/Strings.h"

namespace pim::app {

// A whole text prepared, with the lines of the one that it was made of.
class PreparedText {
 public:
  PreparedText(NarrowStringView bytes, PrepareStepMask steps, const PrepareObserver& observer);

  NarrowStringView text() const { return text_; }
  // The physical line, from 1, that a line of the text comes from. Of one that was made of several
  // lines with others, it is one of them: the last one for the last of those.
  std::int64_t Original(std::int64_t line) const;

 private:
  // Lines that follow one another.
  struct Row {
    std::int64_t first;  // in the text
    std::int64_t count;
    std::int64_t originalFirst;
    std::int64_t originalCount;
    bool isSame;
  };
  void Take(const PreparedPiece& piece);

  std::string text_;
  std::vector<Row> rows_;
};

}  // namespace pim::app
