// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "app/commands/Options.h"

namespace pim::app {

// Writes a file without what is private in it and gives the exit
// status. Throws Failure, WrongUsage or Interrupted.
int RedactFile(const Options& options);

}  // namespace pim::app
