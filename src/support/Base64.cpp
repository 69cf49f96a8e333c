// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "support/Base64.h"

#include <algorithm>

namespace pim {

NarrowString Base64Encode(const char* bytes, std::size_t length) {
  NarrowString text((length + 2) / 3 * 4, '=');
  char* to = text.data();
  const auto byte = [bytes](std::size_t i) -> std::uint32_t {
    return static_cast<unsigned char>(bytes[i]);
  };
  const auto digit = [](std::uint32_t bits, unsigned shift) {
    return kBase64Alphabet[bits >> shift & 63];
  };
  std::size_t i = 0;
  for (; length - i >= 3; i += 3, to += 4) {
    const std::uint32_t bits = byte(i) << 16 | byte(i + 1) << 8 | byte(i + 2);
    to[0] = digit(bits, 18);
    to[1] = digit(bits, 12);
    to[2] = digit(bits, 6);
    to[3] = digit(bits, 0);
  }
  if (i == length) return text;
  const bool two = length - i == 2;
  const std::uint32_t bits = byte(i) << 16 | (two ? byte(i + 1) << 8 : 0);
  to[0] = digit(bits, 18);
  to[1] = digit(bits, 12);
  if (two) to[2] = digit(bits, 6);
  return text;
}

NarrowString FoldBase64(NarrowStringView text, std::int32_t width) {
  const auto step = static_cast<std::size_t>(std::max(width, 0));
  if (text.size() <= step || step == 0) return NarrowString(text).append("\r\n");
  NarrowString folded;
  folded.reserve(text.size() + (text.size() / step + 2) * 3);
  folded.append("\r\n");
  for (std::size_t i = 0; i < text.size(); i += step)
    folded.append(1, ' ').append(text.substr(i, step)).append("\r\n");
  return folded;
}

}  // namespace pim
