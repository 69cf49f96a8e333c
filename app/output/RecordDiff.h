// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pim::app {

// A field that two dumps of a record have otherwise.
struct Difference {
  std::string field;  // "telephones[0].number"
  // As JSON; empty where an entry of a list, or what it is part of, isn't there.
  std::string before;
  std::string after;
};

// Compares two records as RecordJson writes them. An entry that one list lacks doesn't count the
// entries behind it as others too. Linear in the dumps.
std::vector<Difference> DifferencesOf(std::string_view before, std::string_view after);

}  // namespace pim::app
