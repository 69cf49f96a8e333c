// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

#include "platform/Pages.h"

namespace pim {

void MakePagesReady([[maybe_unused]] void* memory, [[maybe_unused]] std::size_t size) noexcept {
#if defined(MADV_POPULATE_WRITE)  // Linux 5.14
  static const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
  const auto start = reinterpret_cast<std::uintptr_t>(memory);
  const std::uintptr_t first = (start + page - 1) / page * page;
  const std::uintptr_t end = (start + size) / page * page;
  if (first < end) madvise(reinterpret_cast<void*>(first), end - first, MADV_POPULATE_WRITE);
#endif
}

}  // namespace pim
