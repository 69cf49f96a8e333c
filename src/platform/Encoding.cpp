// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/platform/Encoding.h"

#include "platform/CodePages.h"
#include "platform/Utf8.h"

namespace pim {

std::string Utf8FromWide(std::u16string_view wide) {
  std::string bytes;
  AppendUtf8(wide, bytes);
  return bytes;
}

std::u16string WideFromUtf8(std::string_view bytes) {
  std::u16string wide;
  Utf8ToWide(bytes, wide);
  return wide;
}

}  // namespace pim
