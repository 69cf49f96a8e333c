// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "pim/Version.h"

namespace pim {

const char* Version() noexcept { return PIM_VERSION; }

}  // namespace pim
