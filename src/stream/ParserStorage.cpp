// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "stream/ParserStorage.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace pim {
namespace {

constexpr std::int64_t kBufferStep = 128;

// Resizes an owned block; on failure it stays as it was.
template <class T>
bool Resize(std::unique_ptr<T[], FreeMemory>& block, std::size_t count) {
  void* moved = std::realloc(block.get(), count * sizeof(T));
  if (moved == nullptr) return false;
  static_cast<void>(block.release());  // realloc has freed or moved it
  block.reset(static_cast<T*>(moved));
  return true;
}

}  // namespace

bool GrowBuffer(VObjectParser& parser, std::size_t count) {
  const std::int64_t missing =
      std::int64_t{parser.length} + static_cast<std::int64_t>(count) - parser.capacity;
  const std::int64_t capacity =
      parser.capacity + (missing + kBufferStep - 1) / kBufferStep * kBufferStep;
  const auto wanted = static_cast<std::size_t>(capacity);
  const std::size_t allocated = std::max(wanted, 2 * parser.bufferAllocated);
  if (capacity > std::numeric_limits<std::int32_t>::max() ||
      (wanted > parser.bufferAllocated && !Resize(parser.buffer, allocated))) {
    parser.capacity = 0;
    parser.length = 0;
    return false;
  }
  if (wanted > parser.bufferAllocated) parser.bufferAllocated = allocated;
  parser.capacity = static_cast<std::int32_t>(capacity);
  return true;
}

bool GrowParams(VObjectParser& parser) {
  const std::size_t allocated = std::max<std::size_t>(8, 2 * parser.paramsAllocated);
  if (!Resize(parser.params, allocated)) return false;
  parser.paramsAllocated = allocated;
  return true;
}

void FreeBuffer(VObjectParser& parser) {
  parser.buffer.reset();
  parser.bufferAllocated = 0;
  parser.capacity = 0;
}

}  // namespace pim
