#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
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
  unsigned EqualTo(char c) const noexcept { return Mask(_mm_cmpeq_epi8(bytes_, _mm_set1_epi8(c))); }
  // Bytes count from 0 to 255.
  unsigned UpTo(char c) const noexcept {
    return Mask(_mm_cmpeq_epi8(_mm_min_epu8(bytes_, _mm_set1_epi8(c)), bytes_));
  }
  unsigned FromHexEighty() const noexcept { return Mask(bytes_); }

 private:
  static unsigned Mask(__m128i bytes) noexcept {
    return static_cast<unsigned>(_mm_movemask_epi8(bytes));
  }

  __m128i bytes_;
#else
  explicit ByteBlock(const char* from) noexcept { std::memcpy(bytes_, from, kSize); }

  void Store(char* to) const noexcept { std::memcpy(to, bytes_, kSize); }
  unsigned EqualTo(char c) const noexcept {
    return Mask([c](char byte) { return byte == c; });
  }
  unsigned UpTo(char c) const noexcept {
    return Mask([c](char byte) {
      return static_cast<unsigned char>(byte) <= static_cast<unsigned char>(c);
    });
  }
  unsigned FromHexEighty() const noexcept {
    return Mask([](char byte) { return static_cast<unsigned char>(byte) >= 0x80; });
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

// The first of two bytes, or `end`.
inline const char* FindEither(const char* from, const char* end, char a, char b) noexcept {
  for (; end - from >= static_cast<std::ptrdiff_t>(ByteBlock::kSize); from += ByteBlock::kSize) {
    const ByteBlock block(from);
    const unsigned mask = block.EqualTo(a) | block.EqualTo(b);
    if (mask != 0) return from + std::countr_zero(mask);
  }
  while (from != end && *from != a && *from != b) ++from;
  return from;
}

}  // namespace pim
