// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/FileTarget.h"

#include "app/input/Inputs.h"
#include "app/output/Output.h"

namespace pim::app {

void CheckTargets(const Options& options, const std::vector<std::string>& inputs) {
  for (const std::optional<std::string>& target : {options.output, options.report}) {
    if (!target || *target == "-") continue;
    for (const std::string& input : inputs) {
      if (input != "-" && AreOneFile(input, *target))
        throw Failure(ShownName(*target) + ": is a file that is read");
    }
  }
  if (options.output && options.report && AreOneFile(*options.output, *options.report))
    throw Failure(ShownName(*options.output) + ": is named by both -o and --report");
}

FileTarget::FileTarget(const Options& options, const std::vector<std::string>& inputs) {
  CheckTargets(options, inputs);
  const std::string path = options.output.value_or("-");
  if (path != "-") file_.emplace(path, options.force);
}

void FileTarget::Append(std::string_view text) { file_ ? file_->Append(text) : Print(text); }

void FileTarget::Publish() {
  if (file_) file_->Publish();
}

}  // namespace pim::app
