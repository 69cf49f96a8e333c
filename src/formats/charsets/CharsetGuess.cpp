// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "formats/charsets/CharsetGuess.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "pim/platform/Encoding.h"

namespace pim {
namespace {

std::optional<std::string> Read(Iconv& converter, std::string_view bytes) {
  constexpr std::size_t kLongest = 4;  // bytes in UTF-8 for one of any of the charsets
  std::string text(bytes.size() * kLongest + kLongest, '\0');
  converter.Reset();
  const char* from = bytes.data();
  std::size_t fromSize = bytes.size();
  char* to = text.data();
  std::size_t room = text.size();
  if (converter.Convert(from, fromSize, to, room) != Iconv::Outcome::Done ||
      converter.Finish(to, room) != Iconv::Outcome::Done)
    return std::nullopt;
  text.resize(text.size() - room);
  return text;
}

}  // namespace

CharsetGuess::CharsetGuess() {
  converters_.reserve(kLikelyCount);
  for (const char* name : kLikelyCharsets) converters_.emplace_back("UTF-8", name);
}

CharsetGuess::Readings CharsetGuess::Take(std::string_view bytes, bool counts) {
  Readings readings;
  for (std::size_t i = 0; i < kLikelyCount; ++i) {
    if (converters_[i]) readings[i] = Read(converters_[i], bytes);
    if (!counts) continue;
    if (readings[i]) {
      weights_[i] += WeightIn(i, bytes, WideFromUtf8(*readings[i]));
    } else {
      ++failed_[i];
    }
  }
  return readings;
}

std::vector<std::size_t> CharsetGuess::Ranks() const {
  std::vector<std::size_t> ranks(kLikelyCount);
  std::iota(ranks.begin(), ranks.end(), std::size_t{0});
  std::ranges::stable_sort(ranks, [this](std::size_t one, std::size_t other) {
    return std::pair(failed_[one], -weights_[one]) < std::pair(failed_[other], -weights_[other]);
  });
  return ranks;
}

}  // namespace pim
