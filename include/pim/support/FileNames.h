// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pim/Export.h"
#include "pim/support/Strings.h"

namespace pim {

// Where an application keeps its files. Any number of threads may ask at once, as long as none
// changes the folder (SetAppDataFolder) or the environment. Throws std::bad_alloc.

// Sets `dir` to the per-user application-data folder with a trailing backslash; a single backslash
// when the system has none.
PIM_EXPORT void GetAppDataDir(WideString& dir);

// The folder of contact pictures, the caller-ID folder, in the application-data folder; without a
// trailing backslash. The application makes it.
PIM_EXPORT WideString GetCallerIdPath();

}  // namespace pim
