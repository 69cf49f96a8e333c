// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/Uuid.h"

#include <array>

namespace pim {
namespace {

// The finish of SplitMix64: each bit of the word changes half of the result's.
constexpr std::uint64_t Spread(std::uint64_t word) {
  word = (word ^ (word >> 30)) * 0xBF58476D1CE4E5B9;
  word = (word ^ (word >> 27)) * 0x94D049BB133111EB;
  return word ^ (word >> 31);
}

// The two digits of each byte.
constexpr std::array<char, 512> kDigits = [] {
  constexpr std::string_view kOnes = "0123456789abcdef";
  std::array<char, 512> digits{};
  for (std::size_t byte = 0; byte < 256; ++byte) {
    digits[2 * byte] = kOnes[byte >> 4];
    digits[2 * byte + 1] = kOnes[byte & 15];
  }
  return digits;
}();

}  // namespace

std::string UuidMaker::Text() const {
  constexpr std::uint64_t kVersion = 0x8000;
  constexpr std::uint64_t kVariant = std::uint64_t{2} << 62;
  const std::uint64_t high = Spread(high_ ^ Spread(low_));
  const std::uint64_t low = Spread(low_ + high);
  const std::uint64_t halves[] = {(high & ~std::uint64_t{0xF000}) | kVersion,
                                  (low & ~(std::uint64_t{3} << 62)) | kVariant};
  std::string text(36, '-');
  std::size_t at = 0;
  for (const std::uint64_t half : halves) {
    for (int shift = 56; shift >= 0; shift -= 8) {
      if (at == 8 || at == 13 || at == 18 || at == 23) ++at;
      std::memcpy(text.data() + at, kDigits.data() + 2 * (half >> shift & 0xFF), 2);
      at += 2;
    }
  }
  return text;
}

}  // namespace pim
