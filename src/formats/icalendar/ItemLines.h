// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <iterator>
#include <string_view>
#include <vector>

#include "formats/FormatLoss.h"
#include "formats/icalendar/AlarmDown.h"
#include "formats/icalendar/ContentLines.h"

namespace pim {

// The properties that an item of iCalendar 2.0 gives to one of vCalendar 1.0.
enum ItemProperty : std::uint8_t {
  ITEM_SUMMARY,
  ITEM_DESCRIPTION,
  ITEM_LOCATION,
  ITEM_CREATED,
  ITEM_MODIFIED,
  ITEM_OWN_MODIFIED,
  ITEM_START,
  ITEM_END,
  ITEM_DUE,
  ITEM_DURATION,
  ITEM_COMPLETED,
  ITEM_RULE,
  ITEM_CLASS,
  ITEM_STATUS,
  ITEM_PRIORITY,
  ITEM_COLOR,
  ITEM_OWN_COLOR,
  ITEM_HOLIDAY,
  ITEM_OWN_START,
  ITEM_OWN_END,
  ITEM_OWN_DUE,
  ITEM_OWN_COMPLETED,
  ITEM_OWN_LOCATION,
  ITEM_OWN_PRIORITY,
  ITEM_OWN_STATUS,
  ITEM_OWN_RULE,
  ITEM_OWN_EXCEPTION,
  ITEM_OWN_ALARM,
  ITEM_OWN_ALARM_FORMAT,
  ITEM_OWN_OFFSET,
  ITEM_OWN_DAYLIGHT,
  ITEM_PROPERTIES,
};

// An item's properties, sorted out.
struct ItemLines {
  // Those that 1.0 has no place for, and what stands for a second time, are told.
  ItemLines(const std::vector<ContentLine>& lines, const TellFormatLoss& tell);

  std::array<const ContentLine*, ITEM_PROPERTIES> single{};
  std::vector<const ContentLine*> categories;
  std::vector<const ContentLine*> exceptions;
  std::vector<const ContentLine*> descriptions;  // a journal may have several
  std::vector<AlarmLines> alarms;
};

}  // namespace pim
