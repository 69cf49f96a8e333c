// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace pim::app {

// From now on nothing of this process's memory gets into a file when it crashes, nor is shown to
// other processes of the user: it may hold a password.
void ForbidCoreDumps();

}  // namespace pim::app
