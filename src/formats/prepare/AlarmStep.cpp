// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/prepare/BlockSteps.h"

namespace pim {

void RaiseAlarm(std::vector<PropertyLine>& lines, PrepareNotes& notes) {
  PropertyLine* display = nullptr;
  for (PropertyLine& line : lines) {
    const std::string_view name = line.head().name;
    if (Trim(line.value()).empty()) continue;
    if (EqualsIgnoringCase(name, "AALARM")) return;
    if (display == nullptr && EqualsIgnoringCase(name, "DALARM")) display = &line;
  }
  if (display == nullptr) return;
  display->text[display->text.find_first_of("Dd")] = 'A';
  notes.Add(PrepareStep::Alarms, display->first, display->last, "DALARM became AALARM");
}

}  // namespace pim
