// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace pim {

// Narrow text is bytes in some charset; wide text is UTF-16 code units, lone surrogates included.
using NarrowString = std::string;
using NarrowStringView = std::string_view;
using WideString = std::u16string;
using WideStringView = std::u16string_view;

}  // namespace pim
