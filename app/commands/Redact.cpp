// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/Redact.h"

#include <random>
#include <utility>
#include <vector>

#include "app/commands/FileTarget.h"
#include "app/input/ByteSource.h"
#include "app/output/Output.h"
#include "formats/prepare/UnitDecoder.h"
#include "formats/redact/Redactor.h"

namespace pim::app {

int RedactFile(const Options& options) {
  const std::string& path = options.operands.front();
  FileSource source(path);
  FileTarget target(options, {path});
  // Nobody is to know it.
  std::random_device random;
  const std::uint64_t key = std::uint64_t{random()} << 32 | random();
  Redactor redactor(key, [&target](std::string_view text) { target.Append(text); });
  std::vector<char> piece(std::size_t{256} * 1024);
  bool isFirst = true;
  while (const std::size_t count = source.Read(piece.data(), piece.size())) {
    const std::string_view bytes(piece.data(), count);
    if (std::exchange(isFirst, false) && TextUnits::Of(bytes).size != 1) {
      throw Failure(ShownName(path) +
                    ": is UTF-16 or UTF-32; make UTF-8 of it with 'pimvobj prepare --steps "
                    "unicode', and redact that");
    }
    redactor.Append(bytes);
  }
  redactor.Finish();
  target.Publish();
  if (redactor.damagedLines() != 0) {
    Complain(ShownName(path) + ":" + std::to_string(redactor.firstDamaged()) + ": " +
             Counted(redactor.damagedLines(), "line") +
             " from here on with bytes that are no text, which stay as they are; --code-page NAME "
             "says what they are in, and masks them");
  }
  return kDone;
}

}  // namespace pim::app
