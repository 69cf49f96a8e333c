// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "store/SqlHistory.h"

namespace pim {

SqlHistory::SqlHistory(StoreTransactions& transactions, bool hasTables, TableServices& services,
                       ContactTable& contacts, ItemTable& items, GroupTable& groups)
    : transactions_(transactions),
      hasTables_(hasTables),
      services_(services),
      settings_(services.db),
      imports_(services.db),
      originals_(services.db),
      contactOrigins_(services.db, StoredKind::Contact),
      itemOrigins_(services.db, StoredKind::Item),
      undo_(services, contacts, items, groups) {}

std::int32_t SqlHistory::BeginImport(const ImportStart& start) {
  return transactions_.Store([&] { return services_.recorder.Begin(start); });
}

bool SqlHistory::BeginFile(std::string_view name, NarrowStringView bytes) {
  return transactions_.Succeeds([&] { services_.recorder.BeginFile(name, bytes); });
}

bool SqlHistory::AddLines(std::span<const RecordLines> lines) {
  return transactions_.Succeeds([&] { services_.recorder.AddLines(lines); });
}

bool SqlHistory::EndFile(const ImportCounts& counts, bool keepsBytes) {
  return transactions_.Succeeds([&] {
    services_.recorder.CheckEnd();
    services_.recorder.StoreOrigins();
  }) && transactions_.Store([&] {
    services_.recorder.EndFile(counts, keepsBytes);
    return 0;
  }) == 0;
}

bool SqlHistory::AddRefusedFile(std::string_view name, NarrowStringView bytes,
                                const ImportCounts& counts) {
  return transactions_.Store([&] {
    services_.recorder.AddRefusedFile(name, bytes, counts);
    return 0;
  }) == 0;
}

bool SqlHistory::EndImport() {
  return transactions_.Store([&] {
    services_.recorder.End();
    return 0;
  }) == 0;
}

bool SqlHistory::KeepsOriginals() {
  bool keeps = true;
  if (hasTables_) {
    static_cast<void>(
        transactions_.See([&] { return (keeps = settings_.KeepsOriginals()) ? 1 : 0; }));
  }
  return keeps;
}

bool SqlHistory::SetKeepsOriginals(bool keeps) {
  return transactions_.Store([&] {
    settings_.SetKeepsOriginals(keeps);
    return 0;
  }) == 0;
}

std::int32_t SqlHistory::VisitImports(const std::function<bool(const ImportEntry&)>& visitor) {
  if (!hasTables_) return 0;
  return transactions_.Read([&](auto& guard) {
    return imports_.Visit(
        [&](const ImportEntry& entry) { return guard([&] { return visitor(entry); }); });
  });
}

std::int32_t SqlHistory::VisitFiles(std::optional<std::int32_t> import,
                                    const std::function<bool(const ImportedFile&)>& visitor) {
  if (!hasTables_ && !import) return 0;
  return transactions_.Read([&](auto& guard) {
    CheckImport(import);
    return imports_.VisitFiles(
        import, [&](const ImportedFile& file) { return guard([&] { return visitor(file); }); });
  });
}

std::int32_t SqlHistory::FindOrigin(StoredKind kind, std::int32_t key, RecordOrigin& origin) {
  if (!hasTables_) return 0;
  OriginTable& origins = kind == StoredKind::Contact ? contactOrigins_ : itemOrigins_;
  return transactions_.See([&] { return origins.Find(key, origin) ? 1 : 0; });
}

bool SqlHistory::ReadOriginal(std::int64_t file,
                              const std::function<bool(NarrowStringView piece)>& take) {
  return transactions_.Read([&](auto& guard) {
    const std::optional<std::int64_t> original =
        hasTables_ ? imports_.OriginalOf(file) : std::nullopt;
    if (!original) services_.db.Fail(NoSuchImportedFile(file));
    originals_.Read(*original,
                    [&](NarrowStringView piece) { return guard([&] { return take(piece); }); });
    return 0;
  }) == 0;
}

std::int32_t SqlHistory::DropOriginals(std::optional<std::int32_t> import) {
  return transactions_.StoreAlone([&] {
    CheckImport(import);
    return originals_.Drop(import);
  });
}

std::int32_t SqlHistory::Undo(const UndoOptions& options, UndoResult& result) {
  if (options.dryRun) {
    return transactions_.Read([&](auto&) {
      if (!hasTables_) services_.db.Fail(kNothingToUndo);
      undo_.Plan(options, result);
      return 0;
    });
  }
  return transactions_.StoreAlone([&] {
    undo_.Plan(options, result);
    undo_.Apply(result);
    return 0;
  });
}

void SqlHistory::CheckImport(std::optional<std::int32_t> import) {
  if (import && !(hasTables_ && imports_.StateOf(*import)))
    services_.db.Fail(NoSuchImport(*import));
}

}  // namespace pim
