// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/commands/CommandTable.h"

namespace pim::app {

// A word that may stand at a place of the command line, and what is said of it.
struct PlaceWord {
  std::string word;
  std::string summary;
};

// A place of the command line: what may stand behind the words of `key` ("", "contacts",
// "contacts list"), with options anywhere among them.
struct LinePlace {
  std::string key;
  const CommandRow* command = nullptr;  // null where more words are needed for one
  const NounRow* noun = nullptr;        // of the command
  std::vector<PlaceWord> words = {};    // of which the next one is
  std::string_view endings = {};        // of the files that the operands are, "vcs ics"
  bool isFolder = false;                // the operand is a folder
  bool repeats = false;                 // all further operands are like the first one
};
std::vector<LinePlace> LinePlaces();

// Words at a place below which there are others: nouns, and "help".
std::vector<std::string> WordsThatGoOn();

// How completions take an option's value.
// Of a command, or of all.
bool TakesFile(const OptionRow& row, const CommandRow* command = nullptr);
bool TakesList(const OptionRow& row);

}  // namespace pim::app
