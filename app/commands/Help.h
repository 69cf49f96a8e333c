// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "app/commands/CommandWords.h"

namespace pim::app {

std::string HelpText(const CommandPlace& place);
// Without the options, for a command line that names no command.
std::string ShortHelp(const CommandPlace& place);

// Prints the help of the command or topic that the operands name.
int TellHelp(const Options& options);

}  // namespace pim::app
