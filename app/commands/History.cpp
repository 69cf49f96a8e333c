// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/History.h"

#include <algorithm>
#include <string>

#include "app/input/Interrupt.h"
#include "app/output/LocalTimes.h"
#include "app/output/Output.h"
#include "platform/CodePages.h"

namespace pim::app {
namespace {

constexpr std::int64_t kMostFilesNamed = 8;  // of one import, where people read

const char* StateWords(ImportState state) {
  switch (state) {
    case ImportState::Running:
      return "running";
    case ImportState::Done:
      return "done";
    case ImportState::Interrupted:
      return "interrupted";
    case ImportState::Undone:
      return "undone";
    case ImportState::UndoneInPart:
      return "undone in part";
  }
  return "";
}

void VisitFilesOf(Session& session, const ImportEntry& import,
                  const std::function<void(const ImportedFile&)>& take) {
  const std::int32_t visited =
      HistoryOf(session).VisitFiles(import.number, [&take](const ImportedFile& file) {
        CheckInterrupt();
        take(file);
        return true;
      });
  if (visited < 0) session.Fail();
}

// As a shell takes it.
std::string Quoted(const std::string& word) {
  if (word.find_first_of(" '\"\\$`&|;<>()*?[]{}#~!") == std::string::npos) return word;
  std::string quoted = "'";
  for (const char c : word) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted += '\'';
}

// "contacts import '--group=Old phone'"
std::string CommandText(const ImportStart& start) {
  std::string text = Shown(WideFromUtf8(start.command));
  for (const std::string& option : start.options) {
    const std::string shown = Shown(WideFromUtf8(option));
    text.append(" ").append(Quoted(shown));
  }
  return text;
}

std::string CountsText(const ImportCounts& counts) {
  std::string text = Counted(counts.inFile, "record") + ", " + std::to_string(counts.stored) +
                     " new, " + std::to_string(counts.AlreadyThere()) + " already there, " +
                     std::to_string(counts.refused) + " refused";
  if (counts.otherKind != 0) text += ", " + std::to_string(counts.otherKind) + " of another kind";
  return text + "; " + Counted(counts.linesNotKept, "line") + " not kept\n";
}

// What became of it since; nothing for one that stands.
std::string StateLine(const ImportEntry& import, const LocalTimes& times) {
  if (import.state == ImportState::Done) return {};
  std::string line = std::string("  ") + StateWords(import.state);
  if (import.undone != 0) {
    line += " " + times.Moment(DateOfSeconds(import.undone)) + ": " +
            Counted(import.takenBack, "record") + " taken back";
  }
  return line + "\n";
}

void PrintImport(Session& session, const ImportEntry& import, const LocalTimes& times) {
  Print(std::to_string(import.number) + "  " + times.Moment(DateOfSeconds(import.began)) + "  " +
        CommandText(import.start) + "\n" + StateLine(import, times));
  if (import.files <= kMostFilesNamed) {
    VisitFilesOf(session, import, [](const ImportedFile& file) {
      Print("  " + ShownName(file.name) + ": " + CountsText(file.counts));
    });
  }
  if (import.files != 1)
    Print("  " + Counted(import.files, "file") + ": " + CountsText(import.counts));
}

void WriteCounts(JsonWriter& json, const ImportCounts& counts) {
  json.Field("in_file", counts.inFile);
  json.Field("new", counts.stored);
  json.Field("already_there", counts.AlreadyThere());
  json.Field("refused", counts.refused);
  json.Field("other_kind", counts.otherKind);
  json.Field("lines", counts.lines);
  json.Field("lines_not_kept", counts.linesNotKept);
}

void WriteStart(JsonWriter& json, const ImportEntry& import) {
  json.Field("number", import.number);
  json.Utf8Field("began", UtcText(import.began));
  json.Utf8Field("command", import.start.command);
  json.Array("options", import.start.options, [&json](const std::string& one) { json.Utf8(one); });
  json.Utf8Field("state", StateWords(import.state));
  json.Key("undone");
  import.undone == 0 ? json.Null() : json.Utf8(UtcText(import.undone));
  json.Field("taken_back", import.takenBack);
}

void WriteFile(JsonWriter& json, const ImportedFile& file) {
  json.StartObject();
  WriteNameOf(file, json);
  WriteCounts(json, file.counts);
  json.EndObject();
}

// Piece by piece, since an import may have had any number of files.
void PrintJson(Session& session, const ImportEntry& import) {
  JsonWriter json;
  const auto flush = [&json] {
    Print(json.text());
    json.ClearText();
  };
  json.StartObject();
  WriteStart(json, import);
  json.Key("files");
  json.StartArray();
  VisitFilesOf(session, import, [&](const ImportedFile& file) {
    WriteFile(json, file);
    flush();
  });
  json.EndArray();
  json.Key("totals");
  json.StartObject();
  json.Field("files", import.files);
  WriteCounts(json, import.counts);
  json.EndObject();
  json.EndObject();
  flush();
}

}  // namespace

std::string Sha256Text(const Sha256& sum) {
  static constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  if (sum == Sha256{}) return text;
  for (const std::uint8_t byte : sum) text.append({kDigits[byte >> 4], kDigits[byte & 15]});
  return text;
}

void WriteNameOf(const ImportedFile& file, JsonWriter& json) {
  const std::string sum = Sha256Text(file.sha256);
  json.Utf8Field("name", file.name);
  json.Field("bytes", file.bytes);
  json.Key("sha256");
  sum.empty() ? json.Null() : json.Utf8(sum);
  json.Field("kept", file.isKept);
}

ImportHistory& HistoryOf(Session& session) {
  ImportHistory* const history = session.store().History();
  if (history == nullptr) throw Failure(session.name() + ": remembers no imports");
  return *history;
}

std::vector<ImportEntry> ImportsOf(Session& session) {
  std::vector<ImportEntry> imports;
  const std::int32_t visited = HistoryOf(session).VisitImports([&](const ImportEntry& import) {
    imports.push_back(import);
    return true;
  });
  if (visited < 0) session.Fail();
  return imports;
}

std::vector<ImportEntry> ImportsOf(Session& session, std::optional<std::int32_t> number) {
  std::vector<ImportEntry> imports = ImportsOf(session);
  if (!number) return imports;
  std::erase_if(imports, [&](const ImportEntry& import) { return import.number != *number; });
  if (imports.empty()) {
    throw Failure("no import has the number " + std::to_string(*number) +
                  "; 'pimvobj history' tells which there are");
  }
  return imports;
}

int PrintHistory(const Options& options) {
  Session session(options, StoreAccess::ReadOnly);
  const StoreReading reading(session.store());
  if (!reading.IsOpen()) session.Fail();
  const std::vector<ImportEntry> imports = ImportsOf(session);
  if (options.listForm == ListForm::Json) {
    Print("{\"imports\": [");
    for (const ImportEntry& import : imports) {
      Print(&import == &imports.front() ? "\n" : ",\n");
      PrintJson(session, import);
    }
    Print(imports.empty() ? "]}\n" : "\n]}\n");
    return kDone;
  }
  if (imports.empty()) Complain("nothing has been imported yet");
  const LocalTimes times;
  for (const ImportEntry& import : imports) PrintImport(session, import, times);
  return kDone;
}

}  // namespace pim::app
