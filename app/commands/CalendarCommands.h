#pragma once

#include "app/commands/Options.h"

namespace pim::app {

// Events, to-dos or memos, as the options' kind says. Each gives the exit status, and throws
// Failure, StoreError, FileError or Interrupted.
int ImportItems(const Options& options);
int ExportItems(const Options& options);
int ListItems(const Options& options);
// Items of all kinds in a file; no store is touched.
int CountItems(const Options& options);

}  // namespace pim::app
