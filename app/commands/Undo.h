// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "app/commands/Options.h"

namespace pim::app {

// Takes an import back, or tells what that would do. Gives the exit status, or throws Failure or
// WrongUsage.
int UndoImport(const Options& options);

}  // namespace pim::app
