// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pim/stream/TextHead.h"
#include "support/WordTable.h"

namespace pim {

// The words behind BEGIN and END. The readers also take a record's word when only its first letters
// stand there; the frame of a calendar matters to neither.

constexpr Word ObjectWord(NarrowStringView text, TextObject object) {
  return {text, static_cast<std::uint32_t>(object)};
}

inline constexpr NarrowStringView kBeginWord = "BEGIN";
inline constexpr NarrowStringView kEndWord = "END";
inline constexpr NarrowStringView kVersionWord = "VERSION";

inline constexpr Word kContactObject = ObjectWord("VCARD", TextObject::Contact);
inline constexpr Word kCalendarObject = ObjectWord("VCALENDAR", TextObject::Calendar);
// In the order in which a shortened word is matched: a lone V is a to-do.
inline constexpr Word kItemObjects[] = {
    ObjectWord("VTODO", TextObject::Todo),
    ObjectWord("VEVENT", TextObject::Event),
    ObjectWord("VMEMO", TextObject::Memo),
};
static_assert(TextsDiffer(kItemObjects));

}  // namespace pim
