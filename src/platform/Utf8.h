// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace pim {

// Replaces `wide` by `bytes`, with U+FFFD for each maximal part of an invalid sequence. `wide`
// keeps its memory. Gives whether all of it was valid.
bool Utf8ToWide(std::string_view bytes, std::u16string& wide);

// Writes the one character that `units` is, a lone surrogate as U+FFFD, and gives the number of its
// bytes.
inline constexpr std::size_t kLongestUtf8 = 4;
std::size_t EncodeUtf8(std::u16string_view units, char* to) noexcept;

// The number of bytes that `wide` takes.
std::size_t Utf8Size(std::u16string_view wide) noexcept;

}  // namespace pim
