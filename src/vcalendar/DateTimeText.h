#pragma once

#include "pim/support/DateTime.h"
#include "pim/support/Strings.h"

namespace pim {

// Appends the number in decimal digits, with zeros in front up to `width`. Not negative.
inline void AppendPadded(NarrowString& out, std::int32_t number, std::size_t width) {
  const std::size_t start = out.size();
  out.append(width, '0');
  for (std::size_t at = out.size(); at-- > start; number /= 10)
    out[at] = static_cast<char>('0' + number % 10);
}

// Appends YYYYMMDD.
inline void AppendDate(NarrowString& out, const CalendarFields& fields) {
  AppendPadded(out, fields.year, 4);
  AppendPadded(out, fields.month, 2);
  AppendPadded(out, fields.day, 2);
}

}  // namespace pim
