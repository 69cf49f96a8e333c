// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "formats/FormatLoss.h"
#include "formats/vcard4/GroupBook.h"

namespace pim {

// Replaces `out` by a card of vCard 3.0 or 4.0 as vCard 2.1, in the words that the readers take.
// `card` goes from the line of its BEGIN to that of its END, in UTF-8 with line ends of either
// kind; what it gives ends in CR LF, or is empty for a group's card, which is no contact. What 2.1
// has no place for is told, with its line; it stays in the text where it is short. With the groups
// of its text, which must be complete, the card says which of them it is in. Any bytes give a text.
// Linear in the card and its groups. Throws std::bad_alloc.
void VCardDown(std::string_view card, const TellFormatLoss& tell, std::string& out,
               GroupBook* groups = nullptr);

}  // namespace pim
