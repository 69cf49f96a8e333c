// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "formats/prepare/Preparer.h"

namespace {

// The text prepared, taken in two pieces.
std::string Prepared(std::string_view text, std::size_t cut) {
  std::string prepared;
  std::int64_t line = 1;
  pim::Preparer preparer(pim::kAllPrepareSteps, {}, [&](const pim::PreparedPiece& piece) {
    if (piece.lines < 0 || piece.firstLine < 1) std::abort();
    line = piece.firstLine + piece.lines;
    prepared += piece.text;
  });
  for (const std::string_view piece : {text.substr(0, cut), text.substr(cut)}) {
    std::ranges::copy(piece, preparer.Room(piece.size() + 1));
    preparer.Took(piece.size());
  }
  preparer.Finish();
  return prepared;
}

}  // namespace

// What is prepared needs no preparing, and doesn't depend on where the text is cut.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const std::string prepared = Prepared(text, text.size());
  if (Prepared(text, size == 0 ? 0 : data[0] % size) != prepared) std::abort();
  if (Prepared(prepared, prepared.size()) != prepared) std::abort();
  return 0;
}
