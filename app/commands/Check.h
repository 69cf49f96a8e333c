// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "app/commands/Options.h"

namespace pim::app {

// Reads files, writes what they hold and reads that again, and tells what doesn't come back. Gives
// the exit status.
int CheckFiles(const Options& options);

}  // namespace pim::app
