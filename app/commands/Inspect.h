#pragma once

#include "app/commands/Options.h"

namespace pim::app {

// Prints what a file holds. Gives the exit status, and throws as the other commands do.
int InspectFile(const Options& options);

}  // namespace pim::app
