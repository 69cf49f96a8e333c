#pragma once

#include <optional>

#include "app/commands/Options.h"

namespace pim::app {

// Reads the command line. Where there is nothing to do any more (--help, --version, wrong usage,
// which is told on standard error), gives nothing and sets `status` to the exit status.
std::optional<Options> ReadCommandLine(int argc, const char* const* argv, int& status);

}  // namespace pim::app
