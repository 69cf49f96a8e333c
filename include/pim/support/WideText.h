// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <concepts>
#include <cstdint>
#include <cstring>
#include <ostream>
#include <utility>

#include "pim/Export.h"
#include "pim/support/RecordMemory.h"
#include "pim/support/Strings.h"

namespace pim {

class WideText;

// Any other form of wide text than WideText: a string, a view, a zero-terminated text.
template <class T>
concept WideTextSource = std::convertible_to<T, WideStringView> && !std::same_as<T, WideText>;

// A wide string as records keep it: 16 bytes, with up to six units inside and a longer text in one
// block of record memory of its exact size. A contact has some twenty texts, most of them empty or
// short, and new memory costs an import more than the parsing does: a std::u16string would take 32
// bytes each.
//
// A value like a std::u16string: threads may read one together, or one thread alone may change it.
// What takes a text to copy throws std::bad_alloc, and std::length_error from 2^32 units on;
// moving, reading and clearing allocate nothing.
class PIM_EXPORT WideText {
 public:
  WideText() noexcept = default;
  // Copies the units; the text that is moved from becomes empty.
  template <WideTextSource T>
  WideText(const T& text) {
    Assign(text);
  }
  WideText(const WideText& other) { Assign(other.view()); }
  WideText(WideText&& other) noexcept { Take(other); }
  ~WideText() { Free(); }

  // Replaces the text, which stays as it was when that throws. The source may be part of this one.
  WideText& operator=(const WideText& other) {
    if (this != &other) Assign(other.view());
    return *this;
  }
  WideText& operator=(WideText&& other) noexcept {
    if (this != &other) {
      Free();
      Take(other);
    }
    return *this;
  }
  template <WideTextSource T>
  WideText& operator=(const T& text) {
    Assign(text);
    return *this;
  }

  // Replaces the text by ASCII characters, which nobody checks. Throws as the assignments do.
  void AssignAscii(NarrowStringView text);

  // The units, good until this one changes or goes.
  WideStringView view() const noexcept { return {IsInside() ? inside_ : Heap(), size_}; }
  operator WideStringView() const noexcept { return view(); }
  WideString str() const { return WideString(view()); }  // a copy; throws std::bad_alloc
  std::size_t size() const noexcept { return size_; }    // in UTF-16 units
  bool empty() const noexcept { return size_ == 0; }     // whether it has no unit
  // Makes it empty and gives its memory back.
  void clear() noexcept {
    Free();
    size_ = 0;
  }

  // Unit by unit.
  template <std::convertible_to<WideStringView> T>
  friend bool operator==(const WideText& a, const T& b) {
    return a.view() == static_cast<WideStringView>(b);
  }

 private:
  static constexpr std::size_t kInside = 6;

  bool IsInside() const noexcept { return size_ <= kInside; }
  char16_t* Heap() const noexcept {
    char16_t* block = nullptr;
    std::memcpy(&block, inside_ + 2, sizeof block);
    return block;
  }
  // Replaces the text; `text` may be part of this one. Throws std::length_error from 2^32 units on.
  void Assign(WideStringView text);
  template <class Fill>
  void Replace(std::size_t size, Fill fill);
  void Free() noexcept {
    if (!IsInside()) FreeRecordMemory(Heap());
  }
  void Take(WideText& other) noexcept {
    size_ = std::exchange(other.size_, 0);
    std::memcpy(inside_, other.inside_, sizeof inside_);
  }

  std::uint32_t size_ = 0;
  char16_t inside_[kInside] = {};  // or, from the third unit on, the pointer to the heap block
};
static_assert(sizeof(WideText) == 16);

}  // namespace pim
