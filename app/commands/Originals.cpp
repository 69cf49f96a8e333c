// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/Originals.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <limits>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "app/commands/History.h"
#include "app/input/Interrupt.h"
#include "app/output/JsonWriter.h"
#include "app/output/LocalTimes.h"
#include "app/output/Output.h"
#include "app/output/Table.h"
#include "platform/CodePages.h"
#include "platform/Files.h"
#include "platform/Handles.h"
#include "support/FileNames.h"

namespace pim::app {
namespace {

void VisitFiles(Session& session, std::optional<std::int32_t> import,
                const std::function<void(const ImportedFile&)>& take) {
  const std::int32_t visited =
      HistoryOf(session).VisitFiles(import, [&take](const ImportedFile& file) {
        CheckInterrupt();
        take(file);
        return true;
      });
  if (visited < 0) session.Fail();
}

std::int64_t CountKept(Session& session) {
  std::int64_t kept = 0;
  VisitFiles(session, std::nullopt, [&kept](const ImportedFile& file) { kept += file.isKept; });
  return kept;
}

// When each import began.
using Times = std::unordered_map<std::int32_t, std::int64_t>;

Times TimesOf(Session& session) {
  Times times;
  for (const ImportEntry& import : ImportsOf(session)) times.emplace(import.number, import.began);
  return times;
}

// Read twice, once for the widths of the columns, so that the list can be larger than memory.
void PrintTable(Session& session, Times began) {
  Table table({"File", "Import", "When", "Bytes", "Kept", "SHA-256", "Name"},
              std::numeric_limits<std::size_t>::max());
  const LocalTimes times;
  const auto cells = [&](const ImportedFile& file) -> std::vector<std::string> {
    return {std::to_string(file.number),
            std::to_string(file.import),
            times.Moment(DateOfSeconds(began[file.import])),
            std::to_string(file.bytes),
            file.isKept ? "yes" : "no",
            Sha256Text(file.sha256),
            ShownName(file.name)};
  };
  bool isEmpty = true;
  VisitFiles(session, std::nullopt, [&](const ImportedFile& file) {
    table.Measure(cells(file));
    isEmpty = false;
  });
  if (isEmpty) return Complain("nothing has been imported yet");
  Print(table.TitleLine());
  VisitFiles(session, std::nullopt,
             [&](const ImportedFile& file) { Print(table.Line(cells(file))); });
}

void PrintJson(Session& session, Times began) {
  JsonWriter json;
  bool isEmpty = true;
  Print("{\"files\": [");
  VisitFiles(session, std::nullopt, [&](const ImportedFile& file) {
    json.Clear();
    json.StartObject();
    json.Field("number", file.number);
    json.Field("import", file.import);
    json.Utf8Field("began", UtcText(began[file.import]));
    WriteNameOf(file, json);
    json.EndObject();
    Print(std::exchange(isEmpty, false) ? "\n" : ",\n");
    Print(json.text());
  });
  Print(isEmpty ? "]}\n" : "\n]}\n");
}

// A file's own name as one that any folder takes: standard input gets one by what was imported.
WideString SafeName(const std::string& name, bool isCalendar) {
  if (name == "-") return isCalendar ? u"stdin.vcs" : u"stdin.vcf";
  WideString safe = CleanFileName(WideFromUtf8(name.substr(name.rfind('/') + 1)));
  std::erase_if(safe, [](char16_t unit) { return unit < 0x20 || unit == 0x7F; });
  const bool isOdd = safe.find_first_not_of(u" .") == WideString::npos;
  return isOdd ? u"original" : safe;
}

// A folder whose files are made inside it, whatever takes its place meanwhile.
class OutputFolder {
 public:
  explicit OutputFolder(std::string path) : path_(std::move(path)) {
    std::error_code error;
    std::filesystem::create_directories(path_, error);
    if (error) throw Failure(ShownName(path_) + ": " + error.message());
    folder_ = Descriptor(open(path_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder_) Fail({}, errno);
  }

  // Makes a file under that name, or with a counter where something has it. Gives its own name.
  std::string Make(const WideString& name, Descriptor& file) {
    int error = 0;
    const WideString made = names_.Next(name, [&](const std::string& native) {
      constexpr mode_t kMode = 0666;  // less the process's mask
      file = Descriptor(openat(folder_.get(), native.c_str(),
                               O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kMode));
      error = file ? 0 : errno;
      return error == EEXIST;
    });
    if (error != 0) Fail(NativePath(made), error);
    return NativePath(made);
  }
  void Remove(const std::string& name) const { unlinkat(folder_.get(), name.c_str(), 0); }
  // `name` is empty for the folder itself.
  [[noreturn]] void Fail(const std::string& name, int error) const {
    const std::string path = name.empty() ? path_ : path_ + "/" + name;
    throw Failure(ShownName(path) + ": can't be written: " + std::strerror(error));
  }

 private:
  std::string path_;
  Descriptor folder_{-1};
  UniqueNames names_;
};

// A file of an output folder that goes away again unless it is finished.
class OriginalFile {
 public:
  OriginalFile(OutputFolder& folder, const WideString& name)
      : folder_(folder), name_(folder.Make(name, file_)) {}
  OriginalFile(const OriginalFile&) = delete;
  OriginalFile& operator=(const OriginalFile&) = delete;
  ~OriginalFile() {
    if (!isWhole_) folder_.Remove(name_);
  }

