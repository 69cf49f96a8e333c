#include <cstdio>
#include <exception>

#include "app/commands/CalendarCommands.h"
#include "app/commands/CommandLine.h"
#include "app/commands/ContactCommands.h"
#include "app/commands/Inspect.h"
#include "app/commands/Show.h"
#include "app/input/Interrupt.h"
#include "app/output/Output.h"
#include "pim/platform/FileError.h"
#include "pim/support/WritingForm.h"

namespace pim::app {
namespace {

int RunContacts(const Options& options) {
  switch (options.action) {
    case Action::Import:
      return ImportContacts(options);
    case Action::Export:
      return ExportContacts(options);
    default:
      return ListContacts(options);
  }
}

int RunItems(const Options& options) {
  switch (options.action) {
    case Action::Import:
      return ImportItems(options);
    case Action::Export:
      return ExportItems(options);
    case Action::Count:
      return CountItems(options);
    default:
      return ListItems(options);
  }
}

int Run(const Options& options) {
  if (options.action == Action::Inspect) return InspectFile(options);
  if (options.action == Action::Show) return ShowFile(options);
  return options.kind == RecordKind::Contacts ? RunContacts(options) : RunItems(options);
}

// What fails once the program was asked to end, such as the wait for a lock, is no failure of its
// own.
int RunOrInterrupt(const Options& options) {
  try {
    return Run(options);
  } catch (const std::exception&) {
    CheckInterrupt();
    throw;
  }
}

int RunGuarded(const Options& options) {
  try {
    WatchSignals();
    SetWritingForm(options.toTheLetter ? WritingForm::ToTheLetter : WritingForm::ReadsBack);
    const int status = RunOrInterrupt(options);
    FlushOutput();
    return status;
  } catch (const Interrupted& interrupted) {
    Complain("interrupted; what wasn't stored yet is left out");
    return 128 + interrupted.signal;
  } catch (const std::exception& failure) {
    Complain(failure.what());
    return kFailed;
  }
}

}  // namespace
}  // namespace pim::app

int main(int argc, char** argv) {
  int status = 0;
  const auto options = pim::app::ReadCommandLine(argc, argv, status);
  return options ? pim::app::RunGuarded(*options) : status;
}
