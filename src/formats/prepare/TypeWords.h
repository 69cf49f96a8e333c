// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string_view>

#include "pim/support/Strings.h"

namespace pim {

// The types that the readers take of a property of cards.
struct CardTypes {
  std::string_view property;
  bool takesTypeEquals;  // TYPE=WORD counts as WORD alone
  // The code that a label of today's programs means, in the words of vCard 2.1 with blanks between;
  // empty for one that means none.
  NarrowString (*wordsOfLabel)(NarrowStringView label);
  NarrowString (*wordOfCode)(std::uint32_t code);

  // Whether the readers take the word.
  bool Knows(std::string_view word) const;
};

// Null for a property that has none.
const CardTypes* TypesOfProperty(std::string_view name);

}  // namespace pim
