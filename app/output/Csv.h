// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace pim::app {

// One line of comma-separated values (RFC 4180), its CR LF included: a cell that holds a comma, a
// quote or a line end stands in quotes.
std::string CsvLine(const std::vector<std::string>& cells);

}  // namespace pim::app
