// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string_view>

#include "app/commands/Options.h"

namespace pim::app {

// Reads the command line, whose words main may have in any order among its options, and overwrites
// the passwords in it. Where there is
// nothing to do any more (help, version, wrong usage, which is told on standard error), gives
// nothing and sets `status` to the exit status. Throws Failure when help can't be printed.
std::optional<Options> ReadCommandLine(int argc, char** argv, int& status);

// What is wrong, and where more is told: in the help of `command` ("contacts list"), or of the
// program where that is empty.
void TellWrongUsage(std::string_view problem, std::string_view command);

}  // namespace pim::app
