// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/output/FoldedText.h"

#include <utf8proc.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

#include "support/Ascii.h"

namespace pim::app {
namespace {

struct FreeMemory {
  void operator()(utf8proc_uint8_t* memory) const noexcept { std::free(memory); }
};

}  // namespace

std::string Folded(std::string_view text) {
  const bool isAscii =
      std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
  if (!isAscii) {
    utf8proc_uint8_t* mapped = nullptr;
    const utf8proc_ssize_t size =
        utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                     static_cast<utf8proc_ssize_t>(text.size()), &mapped,
                     static_cast<utf8proc_option_t>(UTF8PROC_DECOMPOSE | UTF8PROC_COMPAT |
                                                    UTF8PROC_CASEFOLD | UTF8PROC_STRIPMARK));
    const std::unique_ptr<utf8proc_uint8_t, FreeMemory> owned(mapped);
    if (size >= 0) return {reinterpret_cast<const char*>(mapped), static_cast<std::size_t>(size)};
  }
  std::string folded(text);
  for (char& c : folded) c = ToLower(c);
  return folded;
}

}  // namespace pim::app
