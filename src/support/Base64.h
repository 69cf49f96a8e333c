// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

#include "pim/support/Strings.h"

namespace pim {

// The digits of base64 (RFC 4648) by their value.
inline constexpr NarrowStringView kBase64Alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
static_assert(kBase64Alphabet.size() == 64);

// Base64 (RFC 4648) with padding and without line breaks.
NarrowString Base64Encode(const char* bytes, std::size_t length);

// The width of a property's lines of base64, without the leading blank.
inline constexpr std::int32_t kBase64LineWidth = 72;

// The base64 text as a property's value: on the property's line up to `width` characters, else on
// lines of their own of that width behind a blank. Ends in CR LF, which leaves an empty line behind
// the property and so ends the value for readers.
NarrowString FoldBase64(NarrowStringView text, std::int32_t width);

}  // namespace pim
