// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace pim {

// The two kinds of text, as the standard library's own types: their rules for threads and
// allocation are the standard's.

// Bytes in some charset: UTF-8 where nothing else is said.
using NarrowString = std::string;
using NarrowStringView = std::string_view;
// UTF-16 code units, lone surrogates and NUL included.
using WideString = std::u16string;
using WideStringView = std::u16string_view;

}  // namespace pim
