// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>
#include <string_view>

#include "tools/LinePlaces.h"
#include "tools/MadeFile.h"
#include "tools/Templates.h"

namespace pim::app {
namespace {

constexpr struct {
  const char* name;  // that of its hand-written part has ".in" behind it
  std::string (*make)(std::string text);
} kFiles[] = {
    {"pimvobj.1", ManualPage},
    {"pimvobj.bash", BashCompletion},
    {"_pimvobj", ZshCompletion},
    {"pimvobj.fish", FishCompletion},
};

// What tests hold the files against: for each command a line of its words and one of its options.
void PrintTable() {
  for (const LinePlace& place : LinePlaces()) {
    if (place.command == nullptr) continue;
    std::string options;
    for (const Option option : place.command->options) options += " " + DashedName(RowOf(option));
    for (const Option option : CommonOptions()) options += " " + DashedName(RowOf(option));
    std::printf("%s:%s\n", place.key.c_str(), options.c_str());
  }
}

int Run(int argc, char** argv) {
  if (argc == 2 && std::string_view(argv[1]) == "--table") {
    PrintTable();
    return 0;
  }
  const bool check = argc == 4 && std::string_view(argv[1]) == "--check";
  if (argc != 3 && !check) return 2;
  const std::string from = argv[argc - 2];
  const std::string to = argv[argc - 1];
  int status = 0;
  for (const auto& file : kFiles) {
    const std::string path = to + "/" + file.name;
    const std::string made = file.make(BytesOf(from + "/" + file.name + ".in"));
    status = std::max(status, WriteOrCheck(path, made, check, "manual-files"));
  }
  return status;
}

}  // namespace
}  // namespace pim::app

int main(int argc, char** argv) {
  try {
    return pim::app::Run(argc, argv);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "pim_manual: %s\n", failure.what());
    return 1;
  }
}
