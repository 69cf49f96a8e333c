// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "formats/FormatLoss.h"
#include "formats/icalendar/Ical.h"
#include "formats/icalendar/ItemZone.h"
#include "pim/records/Calendar.h"

namespace pim {

// An item as VEVENT, VTODO or VJOURNAL, what isn't of those under this program's own names. Its
// times are those of the zone, if there is one; what is lost is told.
IcalOwner<icalcomponent> MakeItemComponent(const CCalendar& item, const ItemZone* zone,
                                           const TellFormatLoss& tell);

}  // namespace pim
