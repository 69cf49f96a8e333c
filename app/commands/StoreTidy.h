// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "app/commands/Options.h"

namespace pim::app {

// Names the pictures of the caller-ID folder that no contact of the store has, and removes them
// where told. Gives the exit status, or throws Failure.
int TidyStore(const Options& options);

}  // namespace pim::app
