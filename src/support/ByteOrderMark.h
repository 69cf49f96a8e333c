// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pim/support/Strings.h"

namespace pim {

enum class ByteOrderMark { Kept, Skipped };

inline constexpr NarrowStringView kUtf8Mark = "\xEF\xBB\xBF";

// Whether a text begins with a UTF-8 byte order mark and holds something else.
constexpr bool HasMark(NarrowStringView text) {
  return text.size() > kUtf8Mark.size() && text.starts_with(kUtf8Mark);
}
constexpr NarrowStringView WithoutMark(NarrowStringView text) {
  return text.substr(HasMark(text) ? kUtf8Mark.size() : 0);
}

}  // namespace pim
