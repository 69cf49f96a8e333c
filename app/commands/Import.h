// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "app/commands/Options.h"
#include "app/commands/Session.h"

namespace pim::app {

// Reads files into the store. Gives the exit status, and throws Failure, StoreError, FileError or
// Interrupted.
int ImportFiles(const Options& options);
// The same into the session's store, or its preview.
int ImportInto(Session& session, const Options& options);

}  // namespace pim::app
