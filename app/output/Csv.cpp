// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/output/Csv.h"

namespace pim::app {

std::string CsvLine(const std::vector<std::string>& cells) {
  std::string line;
  for (const std::string& cell : cells) {
    if (&cell != cells.data()) line += ',';
    if (cell.find_first_of(",\"\r\n") == std::string::npos) {
      line += cell;
      continue;
    }
    line += '"';
    for (const char c : cell) line.append(c == '"' ? 2 : 1, c);
    line += '"';
  }
  return line.append("\r\n");
}

}  // namespace pim::app
