// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdlib>
#include <string>

#include "fuzz/ReadItems.h"
#include "vcalendar/VCalendarWriter.h"

// Any bytes at all can be read, and what was read can be written.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const pim::CCalendars items = pim::ReadItemsQuietly({reinterpret_cast<const char*>(data), size});
  for (std::int32_t i = 0; i < items.GetCount(); ++i)
    if (items[i].tag != pim::kUnsavedTag) std::abort();
  pim::VObjectBuffer text;
  pim::WriteVCalendar(items, text);
  const std::string_view written = text.bytes.view();
  if (items.GetCount() > 0 && !written.ends_with("END:VCALENDAR")) std::abort();
  if (pim::ReadItemsQuietly(written).GetCount() != items.GetCount()) std::abort();
  return 0;
}
