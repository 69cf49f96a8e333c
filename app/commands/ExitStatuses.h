// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <csignal>

#include "app/output/Output.h"

namespace pim::app {

constexpr int StatusOfSignal(int signal) { return 128 + signal; }

struct ExitStatusRow {
  int status;
  const char* meaning;
};

// All that the program ends with, as help, the manual page and docs/exit-statuses.md tell it.
inline constexpr ExitStatusRow kExitStatuses[] = {
    {kDone, "All is done"},
    {kFailed,
     "A file or the store failed, something that was named isn't there, or an undo left what was "
     "changed since"},
    {kWrongUsage, "The command line is wrong, and nothing was done"},
    {kRejected, "A text was rejected, or no record begins in it"},
    {kLossy, "Something is lost, and --strict or check looked for it"},
    {StatusOfSignal(SIGHUP), "SIGHUP ended it; what wasn't stored yet is left out"},
    {StatusOfSignal(SIGINT), "SIGINT, the same"},
    {StatusOfSignal(SIGPIPE), "SIGPIPE ended it: nobody reads its output any more"},
    {StatusOfSignal(SIGTERM), "SIGTERM ended it, as SIGHUP does"},
};

}  // namespace pim::app
