// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <stdexcept>
#include <type_traits>
#include <utility>

#include "pim/support/RecordMemory.h"

namespace pim {

// A list as records keep it: the first `Inside` entries in the object itself, and all of them in
// one block of record memory when there are more. Most lists of a contact hold one entry or none,
// so a std::vector would be most of its blocks. An entry's address holds until the list grows.
//
// Threads may read a list together, or one thread alone may change it. What copies or adds entries
// throws std::bad_alloc, and std::length_error beyond 2^32 entries; moving and reading allocate
// nothing.
template <class T, std::uint32_t Inside>
class InlineList {
 public:
  static_assert(std::is_nothrow_move_constructible_v<T> && alignof(T) <= alignof(std::uint64_t));
  // As the standard library's containers name them.
  using value_type = T;
  using iterator = T*;
  using const_iterator = const T*;

  InlineList() noexcept = default;
  // Copies all entries; the list that is moved from becomes empty, and addresses of its entries
  // don't hold.
  InlineList(const InlineList& other) : InlineList() {
    for (const T& entry : other) emplace_back(entry);
  }
  InlineList(InlineList&& other) noexcept { Take(other); }
  ~InlineList() { Free(); }

  // Replaces all entries; a list stays as it was when that throws.
  InlineList& operator=(const InlineList& other) {
    if (this != &other) *this = InlineList(other);
    return *this;
  }
  InlineList& operator=(InlineList&& other) noexcept {
    if (this != &other) {
      Free();
      Take(other);
    }
    return *this;
  }

  // Adds an entry made of the arguments, which may lie in the list, and gives it.
  template <class... Arguments>
  T& emplace_back(Arguments&&... arguments) {
    if (size_ == capacity_) return Grow(std::forward<Arguments>(arguments)...);
    T* const entry = std::construct_at(data() + size_, std::forward<Arguments>(arguments)...);
    ++size_;
    return *entry;
  }

  std::size_t size() const noexcept { return size_; }  // in entries
  bool empty() const noexcept { return size_ == 0; }   // whether it has none
  // The entries, one behind the other: from the first to behind the last.
  T* data() noexcept { return IsInside() ? reinterpret_cast<T*>(inside_) : Heap(); }
  const T* data() const noexcept {
    return IsInside() ? reinterpret_cast<const T*>(inside_) : Heap();
  }
  T* begin() noexcept { return data(); }
  T* end() noexcept { return data() + size_; }
  const T* begin() const noexcept { return data(); }
  const T* end() const noexcept { return data() + size_; }
  // The entry of that index, which must be below size().
  T& operator[](std::size_t index) noexcept { return data()[index]; }
  const T& operator[](std::size_t index) const noexcept { return data()[index]; }

  // Entry by entry, in their order.
  friend bool operator==(const InlineList& a, const InlineList& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end());
  }

 private:
  bool IsInside() const noexcept { return capacity_ == Inside; }
  T* Heap() const noexcept {
    void* block = nullptr;
    std::memcpy(&block, inside_, sizeof block);
    return static_cast<T*>(block);
  }

  std::uint32_t NextCapacity() const {
    constexpr std::uint32_t kSmallEntries = sizeof(T) <= 32 ? 4 : 1;
    if (capacity_ > std::numeric_limits<std::uint32_t>::max() / 2)
      throw std::length_error("list too long for a record");
    return std::max(kSmallEntries, 2 * capacity_);
  }

  // The new entry is made first: its arguments may lie in the list.
  template <class... Arguments>
  T& Grow(Arguments&&... arguments) {
    const std::uint32_t capacity = NextCapacity();
    void* const memory = AllocateRecordMemory(capacity * sizeof(T));
    T* const block = static_cast<T*>(memory);
    T* entry = nullptr;
    try {
      entry = std::construct_at(block + size_, std::forward<Arguments>(arguments)...);
    } catch (...) {
      FreeRecordMemory(memory);
      throw;
    }
    std::uninitialized_move_n(data(), size_, block);
    const std::uint32_t size = size_;
    Free();
    std::memcpy(inside_, &memory, sizeof memory);
    capacity_ = capacity;
    size_ = size + 1;
    return *entry;
  }

  void Free() noexcept {
    std::destroy_n(data(), size_);
    if (!IsInside()) FreeRecordMemory(Heap());
    size_ = 0;
    capacity_ = Inside;
  }

  // This list is empty and holds no block.
  void Take(InlineList& other) noexcept {
    if (other.IsInside()) {
      std::uninitialized_move_n(other.data(), other.size_, data());
      size_ = other.size_;
      other.Free();
    } else {
      std::memcpy(inside_, other.inside_, sizeof(void*));
      size_ = std::exchange(other.size_, 0);
      capacity_ = std::exchange(other.capacity_, Inside);
    }
  }

  std::uint32_t size_ = 0;
  std::uint32_t capacity_ = Inside;
  // The entries, or the pointer to their block.
  alignas(Inside == 0
              ? 1
              : alignof(T)) unsigned char inside_[std::max(Inside * sizeof(T), sizeof(void*))];
};

}  // namespace pim
