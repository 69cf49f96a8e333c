// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "pim/Export.h"
#include "pim/support/Strings.h"

namespace pim {

// What a BEGIN begins: a record, or the frame around the items of a calendar.
enum class TextObject : std::uint8_t { Contact = 0, Event = 1, Todo = 2, Memo = 3, Calendar = 4 };

enum class TextForm : std::uint8_t { VCard, VCalendar };
constexpr TextForm FormOf(TextObject object) {
  return object == TextObject::Contact ? TextForm::VCard : TextForm::VCalendar;
}

// How a vObject text begins.
struct TextHead {
  TextObject object;
  // What its VERSION says ("2.1", "1.0"), blanks at the ends left out; empty where none stands
  // between its BEGIN and the next BEGIN or END.
  NarrowString version;
};

// The first object that the readers would see begin in the text: like them it takes a record's word
// in any letter case and also when only the first letters of it stand there ("VTod"); V alone is a
// contact. A UTF-8 byte order mark is stepped over. Nothing for a text in which none begins, or
// that is rejected ahead of it. Linear in what stands ahead of the object.
PIM_EXPORT std::optional<TextHead> TextHeadOf(NarrowStringView text);

// A stretch of a text with one object in it, from the line of its BEGIN to that of the next part's,
// since what stands behind an END still lands on its record.
struct TextPart {
  std::size_t offset = 0;  // in the text
  std::size_t size = 0;
  TextObject object;
  bool isFramed = false;  // an item inside the frame of a calendar
};

// The records of a text in their order, of both forms, and the frames that hold no item: reading
// the parts one by one gives the records that reading a text of one form gives. The last part ends
// with the text, or ahead of the line in which a reader rejects it. A UTF-8 byte order mark is
// stepped over. Linear in the text. Throws std::bad_alloc.
PIM_EXPORT std::vector<TextPart> PartsOf(NarrowStringView text);

}  // namespace pim
