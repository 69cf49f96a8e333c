// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pim/support/Strings.h"

namespace pim {

// The digits of base64 (RFC 4648) by their value.
inline constexpr NarrowStringView kBase64Alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
static_assert(kBase64Alphabet.size() == 64);

}  // namespace pim
