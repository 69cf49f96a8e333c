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

// Appends YYYYMMDD of a valid date-time.
inline void AppendDate(NarrowString& out, const COleDateTime& date) {
  AppendPadded(out, date.GetYear(), 4);
  AppendPadded(out, date.GetMonth(), 2);
  AppendPadded(out, date.GetDay(), 2);
}

// Whether the date-time has calendar fields: a status may be valid for a number that is no date.
inline bool HasDate(const COleDateTime& date) { return date.GetYear() >= 0; }

}  // namespace pim
