// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "app/commands/Options.h"
#include "app/input/TextReading.h"

namespace pim::app {

// Prints the account of a text, whose file is at `path`: in words only what isn't kept, as JSON all
// of it. Gives the exit status.
int PrintLosses(const std::string& path, NarrowStringView text, TextForm form,
                const Options& options);

}  // namespace pim::app
