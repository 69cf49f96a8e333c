// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "formats/charsets/CharsetGuess.h"
#include "formats/charsets/CharsetLines.h"
#include "pim/platform/Encoding.h"

// The damaged lines of a text stand in order, and what they may be is text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static pim::CharsetGuess guess;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  std::int64_t last = 0;
  pim::CharsetLines lines([&last](const pim::DamagedLine& line) {
    if (line.first <= last || line.last < line.first) std::abort();
    last = line.last;
    for (const auto& reading : guess.Take(line.bytes, true))
      if (reading && pim::Utf8FromWide(pim::WideFromUtf8(*reading)) != *reading) std::abort();
  });
  const std::size_t cut = size == 0 ? 0 : data[0] % size;
  lines.Append(text.substr(0, cut));
  lines.Append(text.substr(cut));
  lines.Finish();
  if (guess.Ranks().size() != pim::kLikelyCount) std::abort();
  return 0;
}
