// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>

#include "formats/icalendar/ItemZone.h"

namespace pim {

// The zones in which items have their times, one after another; the last one is kept.
class ZonesOfItems {
 public:
  // An item's own zone, or the machine's where its rule names its day by that clock alone; null for
  // an item whose times are UTC, or days. Holds until the next call.
  const ItemZone* Of(const CCalendar& item);
  // An item's own zone; null where it has none. Holds as long.
  const ItemZone* OfOwn(const CCalendarZone& zone);

 private:
  CCalendarZone last_;  // of the item before
  std::optional<ItemZone> made_;
  std::optional<ItemZone> machine_;
  bool hasMachine_ = false;
};

}  // namespace pim
