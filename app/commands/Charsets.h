// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "app/commands/Options.h"

namespace pim::app {

// Shows the lines of files that are no text in their charset as they would be in others and gives
// the exit status. Throws Failure, WrongUsage or Interrupted.
int TellCharsets(const Options& options);

}  // namespace pim::app
