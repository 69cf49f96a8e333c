// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "app/commands/Options.h"

namespace pim::app {

// Copies one store into another. Gives the exit status, or throws Failure, StoreError or
// Interrupted.
int CopyStore(const Options& options);

// Prints the statements that make a store's tables in a server. Gives the exit status, or throws
// Failure.
int PrintSchema(const Options& options);

}  // namespace pim::app
