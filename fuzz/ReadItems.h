// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "pim/platform/Host.h"
#include "pim/support/ParseFailure.h"
#include "vcalendar/VCalendarReader.h"

namespace pim {

// Reads a text as an import does, but shows no message.
inline CCalendars ReadItemsQuietly(std::string_view text) {
  static const bool quiet = [] {
    SetMessageSink([](std::u16string_view) {});
    return true;
  }();
  static_cast<void>(quiet);
  CCalendars items;
  VObjectBuffer data;
  data.bytes.Assign(text.data(), text.size());
  try {
    ParseVCalendar(items, data);
  } catch (ParseFailure) {
    return items;  // what was read until then counts
  }
  return items;
}

}  // namespace pim
