// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdlib>
#include <vector>

#include "tests/stream/EventsOf.h"

// A text gives the same events wherever it is cut into pieces, and byte by byte, where no line
// stands whole.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
  const std::string_view head = text.substr(0, text.empty() ? 0 : data[0] % text.size());
  const std::string_view rest = text.substr(head.size());
  const std::string events = pim::EventsOf({text});
  if (events != pim::EventsOf({head, rest})) std::abort();
  if (events !=
      pim::EventsOf({head, rest.substr(0, rest.size() / 2), rest.substr(rest.size() / 2)}))
    std::abort();
  std::vector<std::string_view> bytes;
  for (std::size_t i = 0; i < text.size(); ++i) bytes.push_back(text.substr(i, 1));
  if (text.empty()) bytes.emplace_back();
  if (events != pim::EventsOf(bytes)) std::abort();
  return 0;
}
