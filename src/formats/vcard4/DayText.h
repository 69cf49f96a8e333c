// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>

#include "pim/support/DateTime.h"
#include "pim/support/Strings.h"

namespace pim {

// Days and moments in ISO 8601's basic form, 19700131T123456Z, or its extended one,
// 1970-01-31T12:34:56Z.
class DayText {
 public:
  DayText(const CalendarFields& fields, bool isExtended)
      : fields_(fields), isExtended_(isExtended) {}

  DayText& AddDay() {
    return Add(fields_.year, 4).AddMark('-').Add(fields_.month, 2).AddMark('-').Add(fields_.day, 2);
  }
  // As UTC.
  DayText& AddTime() {
    text_[size_++] = 'T';
    Add(fields_.hour, 2).AddMark(':').Add(fields_.minute, 2).AddMark(':').Add(fields_.second, 2);
    text_[size_++] = 'Z';
    return *this;
  }

  // Holds as long as this does.
  NarrowStringView view() const { return {text_.data(), size_}; }

 private:
  DayText& Add(std::int32_t number, std::size_t width) {
    for (std::size_t at = size_ + width; at > size_; number /= 10)
      text_[--at] = static_cast<char>('0' + number % 10);
    size_ += width;
    return *this;
  }
  DayText& AddMark(char mark) {
    if (isExtended_) text_[size_++] = mark;
    return *this;
  }

  const CalendarFields& fields_;
  std::size_t size_ = 0;
  std::array<char, 24> text_;
  const bool isExtended_;
};

}  // namespace pim
