// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "app/commands/Options.h"

namespace pim::app {

// The copies of imported files that a store keeps. Each gives the exit status, or throws Failure or
// WrongUsage.

// Prints the files of all imports.
int ListOriginals(const Options& options);
// Writes the kept ones into a folder, under names of which none is taken.
int ExportOriginals(const Options& options);
int DropOriginals(const Options& options);
// Says whether imports keep copies from now on.
int KeepOriginals(const Options& options, bool keeps);

}  // namespace pim::app
