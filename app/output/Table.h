// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace pim::app {

// Columns aligned by the width that a terminal shows (East Asian characters take two cells).
class Table {
 public:
  // No column but the last is wider than `widest` cells.
  Table(std::vector<std::string> titles, std::size_t widest);

  // Call for every row, then for every row again with Line. Cells are UTF-8 without line ends.
  void Measure(const std::vector<std::string>& cells);
  std::string TitleLine() const { return Line(titles_); }
  std::string Line(const std::vector<std::string>& cells) const;

 private:
  std::vector<std::string> titles_;
  std::vector<std::size_t> widths_;
  std::size_t widest_;
};

}  // namespace pim::app
