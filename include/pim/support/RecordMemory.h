// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

#include "pim/Export.h"

namespace pim {

// Memory for records, their texts and their lists. An import makes some twenty such blocks a
// contact, most of them smaller than the general allocator's own overhead pays for, and frees them
// together: so they are cut one behind the other from chunks of 64 KiB, and a chunk is freed with
// its last block. One small record that is kept so keeps a chunk.
//
// Each thread cuts from a chunk of its own, without a lock. Any thread may free what another has
// allocated, at any time; a chunk is given back by whoever frees its last block.

// A block of `size` bytes, aligned to 8, as any record needs it. Throws std::bad_alloc.
PIM_EXPORT void* AllocateRecordMemory(std::size_t size);
// Frees such a block; null is none.
PIM_EXPORT void FreeRecordMemory(void* block) noexcept;

}  // namespace pim
