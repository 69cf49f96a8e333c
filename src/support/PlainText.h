// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

#include "pim/support/Strings.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace pim {

// Plain characters stand for themselves in quoted-printable text: the printable ones of ASCII but
// the equals sign, and blanks. Nearly all that is written is plain.

template <class Unit>
constexpr bool IsLiteral(Unit c) {
  return c > 32 && c < 127 && c != '=';
}
template <class Unit>
constexpr bool IsPlain(Unit c) {
  return IsLiteral(c) || c == ' ' || c == '\t';
}

// What a run stops at besides characters that aren't plain.
enum class RunStops {
  Nowhere,
  AtSeparators,      // backslashes and semicolons, which the components of a value escape
  AtListSeparators,  // those and commas, which texts of today's forms escape
};

namespace plain_text {

// The units that one step narrows, and the bytes that it may write.
inline constexpr std::size_t kStep = 8;

template <RunStops Stops>
constexpr bool Continues(char16_t unit) {
  if (Stops != RunStops::Nowhere && (unit == '\\' || unit == ';')) return false;
  if (Stops == RunStops::AtListSeparators && unit == ',') return false;
  return IsPlain(unit);
}

// Narrows eight units; false when one of them ends the run.
template <RunStops Stops>
bool NarrowStep(const char16_t* from, char* to) noexcept {
#if defined(__SSE2__)
  // Units above 255 become 255, and those that count as negative 0, neither of which is plain.
  const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
  const __m128i bytes = _mm_packus_epi16(units, units);
  const auto is = [bytes](char c) { return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c)); };
  __m128i stops = _mm_or_si128(is('='), is('\x7F'));
  if constexpr (Stops != RunStops::Nowhere)
    stops = _mm_or_si128(stops, _mm_or_si128(is('\\'), is(';')));
  if constexpr (Stops == RunStops::AtListSeparators) stops = _mm_or_si128(stops, is(','));
  const __m128i printable = _mm_cmpgt_epi8(bytes, _mm_set1_epi8('\x1F'));
  const __m128i plain = _mm_or_si128(_mm_andnot_si128(stops, printable), is('\t'));
  _mm_storel_epi64(reinterpret_cast<__m128i*>(to), bytes);
  return (_mm_movemask_epi8(plain) & 0xFF) == 0xFF;
#else
  bool whole = true;
  for (std::size_t i = 0; i < kStep; ++i) {
    to[i] = static_cast<char>(from[i]);
    whole = whole && Continues<Stops>(from[i]);
  }
  return whole;
#endif
}

}  // namespace plain_text

// Narrows the plain units at the start of `text` and gives their number. `to` has room for all of
// the text, and what stands there behind the run is lost.
template <RunStops Stops = RunStops::Nowhere>
std::size_t NarrowPlain(WideStringView text, char* to) noexcept {
  using plain_text::kStep;
  const std::size_t size = text.size();
  std::size_t done = 0;
  if (size >= kStep) {
    while (size - done >= kStep && plain_text::NarrowStep<Stops>(text.data() + done, to + done))
      done += kStep;
    if (done == size) return done;
    // The last step takes up some units again.
    if (size - done < kStep &&
        plain_text::NarrowStep<Stops>(text.data() + size - kStep, to + size - kStep))
      return size;
  }
  for (; done < size && plain_text::Continues<Stops>(text[done]); ++done)
    to[done] = static_cast<char>(text[done]);
  return done;
}

}  // namespace pim
