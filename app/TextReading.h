#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "app/Options.h"
#include "pim/records/Calendar.h"
#include "pim/records/Contacts.h"
#include "pim/support/Strings.h"

namespace pim::app {

// What came of reading one text.
struct Outcome {
  bool rejected = false;
  std::vector<std::u16string> messages;  // what the user was to see, the rejection included
};

// Read a whole text into records, which aren't stored. An interrupt is seen soon.
Outcome ReadContacts(NarrowStringView text, CContacts& contacts);
Outcome ReadItems(NarrowStringView text, CCalendars& items);

// The text behind a UTF-8 byte order mark, unless it holds nothing else. Imports skip one ahead of
// contacts alone.
NarrowStringView WithoutMark(NarrowStringView text);

// Tells on standard error what came of reading the file at `path`: the messages, and what a text
// looks like that holds no record of the form. Gives the exit status.
int TellOutcome(const std::string& path, const Outcome& outcome, std::int32_t count,
                NarrowStringView text, TextForm form);

}  // namespace pim::app
