// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pim/Export.h"
#include "pim/support/Strings.h"

namespace pim {

// The per-user application-data folder with a trailing backslash; a single backslash when the
// system has none.
PIM_EXPORT void GetAppDataDir(WideString& dir);

// The folder of contact pictures, without a trailing backslash. The application makes it.
PIM_EXPORT WideString GetCallerIdPath();

}  // namespace pim
