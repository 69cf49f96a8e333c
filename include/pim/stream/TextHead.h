// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "pim/Export.h"
#include "pim/support/Strings.h"

namespace pim {

// What is in a text, without reading its records. Any number of threads may look into texts at
// once, the same one too: nothing is shared and nothing is kept.

// What a BEGIN begins: a record, or the frame around the items of a calendar.
enum class TextObject : std::uint8_t {
  Contact = 0,   // VCARD
  Event = 1,     // VEVENT
  Todo = 2,      // VTODO
  Memo = 3,      // VMEMO
  Calendar = 4,  // VCALENDAR, the frame
};

// The two forms of vObject text.
enum class TextForm : std::uint8_t {
  VCard,      // 2.1
  VCalendar,  // 1.0
};
// The form that the object belongs to.
constexpr TextForm FormOf(TextObject object) {
  return object == TextObject::Contact ? TextForm::VCard : TextForm::VCalendar;
}

// How a vObject text begins.
struct TextHead {
  TextObject object;  // the first one
  // What its VERSION says ("2.1", "1.0"), blanks at the ends left out; empty where none stands
  // between its BEGIN and the next BEGIN or END.
  NarrowString version;
};

// The first object that the readers would see begin in the text: like them it takes a record's word
// in any letter case and also when only the first letters of it stand there ("VTod"); V alone is a
// contact. A UTF-8 byte order mark is stepped over. Nothing for a text in which none begins, or
// that is rejected ahead of it, or for whose lines there is no memory. Linear in what stands ahead
// of the object.
PIM_EXPORT std::optional<TextHead> TextHeadOf(NarrowStringView text);

// A stretch of a text with one object in it, from the line of its BEGIN to that of the next part's,
// since what stands behind an END still lands on its record.
struct TextPart {
  std::size_t offset = 0;  // in the text, in bytes
  std::size_t size = 0;    // in bytes
  TextObject object;       // what begins there
  bool isFramed = false;   // an item inside the frame of a calendar
};

// The records of a text in their order, of both forms, and the frames that hold no item: reading
// the parts one by one gives the records that reading a text of one form gives. The last part ends
// with the text, or ahead of the line in which a reader rejects it. A UTF-8 byte order mark is
// stepped over. Linear in the text. Throws std::bad_alloc.
PIM_EXPORT std::vector<TextPart> PartsOf(NarrowStringView text);

}  // namespace pim
