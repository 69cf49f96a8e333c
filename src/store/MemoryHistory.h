// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <deque>
#include <memory>
#include <unordered_map>

#include "pim/store/ImportHistory.h"
#include "store/MemoryTables.h"

namespace pim {

// The history of a store in memory. Originals are kept as they are.
class MemoryHistory final : public ImportHistory {
 public:
  explicit MemoryHistory(MemoryTables& tables)
      : tables_(tables), current_(tables.services.current) {}

  std::int32_t BeginImport(const ImportStart& start) override;
  bool BeginFile(std::string_view name, NarrowStringView bytes) override;
  bool AddLines(std::span<const RecordLines> lines) override;
  bool EndFile(const ImportCounts& counts, bool keepsBytes) override;
  bool AddRefusedFile(std::string_view name, NarrowStringView bytes,
                      const ImportCounts& counts) override;
  bool EndImport() override;
  bool KeepsOriginals() override { return keepsOriginals_; }
  bool SetKeepsOriginals(bool keeps) override;
  std::int32_t VisitImports(const std::function<bool(const ImportEntry&)>& visitor) override;
  std::int32_t VisitFiles(std::optional<std::int32_t> import,
                          const std::function<bool(const ImportedFile&)>& visitor) override;
  std::int32_t FindOrigin(StoredKind kind, std::int32_t key, RecordOrigin& origin) override;
  bool ReadOriginal(std::int64_t file,
                    const std::function<bool(NarrowStringView piece)>& take) override;
  std::int32_t DropOriginals(std::optional<std::int32_t> import) override;
  std::int32_t Undo(const UndoOptions& options, UndoResult& result) override;

 private:
  struct Original {
    std::int64_t bytes;
    std::shared_ptr<const NarrowString> content;  // null unless it is kept
  };
  struct File {
    ImportedFile told;
    Original* original = nullptr;  // none until the file has ended
  };
  // What goes when an import is undone, but for its links.
  struct Doomed {
    KeySet contacts;
    KeySet items;
    KeySet groups;
  };

  // Runs `change` in a transaction of its own.
  template <class Change>
  bool Store(Change change);
  ImportEntry* Find(std::int32_t import);
  std::int64_t AddFile(std::string_view name);
  void SetFile(std::int64_t file, NarrowStringView bytes, bool keepsBytes,
               const ImportCounts& counts);
  Original& OriginalOf(NarrowStringView bytes, bool keeps);

  Doomed Plan(const UndoOptions& options, UndoResult& result);
  bool HasOtherMembers(std::int32_t group, const Doomed& doomed, std::int32_t import) const;
  void Apply(const Doomed& doomed, const UndoResult& result);

  MemoryTables& tables_;
  CurrentImport& current_;
  std::deque<ImportEntry> imports_;  // by their numbers; files and counts aren't told here
  std::deque<File> files_;           // the same
  std::unordered_map<Fingerprint, Original, FingerprintHash> originals_;  // by their content
  bool keepsOriginals_ = true;
};

}  // namespace pim
