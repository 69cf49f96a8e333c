// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace pim {

// The text with each character brought to one letter case, beyond ASCII too and whatever the
// process's locale is: texts that differ in letter case alone give the same. One unit or character
// at a time, so sharp s and "ss" stay two.
std::u16string FoldLetterCase(std::u16string_view text);

}  // namespace pim
