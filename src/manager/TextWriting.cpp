// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/manager/TextWriting.h"

#include "vcalendar/VCalendarWriter.h"
#include "vcard/VCardWriter.h"

namespace pim {

NarrowString WriteContact(const CContact& contact) {
  VObjectBuffer data;
  WriteVCard(contact, data);
  return NarrowString(data.bytes.view());
}

NarrowString WriteCalendars(const CCalendars& items) {
  VObjectBuffer data;
  WriteVCalendar(items, data);
  return NarrowString(data.bytes.view());
}

}  // namespace pim
