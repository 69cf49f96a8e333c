// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <iconv.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace pim {

// A charset converter. Not a unique_ptr, because iconv_open says "none" with -1 instead of null.
class Iconv {
 public:
  enum class Outcome { Done, NoRoom, Invalid };

  Iconv(const char* to, const char* from) noexcept : handle_(iconv_open(to, from)) {}
  Iconv(Iconv&& other) noexcept : handle_(std::exchange(other.handle_, None())) {}
  Iconv& operator=(Iconv&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~Iconv() {
    if (*this) iconv_close(handle_);
  }
  explicit operator bool() const noexcept { return handle_ != None(); }

  // Back to the initial state, for a new text.
  void Reset() noexcept { iconv(handle_, nullptr, nullptr, nullptr, nullptr); }

  // Converts from `from` to `to` and moves both on. Invalid tells of an invalid, incomplete or
  // unknown character at `from`.
  Outcome Convert(const char*& from, std::size_t& fromSize, char*& to, std::size_t& room) noexcept {
    char* source = const_cast<char*>(from);  // iconv's signature; it only reads
    const std::size_t result = iconv(handle_, &source, &fromSize, &to, &room);
    from = source;
    if (result != kFailed) return Outcome::Done;
    return errno == E2BIG ? Outcome::NoRoom : Outcome::Invalid;
  }

  // Writes what the converter still holds back and the sequence that ends its shift state.
  Outcome Finish(char*& to, std::size_t& room) noexcept {
    const std::size_t result = iconv(handle_, nullptr, nullptr, &to, &room);
    return result != kFailed ? Outcome::Done : Outcome::NoRoom;
  }

 private:
  static constexpr std::size_t kFailed = static_cast<std::size_t>(-1);
  static iconv_t None() noexcept { return reinterpret_cast<iconv_t>(std::intptr_t{-1}); }

  iconv_t handle_;
};

}  // namespace pim
