// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "app/commands/Options.h"
#include "pim/records/TypeCodes.h"

namespace pim::app {

// The stored kind of a noun that is about calendar items.
constexpr CalendarType CalendarKindOf(RecordKind kind) {
  switch (kind) {
    case RecordKind::Todo:
      return CalendarType::Todo;
    case RecordKind::Memo:
      return CalendarType::Memo;
    case RecordKind::Contacts:
    case RecordKind::Calendar:
      break;
  }
  return CalendarType::Event;
}

}  // namespace pim::app
