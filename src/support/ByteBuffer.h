// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "pim/support/Strings.h"

namespace pim {

// An owned array of bytes.
class ByteBuffer {
 public:
  // Replaces the bytes; memory is kept where it is large enough. `size` fits 31 bits.
  void Assign(const char* bytes, std::size_t size);
  // Makes room for `size` bytes that the caller fills through data(); what was there is lost.
  void AssignUninitialised(std::size_t size);
  void Clear() noexcept;

  char* data() noexcept { return data_.get(); }
  const char* data() const noexcept { return data_.get(); }
  std::uint32_t length() const noexcept { return length_; }
  std::uint32_t capacity() const noexcept { return capacity_; }
  NarrowStringView view() const noexcept { return {data_.get(), length_}; }

 private:
  std::unique_ptr<char[]> data_;  // null when empty
  std::uint32_t length_ = 0;
  std::uint32_t capacity_ = 0;
};

// One vObject text in memory.
struct VObjectBuffer {
  std::uint16_t tag = 0xFFFF;  // low 16 bits of a record's key; 0xFFFF on the way in
  ByteBuffer bytes;
};

}  // namespace pim
