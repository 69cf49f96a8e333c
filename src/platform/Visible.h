// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace pim {

enum class LineFeeds { Shown, Kept };

// The text as UTF-8 that a terminal shows and doesn't obey: control characters (line feeds as
// told), line and paragraph separators and what changes the direction of writing come out as
// \u001B, with four hexadecimal digits. A lone surrogate becomes U+FFFD.
std::string VisibleUtf8(std::u16string_view text, LineFeeds lineFeeds = LineFeeds::Shown);

}  // namespace pim
