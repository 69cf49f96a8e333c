// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "pim/Export.h"

namespace pim {

// The two encodings of Unicode that hosts use. Any number of threads may call these at once; they
// throw std::bad_alloc.

// Wide text as UTF-8, for hosts that keep or show bytes; a lone surrogate becomes U+FFFD.
[[nodiscard]] PIM_EXPORT std::string Utf8FromWide(std::u16string_view wide);

// UTF-8 as wide text, with U+FFFD for each maximal part of an invalid sequence, as Unicode
// recommends.
[[nodiscard]] PIM_EXPORT std::u16string WideFromUtf8(std::string_view bytes);

}  // namespace pim
