// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "records/RecordMap.h"
#include "store/ImportTable.h"
#include "store/KeyRanges.h"
#include "store/OriginTable.h"
#include "store/OriginalTable.h"
#include "store/StoreTransactions.h"

namespace pim {

// The import that is under way in this process, and what it brings. All of it goes back with the
// transactions in which it came.
class ImportRecorder final : public TransactionMember {
 public:
  explicit ImportRecorder(Database& db);

  bool IsOpen() const { return static_cast<bool>(import_); }
  std::int32_t Begin(const ImportStart& start);
  void BeginFile(std::string_view name, NarrowStringView bytes);
  void AddLines(std::span<const RecordLines> lines);
  // Both ahead of EndFile, and outside of the transaction that is only its own.
  void CheckEnd();
  void StoreOrigins();
  void EndFile(const ImportCounts& counts, bool keepsBytes);
  void AddRefusedFile(std::string_view name, NarrowStringView bytes, const ImportCounts& counts);
  void End();
  // Gives up what hasn't ended; no transaction is open.
  void Interrupt();

  // What is stored while a file is being read is its own. Keys are of new records.
  void ForgetKeys(StoredKind kind, std::int32_t first, std::int32_t last);
  void AddRecord(StoredKind kind, std::int32_t key, const Fingerprint& print);
  // A record of the import that the import itself changes.
  void ChangeRecord(StoredKind kind, std::int32_t key, const Fingerprint& print);
  // Records that are deleted, also of the file itself.
  void EraseRecords(std::int32_t first, std::int32_t last);
  void AddGroup(std::int32_t group);
  void AddLinks(std::span<const LinkRow> links);

  void Begun(std::size_t level) override;
  // A file ends in the transaction in which it began.
  void CheckCommit(std::size_t level) override;
  void Committed(std::size_t level) override;
  void RolledBack(std::size_t level) noexcept override;

 private:
  // What goes with the transaction of its level, which is 0 once that is committed for good.
  struct Bound {
    std::int64_t number = 0;  // 0: none
    std::size_t level = 0;

    explicit operator bool() const { return number != 0; }
    void Commit(std::size_t committed) {
      if (level == committed) --level;
    }
    bool GoesWith(std::size_t rolledBack) const { return number != 0 && level >= rolledBack; }
  };
  // A record of the file that has no row of its origin yet.
  struct Pending {
    StoredKind kind;
    OriginTable::Row row;
  };
  struct Ended {
    Bound import;
    Bound end;
    std::vector<std::int32_t> brought;
  };
  struct Change {
    StoredKind kind;
    std::int32_t key;
    Fingerprint print;
  };
  struct Mark {
    std::size_t saved;    // records of the file
    std::size_t told;     // of them, those that AddLines has passed
    std::size_t brought;  // contacts of the import
    std::size_t changes;  // of records of the file
  };

  std::int32_t Import() const { return static_cast<std::int32_t>(import_.number); }
  OriginTable& OriginsOf(StoredKind kind) {
    return kind == StoredKind::Contact ? contacts_ : items_;
  }
  void CheckFile(bool isOpen, const char* problem);
  void ForgetFile() noexcept;
  void ForgetImport() noexcept;
  void TakeBackEnds(std::size_t level) noexcept;

  Database& db_;
  ImportTable imports_;
  OriginalTable originals_;
  OriginTable contacts_;
  OriginTable items_;
  Statement insertGroup_;
  Statement forgetGroup_;
  Statement insertLink_;

  std::size_t level_ = 0;  // of the innermost open transaction
  Bound import_;
  std::vector<Ended> ended_;  // whose ends may be rolled back
  Bound file_;
  std::string name_;        // of the file
  NarrowStringView bytes_;  // the same
  std::vector<Pending> pending_;
  std::vector<Change> changes_;        // for records that came before, in their order
  KeyRanges erased_;                   // perhaps; of records of the file
  std::size_t stored_ = 0;             // of the file's records, those ahead of `pending_`
  std::size_t told_ = 0;               // the same, those that AddLines has passed
  std::vector<std::int32_t> brought_;  // contacts, in their order
  KeyRanges broughtKeys_;              // the same
  std::vector<Mark> marks_;            // one for each open transaction
};

}  // namespace pim
