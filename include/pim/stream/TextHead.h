#pragma once

#include <cstdint>
#include <optional>

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

}  // namespace pim
