#pragma once

#include "app/commands/Options.h"

namespace pim::app {

// Each gives the exit status, and throws Failure, StoreError, FileError or Interrupted.
int ImportContacts(const Options& options);
int ExportContacts(const Options& options);
int ListContacts(const Options& options);

}  // namespace pim::app
