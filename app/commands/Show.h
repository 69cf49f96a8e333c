// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "app/commands/Options.h"

namespace pim::app {

// Each gives the exit status, and throws Failure, WrongUsage, StoreError or Interrupted.

// Previews the first vObject of each file, or all of them.
int ShowFiles(const Options& options);
// Previews stored records by their keys.
int ShowRecords(const Options& options);

}  // namespace pim::app
