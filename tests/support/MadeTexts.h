// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <iterator>
#include <string>

#include "pim/support/Strings.h"

namespace pim {

// Texts of what a writer treats each in its own way, in lengths around a line's; always the same.
class MadeTexts {
 public:
  WideString Next() {
    static constexpr WideStringView kParts[] = {
        u" ", u"\t", u"x", u"=", u";", u"\\", u"\u00E9", u"\u3042", u"\U0001F600", u"\n", u"plain"};
    WideString text;
    for (std::size_t left = Number(40); left > 0; --left) {
      const WideStringView part = kParts[Number(std::size(kParts))];
      for (std::size_t times = 1 + Number(Number(9) == 0 ? 70 : 2); times > 0; --times)
        text += part;
    }
    return text;
  }

 private:
  std::size_t Number(std::size_t below) {
    state_ = state_ * 1664525 + 1013904223;  // Numerical Recipes' generator
    return (state_ >> 8) % below;
  }

  std::uint32_t state_ = 1;
};

}  // namespace pim
