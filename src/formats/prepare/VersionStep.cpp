// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/prepare/BlockSteps.h"

namespace pim {

bool IsModernCard(const std::vector<PropertyLine>& lines) {
  bool isModern = false;
  int depth = 0;
  for (const PropertyLine& line : lines) {
    const LineHead head = line.head();
    const std::string_view value = Trim(line.value());
    if (EqualsIgnoringCase(value, "VCARD")) {
      if (EqualsIgnoringCase(head.name, "BEGIN")) ++depth;
      if (EqualsIgnoringCase(head.name, "END")) --depth;
    }
    if (depth == 1 && EqualsIgnoringCase(head.name, "VERSION"))
      isModern = SaysModernVersion(head, value);
  }
  return isModern;
}

}  // namespace pim
