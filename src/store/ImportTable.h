// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "pim/store/ImportHistory.h"
#include "store/Statement.h"

namespace pim {

// The runs of imports and their files. Runs inside the caller's transaction.
class ImportTable {
 public:
  explicit ImportTable(Database& db);

  std::int32_t Begin(const ImportStart& start);
  // False when it isn't this process's any more: another one took it for given up, and undid it.
  [[nodiscard]] bool End(std::int32_t import);
  [[nodiscard]] bool Stands(std::int32_t import);
  // For one that this process has given up.
  void Interrupt(std::int32_t import);
  // The number that the next file gets, as long as nothing else is added.
  std::int64_t NextFile();
  void AddFile(std::int64_t file, std::int32_t import, std::int64_t original, std::string_view name,
               const ImportCounts& counts);

  std::int32_t Visit(const std::function<bool(const ImportEntry&)>& visitor);
  std::int32_t VisitFiles(std::optional<std::int32_t> import,
                          const std::function<bool(const ImportedFile&)>& visitor);
  // The content of a file; none for a number that no file has.
  std::optional<std::int64_t> OriginalOf(std::int64_t file);

  // The last one that stands, if only in part, or none.
  std::optional<std::int32_t> LastStanding();
  // None for a number that no import has.
  std::optional<ImportState> StateOf(std::int32_t import);
  void SetUndone(std::int32_t import, std::int64_t takenBack, std::int64_t stayed);

 private:
  // From the columns process, undone and stayed, of which `process` is the first.
  ImportState StateIn(Statement& row, int process);

  Database& db_;
  std::string process_;  // this one, once it has begun an import
  Statement begin_;
  Statement end_;
  Statement stands_;
  Statement nextFile_;
  Statement addFile_;
  Statement all_;
  Statement files_;
  Statement filesOf_;
  Statement originalOf_;
  Statement lastStanding_;
  Statement state_;
  Statement setUndone_;
};

}  // namespace pim
