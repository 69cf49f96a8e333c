// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pim/records/TypeCodes.h"
#include "support/WordTable.h"

namespace pim {

// The words of CATEGORIES, compared exactly, letter case included. They stand in the order in which
// a writer looks for the one bit it writes, which isn't the order of the bits; SCHEDULE is only
// read.
inline constexpr Word kCategoryWords[] = {
    {"APPOINTMENT", CATEGORY_APPOINTMENT},
    {"ANNIVERSARY", CATEGORY_ANNIVERSARY},
    {"HOLIDAY", CATEGORY_HOLIDAY},
    {"IMPORTANT", CATEGORY_IMPORTANT},
    {"PRIVATE", CATEGORY_PRIVATE},
    {"MISCELLANEOUS", CATEGORY_MISCELLANEOUS},
    {"MEMO", CATEGORY_MEMO},
    {"BUSINESS", CATEGORY_BUSINESS},
    {"MEETING", CATEGORY_MEETING},
    {"PHONE CALL", CATEGORY_PHONE_CALL},
    {"SPECIAL OCCASION", CATEGORY_SPECIAL_OCCASION},
    {"TRAVEL", CATEGORY_TRAVEL},
    {"VACATION", CATEGORY_VACATION},
    {"BIRTHDAY", CATEGORY_BIRTHDAY},
    {"DATE", CATEGORY_DATE},
    {"EDUCATION", CATEGORY_EDUCATION},
    {"PERSONAL", CATEGORY_PERSONAL},
    {"SICK DAY", CATEGORY_SICK_DAY},
    {"SCHEDULE", CATEGORY_APPOINTMENT},
};
static_assert(TextsDiffer(kCategoryWords));

// The bit of a word, narrow or wide, or 0 for a text that is none.
template <class TextView>
constexpr std::uint32_t CategoryBitOf(TextView text) {
  for (const Word& word : kCategoryWords)
    if (std::ranges::equal(word.text, text)) return word.code;
  return 0;
}

}  // namespace pim
