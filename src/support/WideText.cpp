// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/support/WideText.h"

#include <limits>
#include <stdexcept>

#include "platform/AsciiRuns.h"

namespace pim {

// `fill` writes the new units, and may read the old ones.
template <class Fill>
void WideText::Replace(std::size_t size, Fill fill) {
  if (size > std::numeric_limits<std::uint32_t>::max())
    throw std::length_error("text too long for a record");
  if (size <= kInside) {
    char16_t kept[kInside] = {};
    fill(kept);
    Free();
    std::memcpy(inside_, kept, sizeof inside_);
  } else {
    auto* block = static_cast<char16_t*>(AllocateRecordMemory(size * sizeof(char16_t)));
    fill(block);
    Free();
    std::memcpy(inside_ + 2, &block, sizeof block);
  }
  size_ = static_cast<std::uint32_t>(size);
}

void WideText::Assign(WideStringView text) {
  Replace(text.size(), [text](char16_t* to) {
    if (!text.empty()) std::memcpy(to, text.data(), text.size() * sizeof(char16_t));
  });
}

void WideText::AssignAscii(NarrowStringView text) {
  Replace(text.size(), [text](char16_t* to) { WidenAscii(text, to); });
}

}  // namespace pim
