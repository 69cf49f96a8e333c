// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>

#include "pim/Export.h"
#include "pim/records/Calendar.h"
#include "pim/records/Contacts.h"
#include "pim/stream/TextObserver.h"
#include "pim/support/Strings.h"

namespace pim {

// Texts read into records without a store. What VObjectMgr's imports take is taken here, in the
// same way; nothing is thrown for a text or file that is no good, the result tells.
//
// Any number of threads may read at once, each one text at a time into a collection of its own, the
// same bytes too. Records are made in the thread that reads and may be passed on to another.

// How a reading ended.
enum class TextOutcome : std::uint8_t {
  Read,           // to its end
  NothingBegins,  // to its end, and no record begins in it
  Rejected,       // up to a line that no reader takes; the records read until then stand
  Unreadable,     // the file can't be opened or read; nothing was read
  Stopped,        // the host wanted no more records
};

// What came of a text.
struct [[nodiscard]] TextResult {
  TextOutcome outcome = TextOutcome::Read;  // how its reading ended
  std::int64_t records = 0;                 // read, or handed to the host
  std::int64_t line = 0;  // where a text was rejected: its physical line, from 1; else 0
  TextFault fault = TextFault::None;  // why
  std::string problem;  // why a file is unreadable, as the operating system says it; UTF-8
};

// Takes one record, which is the host's to change, as soon as it is complete: when the next one
// begins, or the text ends or is rejected. It is gone behind the call. False stops the reading;
// what the host throws ends it and passes to the caller.
using TakeContact = std::function<bool(CContact& contact)>;
using TakeCalendar = std::function<bool(CCalendar& item)>;

// Read a whole text in memory. Records are appended to what the collection holds; each has the key
// kUnsavedTag. A UTF-8 byte order mark ahead of contacts is stepped over; ahead of calendar items
// it spoils the first line, which is the frame's, as it does in the imports. Pictures become files
// of the caller-ID folder; one that can't be written to its end throws FileError. What the user is
// to see (a rejected text, a bad repeat rule) goes to the message sink on the way.
//
// `observer` is told what else happens.
//
// A host may read another text in this thread from within its call, but no calendar inside a
// calendar. Throws std::bad_alloc; the records read until then stand.
PIM_EXPORT TextResult ReadContacts(NarrowStringView text, CContacts& contacts,
                                   const TextObserver& observer = {});
PIM_EXPORT TextResult ReadContacts(NarrowStringView text, const TakeContact& take,
                                   const TextObserver& observer = {});
PIM_EXPORT TextResult ReadCalendars(NarrowStringView text, CCalendars& items,
                                    const TextObserver& observer = {});
PIM_EXPORT TextResult ReadCalendars(NarrowStringView text, const TakeCalendar& take,
                                    const TextObserver& observer = {});

// The same for a regular file of up to 2 GiB, which is read into memory as a whole.
PIM_EXPORT TextResult ReadContactFile(WideStringView path, CContacts& contacts,
                                      const TextObserver& observer = {});
PIM_EXPORT TextResult ReadContactFile(WideStringView path, const TakeContact& take,
                                      const TextObserver& observer = {});
PIM_EXPORT TextResult ReadCalendarFile(WideStringView path, CCalendars& items,
                                       const TextObserver& observer = {});
PIM_EXPORT TextResult ReadCalendarFile(WideStringView path, const TakeCalendar& take,
                                       const TextObserver& observer = {});

// The names of a record's fields by the numbers of the bits of AccountEntry::into, in the order of
// record dumps: "formatted_name". Good for ever, for any thread; allocates nothing.
PIM_EXPORT std::span<const NarrowStringView> RecordFields(TextForm form);

}  // namespace pim
