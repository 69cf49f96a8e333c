// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "app/commands/Options.h"

namespace pim::app {

// Writes the records of files in one of today's forms and gives the exit status. Throws Failure,
// WrongUsage or Interrupted.
int ConvertFiles(const Options& options);

}  // namespace pim::app
