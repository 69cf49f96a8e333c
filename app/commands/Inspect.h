// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "app/commands/Options.h"

namespace pim::app {

// Prints what each file holds. Gives the exit status, and throws as the other commands do.
int InspectFiles(const Options& options);

}  // namespace pim::app
