// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace pim {

// The steps that the library has taken so far: basic blocks of its own code, and bytes that the C
// library looked at, copied, filled or moved for it. The same work gives the same number.
std::uint64_t WorkSoFar();

}  // namespace pim
