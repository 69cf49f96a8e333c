// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "app/commands/Options.h"

namespace pim::app {

// Prints the lines of an imported file that a stored record came from. Gives the exit status, or
// throws Failure or WrongUsage.
int ShowOriginal(const Options& options);

}  // namespace pim::app
