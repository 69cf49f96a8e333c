// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "formats/charsets/CharsetWeights.h"
#include "platform/Iconv.h"

namespace pim {

inline constexpr std::size_t kLikelyCount = std::size(kLikelyCharsets);

// Weighs in which of them texts are, by what people write: letters of one script together, small
// letters behind large ones, no signs and no control characters. It never decides.
class CharsetGuess {
 public:
  CharsetGuess();

  // A text in each of the charsets, in UTF-8; nothing where its bytes are none. Where told, it
  // counts for the ranks.
  using Readings = std::array<std::optional<std::string>, kLikelyCount>;
  Readings Take(std::string_view bytes, bool counts);

  // Numbers of the charsets, the most plausible one first; those in which some text has no reading
  // come last.
  std::vector<std::size_t> Ranks() const;

 private:
  std::vector<Iconv> converters_;
  std::array<std::int64_t, kLikelyCount> weights_{};
  std::array<std::int64_t, kLikelyCount> failed_{};
};

}  // namespace pim
