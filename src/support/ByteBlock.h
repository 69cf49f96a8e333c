// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bit>
#include <cstddef>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace pim {

// Sixteen bytes that are looked at in one step. A mask has a bit for each of them, the first byte's
// lowest. Without vector instructions the same is worked out byte by byte.
class ByteBlock {
 public:
  static constexpr std::size_t kSize = 16;

#if defined(__SSE2__)
  explicit ByteBlock(const char* from) noexcept
      : bytes_(_mm_loadu_si128(reinterpret_cast<const __m128i*>(from))) {}

  void Store(char* to) const noexcept { _mm_storeu_si128(reinterpret_cast<__m128i*>(to), bytes_); }

  // Which bytes are one of the given.
  template <char... kBytes>
  unsigned AnyOf() const noexcept {
    return Mask(Equal<kBytes...>());
  }
  // Or not above a limit; bytes count from 0 to 255.
  template <char kLimit, char... kBytes>
  unsigned UpToOrAnyOf() const noexcept {
    const __m128i low = _mm_cmpeq_epi8(_mm_min_epu8(bytes_, _mm_set1_epi8(kLimit)), bytes_);
    return Mask(_mm_or_si128(low, Equal<kBytes...>()));
  }

 private:
  template <char... kBytes>
  __m128i Equal() const noexcept {
    __m128i equal = _mm_setzero_si128();
    ((equal = _mm_or_si128(equal, _mm_cmpeq_epi8(bytes_, _mm_set1_epi8(kBytes)))), ...);
    return equal;
  }
  static unsigned Mask(__m128i bytes) noexcept {
    return static_cast<unsigned>(_mm_movemask_epi8(bytes));
  }

  __m128i bytes_;
#else
  explicit ByteBlock(const char* from) noexcept { std::memcpy(bytes_, from, kSize); }

  void Store(char* to) const noexcept { std::memcpy(to, bytes_, kSize); }

  template <char... kBytes>
  unsigned AnyOf() const noexcept {
    return Mask([](char byte) { return ((byte == kBytes) || ...); });
  }
  template <char kLimit, char... kBytes>
  unsigned UpToOrAnyOf() const noexcept {
    return Mask([](char byte) {
      return static_cast<unsigned char>(byte) <= static_cast<unsigned char>(kLimit) ||
             ((byte == kBytes) || ...);
    });
  }

 private:
  template <class Test>
  unsigned Mask(Test test) const noexcept {
    unsigned mask = 0;
    for (std::size_t i = 0; i < kSize; ++i) mask |= static_cast<unsigned>(test(bytes_[i])) << i;
    return mask;
  }

  char bytes_[kSize];
#endif
};

// The first of the given bytes, or `end`.
template <char... kBytes>
const char* FindAnyOf(const char* from, const char* end) noexcept {
  for (; end - from >= static_cast<std::ptrdiff_t>(ByteBlock::kSize); from += ByteBlock::kSize) {
    const unsigned mask = ByteBlock(from).AnyOf<kBytes...>();
    if (mask != 0) return from + std::countr_zero(mask);
  }
  while (from != end && ((*from != kBytes) && ...)) ++from;
  return from;
}

}  // namespace pim
