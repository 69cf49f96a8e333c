// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/Redact.h"

#include <optional>
#include <random>
#include <vector>

#include "app/input/Inputs.h"
#include "app/output/Output.h"
#include "app/output/ReportFile.h"
#include "formats/redact/Redactor.h"

namespace pim::app {

int RedactFile(const Options& options) {
  const std::string& path = options.operands.front();
  const std::string target = options.output.value_or("-");
  FileSource source(path);
  std::optional<ReportFile> file;
  if (target != "-") {
    if (AreOneFile(path, target)) throw Failure(ShownName(target) + ": is the file that is read");
    file.emplace(target, options.force);
  }
  // Nobody is to know it.
  std::random_device random;
  const std::uint64_t key = std::uint64_t{random()} << 32 | random();
  Redactor redactor(key,
                    [&file](std::string_view text) { file ? file->Append(text) : Print(text); });
  std::vector<char> piece(std::size_t{256} * 1024);
  while (const std::size_t count = source.Read(piece.data(), piece.size()))
    redactor.Append({piece.data(), count});
  redactor.Finish();
  if (file) file->Publish();
  return kDone;
}

}  // namespace pim::app
