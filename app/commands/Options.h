#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "pim/stream/TextHead.h"

namespace pim::app {

enum class RecordKind : std::uint8_t { Contacts, Calendar, Todo, Memo };
enum class Action : std::uint8_t { Import, Export, List, Count, Show, Inspect };

// One command line, read.
struct Options {
  Action action = Action::Inspect;
  RecordKind kind = RecordKind::Contacts;
  std::vector<std::string> paths;  // or the one file or folder
  std::optional<std::string> store;
  std::optional<std::string> group;  // every contact joins it
  std::optional<std::string> codePage;
  std::optional<TextForm> form;
  std::optional<std::string> language;  // of the labels that `show` prints
  std::optional<std::string> labels;    // a file of the user's own
  bool noGroups = false;
  bool skipDuplicates = false;
  bool json = false;
  bool quiet = false;
  bool toTheLetter = false;  // what is written need not read back
};

}  // namespace pim::app
