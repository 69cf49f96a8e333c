// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdio>
#include <exception>
#include <optional>
#include <string>
#include <string_view>

#include "app/commands/Album.h"
#include "app/commands/Charsets.h"
#include "app/commands/Check.h"
#include "app/commands/CommandLine.h"
#include "app/commands/Convert.h"
#include "app/commands/Delete.h"
#include "app/commands/Export.h"
#include "app/commands/Help.h"
#include "app/commands/History.h"
#include "app/commands/Import.h"
#include "app/commands/Inspect.h"
#include "app/commands/List.h"
#include "app/commands/OriginalLines.h"
#include "app/commands/Originals.h"
#include "app/commands/Prepare.h"
#include "app/commands/Redact.h"
#include "app/commands/Show.h"
#include "app/commands/StoreCopy.h"
#include "app/commands/StoreTidy.h"
#include "app/commands/Undo.h"
#include "app/input/Interrupt.h"
#include "app/output/Output.h"
#include "pim/platform/FileError.h"
#include "pim/support/WritingForm.h"

namespace pim::app {
namespace {

int Run(const Options& options) {
  switch (options.action) {
    case Action::Check:
      return CheckFiles(options);
    case Action::Convert:
      return ConvertFiles(options);
    case Action::Prepare:
      return PrepareFile(options);
    case Action::Redact:
      return RedactFile(options);
    case Action::TellCharsets:
      return TellCharsets(options);
    case Action::Import:
      return ImportFiles(options);
    case Action::Export:
      return ExportRecords(options);
    case Action::Album:
      return WriteStoredAlbum(options);
    case Action::FileAlbum:
      return WriteFileAlbum(options);
    case Action::List:
      return ListRecords(options);
    case Action::Count:
      return CountRecords(options);
    case Action::ShowRecords:
      return ShowRecords(options);
    case Action::Delete:
      return DeleteRecords(options);
    case Action::ShowFile:
      return ShowFiles(options);
    case Action::Inspect:
      return InspectFiles(options);
    case Action::History:
      return PrintHistory(options);
    case Action::Undo:
      return UndoImport(options);
    case Action::ListOriginals:
      return ListOriginals(options);
    case Action::ExportOriginals:
      return ExportOriginals(options);
    case Action::ShowOriginal:
      return ShowOriginal(options);
    case Action::DropOriginals:
      return DropOriginals(options);
    case Action::OriginalsOn:
      return KeepOriginals(options, true);
    case Action::OriginalsOff:
      return KeepOriginals(options, false);
    case Action::TidyStore:
      return TidyStore(options);
    case Action::CopyStore:
      return CopyStore(options);
    case Action::PrintSchema:
      return PrintSchema(options);
    case Action::TellHelp:
      return TellHelp(options);
  }
  return kWrongUsage;
}

int RunCommandLine(int argc, char** argv, std::optional<Options>& options) {
  int status = kDone;
  if (options = ReadCommandLine(argc, argv, status); options) {
    SetWritingForm(options->toTheLetter ? WritingForm::ToTheLetter : WritingForm::ReadsBack);
    try {
      status = Run(*options);
    } catch (const WrongUsage& wrong) {
      TellWrongUsage(wrong.what(), options->command);
      status = kWrongUsage;
    }
  }
  FlushOutput();
  return status;
}

// What fails once the program was asked to end, such as the wait for a lock, is no failure of its
// own.
int RunOrInterrupt(int argc, char** argv, std::optional<Options>& options) {
  try {
    return RunCommandLine(argc, argv, options);
  } catch (const std::exception&) {
    CheckInterrupt();
    throw;
  }
}

// What comes of a command that is interrupted.
std::string_view LeftBy(const std::optional<Options>& options) {
  const bool isAlbum =
      options && (options->action == Action::Album || options->action == Action::FileAlbum);
  return isAlbum ? "no whole page is written" : "what wasn't stored yet is left out";
}

// From the command line on, so that a signal in the first moment ends the program like later ones.
int RunGuarded(int argc, char** argv) {
  std::optional<Options> options;
  try {
    WatchSignals();
    return RunOrInterrupt(argc, argv, options);
  } catch (const Interrupted& interrupted) {
    Complain(std::string("interrupted; ").append(LeftBy(options)));
    return 128 + interrupted.signal;
  } catch (ClosedPipe) {
    EndByPipe();
    return kDone;
  } catch (const std::exception& failure) {
    Complain(failure.what());
    return kFailed;
  }
}

}  // namespace
}  // namespace pim::app

int main(int argc, char** argv) { return pim::app::RunGuarded(argc, argv); }
