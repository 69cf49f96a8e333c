#pragma once

#include <functional>
#include <string>
#include <vector>

#include "pim/manager/TextReading.h"
#include "pim/stream/TextHead.h"

namespace pim::app {

// What came of reading one text.
struct Outcome {
  TextResult result;
  std::vector<std::u16string> messages;  // what the user was to see, the rejection included
};

// Read a whole text and hand over its records one by one; each is gone behind the call. They aren't
// stored. Throw Interrupted between two records.
Outcome ReadText(NarrowStringView text, const std::function<void(const CContact&)>& take);
Outcome ReadText(NarrowStringView text, const std::function<void(const CCalendar&)>& take);

// Tells on standard error what came of reading the file at `path`: the messages, and what a text
// looks like that holds no record of the form. Gives the exit status.
int TellOutcome(const std::string& path, const Outcome& outcome, NarrowStringView text,
                TextForm form);

}  // namespace pim::app
