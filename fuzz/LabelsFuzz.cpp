// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdlib>
#include <string>

#include "app/labels/Labels.h"
#include "platform/CodePages.h"

// What is read of a label file, written as lines, is read again the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  std::string bad;
  const auto labels = pim::app::ReadLabels(text, &bad);
  std::string written;
  for (const auto& [key, word] : labels)
    written.append(pim::Utf8FromWide(key)).append(" = ").append(pim::Utf8FromWide(word)) += '\n';
  if (pim::app::ReadLabels(written) != labels) std::abort();
  pim::app::FindLabels(text);
  return 0;
}
