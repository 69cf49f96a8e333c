// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/ImportTable.h"

#include <limits>
#include <stdexcept>

#include "store/Digest.h"
#include "store/HistoryRules.h"
#include "store/SqlText.h"

namespace pim {
namespace {

// One option a line; a backslash and "n" stand for a line feed in an option, two backslashes for
// one.
std::string JoinedLines(const std::vector<std::string>& options) {
  std::string text;
  for (const std::string& option : options) {
    for (const char c : option) {
      if (c == '\n') {
        text += "\\n";
      } else {
        if (c == '\\') text += '\\';
        text += c;
      }
    }
    text += '\n';
  }
  return text;
}

std::vector<std::string> LinesOf(std::string_view text) {
  std::vector<std::string> options;
  std::string option;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\n') {
      options.push_back(std::move(option));
      option.clear();
    } else if (text[i] == '\\' && i + 1 < text.size()) {
      option += text[++i] == 'n' ? '\n' : text[i];
    } else {
      option += text[i];
    }
  }
  return options;
}

// The columns that ReadCounts reads.
constexpr const char* kCounts = "in_file, stored, refused, other_kind, lines, lines_not_kept";
constexpr const char* kSums =
    "CAST(sum(in_file) AS BIGINT), CAST(sum(stored) AS BIGINT), CAST(sum(refused) AS BIGINT), "
    "CAST(sum(other_kind) AS BIGINT), CAST(sum(lines) AS BIGINT), CAST(sum(lines_not_kept) AS "
    "BIGINT)";

ImportCounts ReadCounts(const Statement& row, int column) {
  return {row.Integer(column),     row.Integer(column + 1), row.Integer(column + 2),
          row.Integer(column + 3), row.Integer(column + 4), row.Integer(column + 5)};
}

std::string SelectFiles() {
  return "SELECT import_file_id, import_id, name, bytes, sha256, is_kept, " + std::string(kCounts) +
         " FROM ImportFiles LEFT JOIN Originals USING (original_id)";
}

}  // namespace

