// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/growth/CountedWork.h"

#include <cstddef>

namespace {

std::uint64_t steps = 0;

}  // namespace

namespace pim {

std::uint64_t WorkSoFar() { return steps; }

}  // namespace pim

// The compiler's call at each basic block, and the linker's names for what it wraps.
extern "C" {

void __sanitizer_cov_trace_pc() { ++steps; }

void* __real_memchr(const void* bytes, int byte, std::size_t count);
void* __wrap_memchr(const void* bytes, int byte, std::size_t count) {
  void* const found = __real_memchr(bytes, byte, count);
  steps += found == nullptr ? count
                            : static_cast<std::size_t>(static_cast<const char*>(found) -
                                                       static_cast<const char*>(bytes));
  return found;
}

void* __real_memcpy(void* to, const void* from, std::size_t count);
void* __wrap_memcpy(void* to, const void* from, std::size_t count) {
  steps += count;
  return __real_memcpy(to, from, count);
}

void* __real_memmove(void* to, const void* from, std::size_t count);
void* __wrap_memmove(void* to, const void* from, std::size_t count) {
  steps += count;
  return __real_memmove(to, from, count);
}

void* __real_memset(void* to, int byte, std::size_t count);
void* __wrap_memset(void* to, int byte, std::size_t count) {
  steps += count;
  return __real_memset(to, byte, count);
}

// What it copies when the block moves, at the most.
void* __real_realloc(void* block, std::size_t size);
void* __wrap_realloc(void* block, std::size_t size) {
  steps += block == nullptr ? 0 : size;
  return __real_realloc(block, size);
}
}
