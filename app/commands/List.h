// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "app/commands/Options.h"

namespace pim::app {

// Each gives the exit status, and throws Failure, WrongUsage, StoreError, FileError or Interrupted.

// Lists the stored records that the options choose, in their form.
int ListRecords(const Options& options);
// Prints the number of those records; or, where operands are files, of the records in each of them,
// and no store is looked at.
int CountRecords(const Options& options);

}  // namespace pim::app