ImportTable::ImportTable(Database& db)
    : db_(db),
      begin_(db, "INSERT INTO Imports (import_id, command, options, began, process) VALUES (" +
                     db.NextNumberSql(
                         "Imports", {"Imports", "ImportFiles", "ImportedGroups", "ImportedLinks"}) +
                     ", ?, ?, ?, ?) RETURNING import_id"),
      end_(db,
           "UPDATE Imports SET process = ?2 WHERE import_id = ?1 AND process = ?3 AND undone "
           "IS NULL"),
      stands_(db, "SELECT 1 FROM Imports WHERE import_id = ? AND process = ? AND undone IS NULL"),
      nextFile_(db, "SELECT " + db.NextNumberSql("ImportFiles", {"ImportFiles", "ContactOrigins",
                                                                 "CalendarOrigins"})),
      addFile_(db, "INSERT INTO ImportFiles (import_file_id, import_id, original_id, name, " +
                       std::string(kCounts) + ") VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
      all_(db,
           "SELECT import_id, process, undone, stayed, command, options, began, taken_back, "
           "count(import_file_id), " +
               std::string(kSums) +
               " FROM Imports LEFT JOIN ImportFiles USING (import_id) GROUP BY 1 ORDER BY 1"),
      files_(db, SelectFiles() + " ORDER BY 1"),
      filesOf_(db, SelectFiles() + " WHERE import_id = ? ORDER BY 1"),
      originalOf_(db, "SELECT original_id FROM ImportFiles WHERE import_file_id = ?"),
      lastStanding_(db, "SELECT max(import_id) FROM Imports WHERE undone IS NULL OR stayed > 0"),
      state_(db, "SELECT process, undone, stayed FROM Imports WHERE import_id = ?"),
      setUndone_(db,
                 "UPDATE Imports SET undone = ?2, taken_back = coalesce(taken_back, 0) + ?3, "
                 "stayed = ?4 WHERE import_id = ?1") {}

std::int32_t ImportTable::Begin(const ImportStart& start) {
  const std::string options = JoinedLines(start.options);
  process_ = db_.NewImportMark();
  begin_.BindText(1, start.command);
  begin_.BindText(2, options);
  begin_.Bind(3, SecondsNow());
  begin_.BindText(4, process_);
  Rows rows(begin_);
  const std::int64_t number = rows.Next() ? begin_.Integer(0) : 0;
  if (number > std::numeric_limits<std::int32_t>::max())
    throw std::length_error("no number is left for another import");
  return static_cast<std::int32_t>(number);
}

bool ImportTable::End(std::int32_t import) {
  end_.Bind(1, std::int64_t{import});
  end_.BindNull(2);
  end_.BindText(3, process_);
  return end_.RunChanging() > 0;
}

void ImportTable::Interrupt(std::int32_t import) {
  end_.Bind(1, std::int64_t{import});
  end_.BindText(2, "");
  end_.BindText(3, process_);
  static_cast<void>(end_.RunChanging());  // at once, since there is no transaction
}

bool ImportTable::Stands(std::int32_t import) {
  stands_.Bind(1, std::int64_t{import});
  stands_.BindText(2, process_);
  Rows rows(stands_);
  return rows.Next();
}

std::int64_t ImportTable::NextFile() {
  Rows rows(nextFile_);
  return rows.Next() ? nextFile_.Integer(0) : 1;
}

void ImportTable::AddFile(std::int64_t file, std::int32_t import, std::int64_t original,
                          std::string_view name, const ImportCounts& counts) {
  int index = 0;
  for (const std::int64_t number : {file, std::int64_t{import}, original})
    addFile_.Bind(++index, number);
  addFile_.BindText(++index, name);
  for (const std::int64_t number : {counts.inFile, counts.stored, counts.refused, counts.otherKind,
                                    counts.lines, counts.linesNotKept}) {
    addFile_.Bind(++index, number);
  }
  addFile_.Run();
}

ImportState ImportTable::StateIn(Statement& row, int process) {
  if (!row.IsNull(process + 1))
    return row.Integer(process + 2) == 0 ? ImportState::Undone : ImportState::UndoneInPart;
  if (row.IsNull(process)) return ImportState::Done;
  return db_.IsImporting(row.Text(process)) ? ImportState::Running : ImportState::Interrupted;
}

std::int32_t ImportTable::Visit(const std::function<bool(const ImportEntry&)>& visitor) {
  std::int32_t visited = 0;
  for (Rows rows(all_); rows.Next();) {
    ImportEntry entry;
    entry.number = static_cast<std::int32_t>(all_.Integer(0));
    entry.state = StateIn(all_, 1);
    entry.undone = all_.Integer(2);
    entry.start.command = all_.Text(4);
    entry.start.options = LinesOf(all_.Text(5));
    entry.began = all_.Integer(6);
    entry.takenBack = all_.Integer(7);
    entry.files = all_.Integer(8);
    entry.counts = ReadCounts(all_, 9);
    ++visited;
    if (!visitor(entry)) break;
  }
  return visited;
}

std::int32_t ImportTable::VisitFiles(std::optional<std::int32_t> import,
                                     const std::function<bool(const ImportedFile&)>& visitor) {
  Statement& files = import ? filesOf_ : files_;
  if (import) files.Bind(1, std::int64_t{*import});
  std::int32_t visited = 0;
  for (Rows rows(files); rows.Next();) {
    ImportedFile file;
    file.number = files.Integer(0);
    file.import = static_cast<std::int32_t>(files.Integer(1));
    file.name = files.Text(2);
    file.bytes = files.Integer(3);
    file.sha256 = DigestFrom(files.Bytes(4));
    file.isKept = files.Integer(5) != 0;
    file.counts = ReadCounts(files, 6);
    ++visited;
    if (!visitor(file)) break;
  }
  return visited;
}

std::optional<std::int64_t> ImportTable::OriginalOf(std::int64_t file) {
  originalOf_.Bind(1, file);
  Rows rows(originalOf_);
  return rows.Next() ? std::optional(originalOf_.Integer(0)) : std::nullopt;
}

std::optional<std::int32_t> ImportTable::LastStanding() {
  Rows rows(lastStanding_);
  if (!rows.Next() || lastStanding_.IsNull(0)) return std::nullopt;
  return static_cast<std::int32_t>(lastStanding_.Integer(0));
}

std::optional<ImportState> ImportTable::StateOf(std::int32_t import) {
  state_.Bind(1, std::int64_t{import});
  Rows rows(state_);
  return rows.Next() ? std::optional(StateIn(state_, 0)) : std::nullopt;
}

void ImportTable::SetUndone(std::int32_t import, std::int64_t takenBack, std::int64_t stayed) {
  setUndone_.Bind(1, std::int64_t{import});
  setUndone_.Bind(2, SecondsNow());
  setUndone_.Bind(3, takenBack);
  setUndone_.Bind(4, stayed);
  setUndone_.Run();
}

}  // namespace pim
