// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "formats/FormatLoss.h"

namespace pim {

// Makes vCalendar 1.0 of the components of one VCALENDAR of iCalendar 2.0. A component's text goes
// from the line of its BEGIN to that of its END, what stands inside included, in UTF-8 with line
// ends of either kind. Any bytes give a text. Linear in the texts. Throws std::bad_alloc.
class ICalendarDown {
 public:
  ICalendarDown();
  ICalendarDown(const ICalendarDown&) = delete;
  ICalendarDown& operator=(const ICalendarDown&) = delete;
  ~ICalendarDown();

  // A VTIMEZONE, for the items behind it.
  void TakeZone(std::string_view component);
  // The names of zones that a component uses and that neither a VTIMEZONE nor the system's own
  // zones tell: whoever still expects a VTIMEZONE keeps the component until then.
  std::vector<std::string> UnknownZones(std::string_view component) const;
  // Whether one of them is told now.
  bool Knows(const std::string& zone) const;

  // The zone of times that name none, for the items behind. False for one that isn't known, which
  // changes nothing. Without one such times stay local, but for those of repeats, which go out by
  // the machine's zone together with it.
  bool TakeFloatingZone(const std::string& zone);
  // No time stays local, as where readers would take those for others; the machine's zone counts.
  void KeepNoLocalTimes();

  // Replaces `out` by a VEVENT, VTODO or VJOURNAL as VEVENT, VTODO or VMEMO, lines ending in CR LF.
  // What 1.0 has no place for is told, with its line. Any other component gives an empty text and
  // is told by its name, but for a VTIMEZONE.
  void Convert(std::string_view component, const TellFormatLoss& tell, std::string& out);

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace pim
