// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "app/album/LineMarks.h"
#include "app/output/JsonWriter.h"
#include "formats/icalendar/Occurrences.h"
#include "pim/records/Calendar.h"
#include "pim/records/Contact.h"

namespace pim::app {

// Where a record of a file comes from.
struct PlaceInFile {
  const std::string& path;
  std::string_view file;  // as the page names it
  LineMarks& marks;       // with the line of its BEGIN
};

// Write one record as one object. `place` is null for one of a store.
void WriteRecord(JsonWriter& json, const CContact& contact, bool hasPicture,
                 const PlaceInFile* place);
// The finder is that of the occurrences.
void WriteRecord(JsonWriter& json, const CCalendar& item, const Occurrences& occurrences,
                 OccurrenceFinder& finder, const PlaceInFile* place);

}  // namespace pim::app
