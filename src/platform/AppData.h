// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace pim {

// The per-user application-data folder without a trailing separator: what the host set, else
// $XDG_DATA_HOME (if absolute), else $HOME/.local/share, else empty. Not created here.
std::u16string AppDataFolder();

}  // namespace pim
