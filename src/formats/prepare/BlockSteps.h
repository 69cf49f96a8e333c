// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>
#include <vector>

#include "formats/prepare/BlockLines.h"
#include "formats/prepare/PrepareNotes.h"

namespace pim {

// The steps that know the properties of one record, each told where it changes something. What asks
// whether they have anything to do looks at the head of a line alone, and may say yes in vain.

// Charsets. A line whose bytes aren't all text in its charset stays as it is.
bool MayNeedCharset(const LineCoding& coding);
void MendCharset(PropertyLine& line, PrepareNotes& notes);

// Whether a line is the VERSION of a card of today.
inline bool SaysModernVersion(const LineHead& head, std::string_view value) {
  return EqualsIgnoringCase(head.name, "VERSION") && (value == "3.0" || value == "4.0");
}
// Whether the last VERSION of a card, inner ones left out, is such a one.
bool IsModernCard(const std::vector<PropertyLine>& lines);

// Prefixes, of cards.
bool MayNeedPrefixOff(const LineHead& head);
void TakePrefixesOff(std::vector<PropertyLine>& lines, PrepareNotes& notes);

// Types, of cards.
bool HasTypeParameter(std::string_view params);
bool MayNeedTypesParted(const LineHead& head);
void PartTypes(PropertyLine& line, PrepareNotes& notes);

// Alarms, of items.
void RaiseAlarm(std::vector<PropertyLine>& lines, PrepareNotes& notes);

}  // namespace pim
