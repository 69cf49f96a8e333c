// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/StoreCopy.h"

#include "app/commands/Retries.h"
#include "app/commands/StorePlace.h"
#include "app/input/Interrupt.h"
#include "app/output/Output.h"
#include "app/output/Progress.h"

namespace pim::app {
namespace {

constexpr const char* kNothingCopied = "; nothing is copied";

std::int64_t CopyRows(DatabaseStore& from, DatabaseStore& to, Progress& progress) {
  const std::int64_t all = to.CopyFrom(from, [&progress](std::int64_t rows) {
    CheckInterrupt();
    progress.Show(0, [rows] { return Counted(rows, "row") + " copied"; });
  });
  if (all >= 0) return all;
  CheckInterrupt();
  progress.Clear();
  const std::string problem = to.LastError() + kNothingCopied;
  if (to.MayTryAgain() || from.MayTryAgain()) throw PassingFailure(problem);
  throw Failure(problem);
}

}  // namespace

int CopyStore(const Options& options) {
  const StorePlace source(*options.from);
  const StorePlace target(*options.to);
  if (source.IsSameAs(target))
    throw Failure(ShownName(*options.to) + ": is the store that is copied" + kNothingCopied);
  const auto from = source.Open(StoreAccess::ReadOnly);
  from->MakePictures(false);
  const auto to = target.Open(StoreAccess::Create);
  Progress progress(options.quiet);
  const std::int64_t rows = WithRetries([&] { return CopyRows(*from, *to, progress); });
  progress.Clear();
  Print(Counted(rows, "row") + " copied from " + ShownName(from->Name()) + " to " +
        ShownName(to->Name()) + "\n");
  return kDone;
}

int PrintSchema(const Options& /*options*/) {
  Print(ServerSchema());
  return kDone;
}

}  // namespace pim::app
