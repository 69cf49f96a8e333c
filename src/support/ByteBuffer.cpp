// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "support/ByteBuffer.h"

#include <cstring>

namespace pim {

void ByteBuffer::Assign(const char* bytes, std::size_t size) {
  AssignUninitialised(size);
  if (size != 0) std::memcpy(data_.get(), bytes, size);
}

void ByteBuffer::AssignUninitialised(std::size_t size) {
  if (capacity_ < size) {
    Clear();
    data_.reset(new char[size]);
    capacity_ = static_cast<std::uint32_t>(size);
  }
  length_ = static_cast<std::uint32_t>(size);
}

void ByteBuffer::Clear() noexcept {
  data_.reset();
  length_ = 0;
  capacity_ = 0;
}

}  // namespace pim
