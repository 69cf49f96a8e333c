// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace pim {

// The charsets that old files are most likely in, as iconv names them. Of two that are as plausible
// the first one stands first.
inline constexpr const char* kLikelyCharsets[] = {
    "CP1252", "ISO-8859-2", "CP1251", "KOI8-R", "CP932", "EUC-JP", "EUC-KR", "GB18030", "BIG5"};

// How plausible bytes are in the charset of that number: the higher, the more, below 0 for what
// nobody writes. `text` is what the charset makes of them. Bytes of ASCII weigh nothing.
std::int64_t WeightIn(std::size_t charset, std::string_view bytes, std::u16string_view text);

}  // namespace pim
