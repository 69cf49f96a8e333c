// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/store/ImportHistory.h"

namespace pim {

ImportHistory::~ImportHistory() = default;

ImportCounts& ImportCounts::operator+=(const ImportCounts& other) {
  inFile += other.inFile;
  stored += other.stored;
  refused += other.refused;
  otherKind += other.otherKind;
  lines += other.lines;
  linesNotKept += other.linesNotKept;
  return *this;
}

}  // namespace pim
