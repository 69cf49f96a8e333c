// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "pim/Export.h"

namespace pim {

// Which of two forms the writers give the few texts that the format's plain form can't carry.
enum class WritingForm : std::uint8_t {
  // The format's own bytes. A blank right behind a soft line break stands at the head of its line,
  // where readers take it for the mark of a folded line and drop it; a line break in a telephone
  // number stands as it is and ends the property.
  ToTheLetter,
  // What is written reads back: such a blank is written =20 (a tab =09), and each line break in a
  // telephone number becomes a blank.
  ReadsBack,
};

// Sets the form for the whole process, all threads: ToTheLetter by default. Like the other choices
// of a host (pim/platform/Host.h) it must not change while any thread writes. Allocates nothing.
PIM_EXPORT void SetWritingForm(WritingForm form) noexcept;
// The form that was set. Any thread may ask. Allocates nothing.
PIM_EXPORT WritingForm GetWritingForm() noexcept;

}  // namespace pim
