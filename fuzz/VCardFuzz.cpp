// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdlib>

#include "fuzz/ReadCards.h"

// Any bytes at all can be read; every contact has the key of a parse.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const pim::CContacts contacts =
      pim::ReadCardsQuietly({reinterpret_cast<const char*>(data), size});
  for (std::int32_t i = 0; i < contacts.GetCount(); ++i)
    if (contacts[i].tag != pim::kUnsavedTag) std::abort();
  return 0;
}