  void Append(NarrowStringView bytes) {
    if (!WriteAll(file_.get(), bytes)) folder_.Fail(name_, errno);
  }
  // A full disk may show only here.
  void Finish() {
    if (close(file_.Release()) != 0 && errno != EINTR) folder_.Fail(name_, errno);
    isWhole_ = true;
  }

 private:
  OutputFolder& folder_;
  Descriptor file_{-1};
  std::string name_;
  bool isWhole_ = false;
};

// False for bytes that the store can't give any more, which is told.
bool WriteOriginal(Session& session, std::int64_t number, const WideString& name,
                   OutputFolder& folder) {
  OriginalFile file(folder, name);
  const bool isRead = HistoryOf(session).ReadOriginal(number, [&file](NarrowStringView piece) {
    CheckInterrupt();
    file.Append(piece);
    return true;
  });
  if (isRead) {
    file.Finish();
  } else {
    CheckInterrupt();
    Complain(session.store().LastError() + "; " + Shown(name) + " isn't written");
  }
  return isRead;
}

struct KeptFile {
  std::int64_t number;
  WideString name;
};

// The kept files of the chosen imports, and how many others these have.
std::vector<KeptFile> KeptFiles(Session& session, const Options& options, std::int64_t& others) {
  std::unordered_map<std::int32_t, bool> isCalendar;
  for (const ImportEntry& import : ImportsOf(session, options.import))
    isCalendar.emplace(import.number, !import.start.command.starts_with("contacts"));
  std::vector<KeptFile> kept;
  VisitFiles(session, options.import, [&](const ImportedFile& file) {
    file.isKept ? kept.push_back({file.number, SafeName(file.name, isCalendar[file.import])})
                : static_cast<void>(++others);
  });
  return kept;
}

}  // namespace

int ListOriginals(const Options& options) {
  Session session(options, StoreAccess::ReadOnly);
  const StoreReading reading(session.store());
  if (!reading.IsOpen()) session.Fail();
  options.listForm == ListForm::Json ? PrintJson(session, TimesOf(session))
                                     : PrintTable(session, TimesOf(session));
  if (!HistoryOf(session).KeepsOriginals())
    Complain("imports keep no copies; 'pimvobj original on' has them do so");
  return kDone;
}

int ExportOriginals(const Options& options) {
  const std::string& path = options.operands.front();
  if (path == "-") throw WrongUsage("originals are written into a folder, not to standard output");
  Session session(options, StoreAccess::ReadOnly);
  const StoreReading reading(session.store());
  if (!reading.IsOpen()) session.Fail();
  std::int64_t notKept = 0;
  const std::vector<KeptFile> files = KeptFiles(session, options, notKept);
  if (files.empty()) {
    Complain("no original is kept; nothing is written to " + ShownName(path));
    return kDone;
  }
  OutputFolder folder(path);
  long long written = 0;
  for (const KeptFile& file : files)
    written += WriteOriginal(session, file.number, file.name, folder) ? 1 : 0;
  Print(Counted(written, "original") + " exported" +
        (notKept == 0 ? "" : "; of " + Counted(notKept, "other file") + " no copy is kept") + "\n");
  return written == std::ssize(files) ? kDone : kFailed;
}

int DropOriginals(const Options& options) {
  Session session(options, StoreAccess::Existing);
  static_cast<void>(ImportsOf(session, options.import));  // whether it is there
  const std::int32_t dropped =
      session.Try([&] { return HistoryOf(session).DropOriginals(options.import); });
  Print(Counted(dropped, "original") + " dropped; the history stays\n");
  return kDone;
}

int KeepOriginals(const Options& options, bool keeps) {
  // The choice comes ahead of the first import, too.
  Session session(options, StoreAccess::Create);
  session.Try([&] { return HistoryOf(session).SetKeepsOriginals(keeps) ? 0 : -1; });
  std::string line = keeps ? "imports keep a copy of each file from now on"
                           : "imports keep no copies of files from now on";
  const std::int64_t kept = keeps ? 0 : CountKept(session);
  if (kept != 0) {
    line += "; " + Counted(kept, "original") + " kept so far " + (kept == 1 ? "stays" : "stay") +
            "; 'pimvobj original drop' removes what is kept";
  }
  if (session.store().IsNew()) line += "; the store is " + session.name();
  Print(line + "\n");
  return kDone;
}

}  // namespace pim::app
