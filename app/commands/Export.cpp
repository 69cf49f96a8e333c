// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/Export.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <utility>

#include "app/commands/FormOutput.h"
#include "app/commands/Kinds.h"
#include "app/commands/OptionValues.h"
#include "app/commands/StoredRecords.h"
#include "app/input/Interrupt.h"
#include "app/output/ItemText.h"
#include "app/output/MissingPictures.h"
#include "app/output/Output.h"
#include "app/output/Progress.h"
#include "pim/manager/ContactExport.h"
#include "pim/manager/TextWriting.h"
#include "platform/CodePages.h"
#include "platform/Files.h"
#include "support/Ascii.h"

namespace pim::app {
namespace {

namespace fs = std::filesystem;

// Where an export goes, and what chooses its records.
struct Target {
  std::string path;
  Filter filter;

  bool IsStandardOutput() const { return path == "-"; }
  std::string Shown() const { return IsStandardOutput() ? "standard output" : ShownName(path); }
  // What is told must not come between the data.
  void Tell(const std::string& line) const {
    IsStandardOutput() ? Complain(line) : Print(line + "\n");
  }
};

Target TargetOf(const Options& options, const char* wanted) {
  if (options.output) return {*options.output, options.FilterFrom(0)};
  if (options.operands.empty())
    throw WrongUsage(std::string("nothing says where to: name ") + wanted);
  return {options.operands.front(), options.FilterFrom(1)};
}

// A device or FIFO can't lose anything.
bool HoldsSomething(const std::string& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  return fs::is_regular_file(status) || fs::is_directory(status);
}

constexpr const char* kNothing = "; nothing is exported";

void WriteWhole(const std::string& path, NarrowStringView text, bool force) {
  try {
    if (path == "-") return Print(text);
    if (!force && !HoldsSomething(path) && PathExists(path)) force = true;
    if (force) {
      if (ReplaceFile(path, text)) return;
    } else {
      switch (WriteNewFile(path, text)) {
        case NewFile::Written:
          return;
        case NewFile::Taken:
          throw Failure(ShownName(path) + ": is there already; --force replaces it" + kNothing);
        case NewFile::Failed:
          break;
      }
    }
    throw Failure(ShownName(path) + ": can't be written: " + std::strerror(errno));
  } catch (const FileError& failure) {
    throw Failure(ShownName(path) + ": " + failure.reason() + kNothing);
  }
}

// Ahead of the work that a refusal would waste.
void CheckFile(const std::string& path, bool force) {
  std::error_code error;
  if (path == "-" || !HoldsSomething(path)) return;
  if (fs::is_directory(path, error)) throw Failure(ShownName(path) + ": is a folder" + kNothing);
  if (!force) throw Failure(ShownName(path) + ": is there already; --force replaces it" + kNothing);
}

void OpenFolder(const std::string& folder, bool force) {
  std::error_code error;
  fs::create_directories(folder, error);
  if (!error && !force && !fs::is_empty(folder, error) && !error)
    throw Failure(ShownName(folder) + ": isn't empty; --force adds to it" + kNothing);
  // From inside the folder, so that the length of its path costs no name its letters. A picture's
  // folder is absolute by then.
  if (error || chdir(folder.c_str()) != 0)
    throw Failure(ShownName(folder) + ": " + (error ? error.message() : std::strerror(errno)));
}

int ExportToFolder(StoredContacts& contacts, const std::string& folder, const Options& options) {
  OpenFolder(folder, options.force);
  ContactExport files(u"./", contacts.groups(), contacts.pairs());
  MissingPictures missing;
  Progress progress(options.quiet, contacts.CountAll());
  long long written = 0;
  try {
    contacts.Visit([&](CContact& contact) {
      missing.Look(contact);
      if (!files.WriteContactFile(contact))
        throw FileError(Utf8FromWide(files.LastPath()), std::strerror(errno));
      ++written;
      progress.Show(written, [&] { return Counted(written, "contact"); });
    });
  } catch (const FileError& failure) {
    progress.Clear();
    throw Failure(ShownName(folder + failure.path().substr(1)) + ": " + failure.reason() +
                  "; this contact isn't exported, " + Counted(written, "file") + " before it stay");
  }
  progress.Clear();
  Print(Counted(written, "contact") + " exported\n");
  return missing.Status();
}

int ExportToFile(StoredContacts& contacts, const Target& target, const Options& options) {
  CheckFile(target.path, options.force);
  MissingPictures missing;
  Progress progress(options.quiet, contacts.CountAll());
  NarrowString text;
  long long written = 0;
  contacts.Visit([&](CContact& contact) {
    missing.Look(contact);
    text.append(WriteContact(contact)).append("\r\n");
    if (target.IsStandardOutput()) Print(std::exchange(text, {}));
    ++written;
    progress.Show(written, [&] { return Counted(written, "contact"); });
  });
  progress.Clear();
  if (written == 0) {
    target.Tell("no contact is chosen; nothing is written to " + target.Shown());
    return kDone;
  }
  if (!target.IsStandardOutput()) WriteWhole(target.path, text, options.force);
  target.Tell(Counted(written, "contact") + " exported");
  return missing.Status();
}

int ExportInForm(StoredContacts& contacts, const Target& target, const Options& options) {
  FormOutput<CContact> output(options, target.path);
  MissingPictures missing;
  Progress progress(options.quiet, contacts.CountAll());
  contacts.Visit([&](CContact& contact) {
    missing.Look(contact);
    output.Add(contact);
    progress.Show(output.count(), [&] { return Counted(output.count(), "contact"); });
  });
  progress.Clear();
  return Worse(missing.Status(), output.End());
}

// A file's name tells it from a folder that is to be made.
bool NamesFile(const std::string& path) {
  std::error_code error;
  if (path == "-" || fs::is_regular_file(path, error)) return true;
  return !fs::is_directory(path, error) &&
         EqualsIgnoringCase(fs::path(path).extension().string(), ".vcf");
}

int ExportContacts(const Options& options) {
  Target target = TargetOf(options, "a folder, a file.vcf, or - for standard output");
  Session session(options, StoreAccess::ReadOnly);
  StoredContacts contacts(session, std::move(target.filter));
  const int status = options.to ? ExportInForm(contacts, target, options)
                     : options.output || NamesFile(target.path)
                         ? ExportToFile(contacts, target, options)
                         : ExportToFolder(contacts, target.path, options);
  return Worse(status, TellPicturesNotMade(session));
}

int ExportItems(const Options& options) {
  const Target target = TargetOf(options, "a file, or - for standard output");
  const CalendarType own = CalendarKindOf(options.kind);
  const std::string noun(options.all ? "item" : NounOf(own));
  if (!options.to) CheckFile(target.path, options.force);
  Session session(options, StoreAccess::ReadOnly);
  const StoreReading reading(session.store());
  if (!reading.IsOpen()) session.Fail();
  CCalendars items;
  std::vector<std::int32_t> chosen;
  for (const CalendarType kind : {CalendarType::Event, CalendarType::Todo, CalendarType::Memo}) {
    if (!options.all && kind != own) continue;
    if (items.OpenFromDB(session.db(), kind, 0) < 0) session.Fail();
    if (target.filter.IsEmpty()) continue;
    const std::vector<std::int32_t> keys = StoredItems(session, kind, target.filter).Keys();
    chosen.insert(chosen.end(), keys.begin(), keys.end());
  }
  if (!target.filter.IsEmpty()) {
    std::ranges::sort(chosen);
    items.DeleteIf(
        [&chosen](const CCalendar& item) { return !std::ranges::binary_search(chosen, item.tag); });
  }
  CheckInterrupt();
  if (options.to) {
    FormOutput<CCalendar> output(options, target.path);
    for (std::int32_t i = 0; i < items.GetCount(); ++i) output.Add(items[i]);
    return output.End();
  }
  if (items.GetCount() == 0) {
    target.Tell("no " + noun + " is chosen; nothing is written to " + target.Shown());
    return kDone;
  }
  NarrowString text = WriteCalendars(items);
  if (target.IsStandardOutput()) text.append("\r\n");
  CheckInterrupt();
  WriteWhole(target.path, text, options.force);
  target.Tell(Counted(items.GetCount(), noun) + " exported");
  return kDone;
}

}  // namespace

int ExportRecords(const Options& options) {
  for (const auto& [isGiven, name] :
       {std::pair(options.split, "--split"), std::pair(options.groupCards, "--groups"),
        std::pair(options.csvColumns.has_value(), "--csv-columns"),
        std::pair(options.report.has_value(), "--report")}) {
    if (isGiven && !options.to) throw WrongUsage(std::string(name) + " goes with --to");
  }
  if (options.to) TargetFormOf(options);  // must be one for them, before a store is looked for
  return options.kind == RecordKind::Contacts ? ExportContacts(options) : ExportItems(options);
}

}  // namespace pim::app
