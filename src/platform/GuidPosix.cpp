// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <unistd.h>

#include <string_view>

#include "platform/Guid.h"

namespace pim {

bool CoCreateGuid(GUID& guid) {
  GUID random;
  if (getentropy(random.bytes.data(), random.bytes.size()) != 0) return false;
  random.bytes[6] = static_cast<std::uint8_t>((random.bytes[6] & 0x0F) | 0x40);  // version 4
  random.bytes[8] = static_cast<std::uint8_t>((random.bytes[8] & 0x3F) | 0x80);  // RFC variant
  guid = random;
  return true;
}

std::u16string StringFromGUID2(const GUID& guid) {
  constexpr std::u16string_view kDigits = u"0123456789ABCDEF";
  std::u16string text = u"{";
  for (std::size_t i = 0; i < guid.bytes.size(); ++i) {
    if (i == 4 || i == 6 || i == 8 || i == 10) text += u'-';
    text += kDigits[guid.bytes[i] >> 4U];
    text += kDigits[guid.bytes[i] & 0xFU];
  }
  return text += u'}';
}

}  // namespace pim
