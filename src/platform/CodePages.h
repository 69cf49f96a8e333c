// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "pim/platform/Encoding.h"

namespace pim {

// Code page numbers as text carries them; 0 is the default page (SetDefaultCodePage, UTF-8). Any
// other number is iconv's CP and the number; a page that the system lacks is converted as UTF-8.
inline constexpr std::uint32_t kCodePageDefault = 0;
inline constexpr std::uint32_t kCodePageShiftJis = 932;  // iconv's CP932, not SHIFT_JIS
inline constexpr std::uint32_t kCodePageUtf8 = 65001;

// Replaces `wide` by `bytes` converted as a whole, NUL bytes included. An invalid sequence becomes
// U+FFFD (for UTF-8, one for each maximal part of a sequence, as Unicode recommends) and the
// conversion goes on behind it. `wide` keeps its memory, so that one work string can serve many
// calls. Gives whether all of it was valid.
bool MultiByteToWide(std::uint32_t codePage, std::string_view bytes, std::u16string& wide);

// The default page, as iconv names it. Good until another one is set.
std::string_view DefaultCodePageName();

// Whether each ASCII character stands for itself in the page, so that a text of them needs no
// conversion.
bool HasAsciiRuns(std::uint32_t codePage);

// Replaces `bytes` by `wide` converted as a whole. A lone surrogate becomes U+FFFD, and a character
// that the page lacks becomes a question mark.
void WideToMultiByte(std::uint32_t codePage, std::u16string_view wide, std::string& bytes);

// Appends `wide` as UTF-8 to `bytes`; a lone surrogate becomes U+FFFD.
void AppendUtf8(std::u16string_view wide, std::string& bytes);

}  // namespace pim
