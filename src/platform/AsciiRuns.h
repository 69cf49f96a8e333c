// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace pim {

// ASCII is the bulk of vObject text and the same in nearly every charset, so runs of it are
// converted eight characters a step.
inline constexpr std::size_t kAsciiStep = 8;

// Widens eight bytes.
inline void WidenStep(const char* from, char16_t* to) noexcept {
#if defined(__SSE2__)
  const __m128i bytes = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(from));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm_unpacklo_epi8(bytes, _mm_setzero_si128()));
#else
  for (std::size_t i = 0; i < kAsciiStep; ++i) to[i] = static_cast<unsigned char>(from[i]);
#endif
}

// Widens the ASCII characters at the start of `from`, whose size `to` must have room for, and gives
// their number.
inline std::size_t WidenAscii(std::string_view from, char16_t* to) noexcept {
  constexpr std::uint64_t kNotAscii = 0x8080808080808080U;
  std::size_t done = 0;
  for (; from.size() - done >= kAsciiStep; done += kAsciiStep) {
    std::uint64_t word = 0;
    std::memcpy(&word, from.data() + done, kAsciiStep);
    if ((word & kNotAscii) != 0) break;
    WidenStep(from.data() + done, to + done);
  }
  for (; done < from.size() && static_cast<unsigned char>(from[done]) < 0x80; ++done)
    to[done] = static_cast<char16_t>(from[done]);
  return done;
}

// Whether all bytes are ASCII characters and none is NUL.
inline bool IsAsciiText(std::string_view text) noexcept {
  constexpr std::uint64_t kHighBits = 0x8080808080808080U;
  constexpr std::uint64_t kOnes = 0x0101010101010101U;
  std::size_t done = 0;
  for (; text.size() - done >= kAsciiStep; done += kAsciiStep) {
    std::uint64_t word = 0;
    std::memcpy(&word, text.data() + done, kAsciiStep);
    // The lowest zero byte borrows from above, which sets its high bit.
    if (((word | (word - kOnes)) & kHighBits) != 0) return false;
  }
  for (; done < text.size(); ++done)
    if (text[done] == '\0' || static_cast<unsigned char>(text[done]) >= 0x80) return false;
  return true;
}

// The other way.
inline std::size_t NarrowAscii(std::u16string_view from, char* to) noexcept {
  constexpr std::uint64_t kNotAscii = 0xFF80FF80FF80FF80U;
  std::size_t done = 0;
  for (; from.size() - done >= kAsciiStep; done += kAsciiStep) {
    std::array<char16_t, kAsciiStep> step;
    std::memcpy(step.data(), from.data() + done, sizeof step);
    std::array<std::uint64_t, 2> words;
    std::memcpy(words.data(), step.data(), sizeof step);
    if (((words[0] | words[1]) & kNotAscii) != 0) break;
    for (std::size_t i = 0; i < kAsciiStep; ++i) to[done + i] = static_cast<char>(step[i]);
  }
  for (; done < from.size() && from[done] < 0x80; ++done) to[done] = static_cast<char>(from[done]);
  return done;
}

}  // namespace pim
