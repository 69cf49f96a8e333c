// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "app/commands/Options.h"

namespace pim::app {

// Writes the stored records that the options choose. Gives the exit status, and throws Failure,
// WrongUsage, StoreError, FileError or Interrupted.
int ExportRecords(const Options& options);

}  // namespace pim::app
