// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "app/commands/CommandTable.h"

namespace pim::app {

// What the first words of a line name: a command, a noun and its commands, or with neither the
// whole program.
struct CommandPlace {
  const NounRow* noun = nullptr;
  const CommandRow* command = nullptr;

  // "contacts list"; empty for the whole program.
  std::string Words() const;
};

// Finds the command that the first words name, which are taken away. A noun alone gives its place
// and no command. Throws WrongUsage, with what was likely meant, for a word that names none; that
// may also have been one of the `topics`. The place says then how far the words were understood.
void TakeCommand(std::vector<std::string>& words, CommandPlace& place,
                 std::span<const std::string_view> topics = {});

// The words that a line may begin with.
std::vector<std::string_view> FirstWords();

}  // namespace pim::app
