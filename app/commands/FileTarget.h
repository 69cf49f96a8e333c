// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/commands/Options.h"
#include "app/output/ReportFile.h"

namespace pim::app {

// Throws Failure where a file that is written, by -o or --report, is one of those that are read, or
// both are one.
void CheckTargets(const Options& options, const std::vector<std::string>& inputs);

// Where a text goes: the file behind -o, which is there as a whole or not at all, or standard
// output. All of it throws Failure.
class FileTarget {
 public:
  // Looks at the targets as CheckTargets does.
  FileTarget(const Options& options, const std::vector<std::string>& inputs);

  void Append(std::string_view text);
  void Publish();

 private:
  std::optional<ReportFile> file_;
};

}  // namespace pim::app
