// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/Uuid.h"

#include <algorithm>
#include <bit>
#include <cstddef>

namespace pim {
namespace {

// The finish of SplitMix64: each bit of the word changes half of the result's.
constexpr std::uint64_t Spread(std::uint64_t word) {
  word = (word ^ (word >> 30)) * 0xBF58476D1CE4E5B9;
  word = (word ^ (word >> 27)) * 0x94D049BB133111EB;
  return word ^ (word >> 31);
}

// The lowest code unit stands lowest, whatever the machine's order of bytes.
template <class View>
std::uint64_t WordAt(View text, std::size_t at, std::size_t count) {
  constexpr unsigned kBits = 8 * sizeof(typename View::value_type);
  constexpr std::uint64_t kUnit = (std::uint64_t{1} << kBits) - 1;
  std::uint64_t word = 0;
  for (std::size_t i = 0; i < count; ++i)
    word |= (static_cast<std::uint64_t>(text[at + i]) & kUnit) << (kBits * i);
  return word;
}

}  // namespace

void UuidMaker::Mix(std::uint64_t word) {
  high_ = Spread(high_ ^ word);
  low_ = Spread(std::rotl(low_, 23) + word * 0x2545F4914F6CDD1D + high_);
}

void UuidMaker::Add(std::uint64_t number) { Mix(number); }

void UuidMaker::Add(NarrowStringView bytes) {
  constexpr std::size_t kStep = 8;
  for (std::size_t at = 0; at < bytes.size(); at += kStep)
    Mix(WordAt(bytes, at, std::min(kStep, bytes.size() - at)));
  Mix(bytes.size());
}

void UuidMaker::Add(WideStringView text) {
  constexpr std::size_t kStep = 4;
  for (std::size_t at = 0; at < text.size(); at += kStep)
    Mix(WordAt(text, at, std::min(kStep, text.size() - at)));
  Mix(text.size());
}

std::string UuidMaker::Text() const {
  constexpr std::string_view kDigits = "0123456789abcdef";
  constexpr std::uint64_t kVersion = 0x8000;
  constexpr std::uint64_t kVariant = std::uint64_t{2} << 62;
  const std::uint64_t halves[] = {(high_ & ~std::uint64_t{0xF000}) | kVersion,
                                  (low_ & ~(std::uint64_t{3} << 62)) | kVariant};
  std::string text;
  for (const std::uint64_t half : halves) {
    for (int shift = 60; shift >= 0; shift -= 4) {
      if (text.size() == 8 || text.size() == 13 || text.size() == 18 || text.size() == 23)
        text += '-';
      text += kDigits[(half >> shift) & 15];
    }
  }
  return text;
}

}  // namespace pim
