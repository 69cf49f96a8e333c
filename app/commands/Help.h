// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "app/commands/CommandTable.h"

namespace pim::app {

// What help is about: a command, a noun and its commands, or with neither the whole program.
struct HelpPlace {
  const NounRow* noun = nullptr;
  const CommandRow* command = nullptr;

  // "contacts list"; empty for the whole program.
  std::string Words() const;
};

std::string HelpText(const HelpPlace& place);
// Without the options, for a command line that names no command.
std::string ShortHelp(const HelpPlace& place);

}  // namespace pim::app
