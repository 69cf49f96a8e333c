// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pim/store/ImportHistory.h"
#include "store/ImportUndo.h"
#include "store/StoreSettings.h"
#include "store/StoreTransactions.h"

namespace pim {

// The history of a store in a database. A store of an earlier version, open for reading alone, has
// none.
class SqlHistory final : public ImportHistory {
 public:
  SqlHistory(StoreTransactions& transactions, bool hasTables, TableServices& services,
             ContactTable& contacts, ItemTable& items, GroupTable& groups);

  std::int32_t BeginImport(const ImportStart& start) override;
  bool BeginFile(std::string_view name, NarrowStringView bytes) override;
  bool AddLines(std::span<const RecordLines> lines) override;
  bool EndFile(const ImportCounts& counts, bool keepsBytes) override;
  bool AddRefusedFile(std::string_view name, NarrowStringView bytes,
                      const ImportCounts& counts) override;
  bool EndImport() override;
  bool KeepsOriginals() override;
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
  void CheckImport(std::optional<std::int32_t> import);

  StoreTransactions& transactions_;
  bool hasTables_;
  TableServices& services_;
  StoreSettings settings_;
  ImportTable imports_;
  OriginalTable originals_;
  OriginTable contactOrigins_;
  OriginTable itemOrigins_;
  ImportUndo undo_;
};

}  // namespace pim
