// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

namespace pim {

// Has the system back memory that is about to be written, in one step instead of one at the first
// byte of each page, which takes several times as long. Where it can't, nothing is lost.
void MakePagesReady(void* memory, std::size_t size) noexcept;

}  // namespace pim
