// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "app/commands/Options.h"

namespace pim::app {

// Write a page to look through, of stored records or of those of files, and give the exit status.
// Throw Failure, WrongUsage or Interrupted.
int WriteStoredAlbum(const Options& options);
int WriteFileAlbum(const Options& options);

}  // namespace pim::app
