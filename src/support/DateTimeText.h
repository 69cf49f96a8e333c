// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>

#include "pim/support/DateTime.h"
#include "pim/support/Strings.h"

namespace pim {

// Puts together a date-time, field by field, in its fixed columns. The fields of a value that is no
// date are -1, as its getters give them: the text then has a sign and is read as no date again.
class DateTimeText {
 public:
  explicit DateTimeText(const COleDateTime& value) : fields_(value.GetFields().value_or(kNone)) {}

  // YYYYMMDD
  DateTimeText& AddDate() { return Add<4>(fields_.year).Add<2>(fields_.month).Add<2>(fields_.day); }
  // THHMM
  DateTimeText& AddMinutes() { return AddMark('T').Add<2>(fields_.hour).Add<2>(fields_.minute); }
  // SS
  DateTimeText& AddSeconds() { return Add<2>(fields_.second); }
  DateTimeText& Add(NarrowStringView text) {
    for (const char c : text) AddMark(c);
    return *this;
  }

  // Holds as long as this does.
  NarrowStringView view() const { return {text_.data(), size_}; }
  operator NarrowStringView() const { return view(); }

 private:
  static constexpr CalendarFields kNone = {-1, -1, -1, -1, -1, -1};

  // As printf's %0Nd, for the range of a calendar field.
  template <std::size_t Width>
  DateTimeText& Add(std::int32_t number) {
    if (number < 0) text_[size_] = '-';
    std::int32_t left = number < 0 ? -number : number;
    for (std::size_t at = Width; at > (number < 0 ? 1U : 0U); left /= 10)
      text_[size_ + --at] = static_cast<char>('0' + left % 10);
    size_ += Width;
    return *this;
  }
  DateTimeText& AddMark(char c) {
    text_[size_++] = c;
    return *this;
  }

  CalendarFields fields_;
  std::size_t size_ = 0;
  std::array<char, 32> text_;
};

}  // namespace pim
