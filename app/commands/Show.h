#pragma once

#include "app/commands/Options.h"

namespace pim::app {

// Prints the first vObject of a file as a few lines of the user's language. Gives the exit status,
// and throws as the other commands do.
int ShowFile(const Options& options);

}  // namespace pim::app
