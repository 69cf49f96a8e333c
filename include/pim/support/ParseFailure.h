// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace pim {

// What an operation that reads a vObject text throws when the text is rejected, by value, after the
// user has been shown a message: an unsigned short that holds kParseFailure. A plain number:
// throwing it touches nothing that threads share.
using ParseFailure = unsigned short;
// The only value that is thrown.
inline constexpr ParseFailure kParseFailure = 0xFFF9;

}  // namespace pim
