// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "app/commands/Options.h"

namespace pim::app {

// Deletes the stored records that the options name. Gives the exit status, and throws Failure,
// WrongUsage, StoreError or Interrupted.
int DeleteRecords(const Options& options);

}  // namespace pim::app
