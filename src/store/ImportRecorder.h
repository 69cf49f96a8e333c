#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <span>

#include "records/RecordMap.h"
#include "store/ImportTable.h"
#include "store/OriginTable.h"
#include "store/OriginalTable.h"
#include "store/StoreTransactions.h"

namespace pim {

// Keys, as runs of following ones.
class KeyRanges {
 public:
  struct Range {
    std::int32_t first;
    std::int32_t last;
  };

  // Keys come mostly in ascending order.
  void Add(std::int32_t key);
  bool Holds(std::int32_t key) const;
  void Clear() { lasts_.clear(); }
  std::vector<Range> All() const;

 private:
  std::map<std::int32_t, std::int32_t> lasts_;  // of each run, by its first key
};

// The import that is under way in this process, and what it brings.
class ImportRecorder final : public TransactionMember {
 public:
  explicit ImportRecorder(Database& db);

  bool IsOpen() const { return import_ != 0; }
  std::int32_t Begin(const ImportStart& start, std::size_t level);
  void BeginFile(std::string_view name, NarrowStringView bytes, std::size_t level);
  void AddLines(std::span<const RecordLines> lines);
  void EndFile(const ImportCounts& counts, bool keepsBytes);
  void AddRefusedFile(std::string_view name, NarrowStringView bytes, const ImportCounts& counts);
  void End();
  // Gives up what hasn't ended.
  void Interrupt();

  // What is stored while a file is being read is its own.
  void AddRecord(StoredKind kind, std::int32_t key, const Fingerprint& print);
  void AddGroup(std::int32_t group);
  void AddLinks(std::span<const LinkRow> links);

  void Begun(std::size_t) override {}
  void Committed(std::size_t level) override;
  void RolledBack(std::size_t level) noexcept override;

 private:
  struct Pending {
    StoredKind kind;
    OriginTable::Row row;
  };

  void Store(const Pending& pending);
  void ForgetFile() noexcept;

  Database& db_;
  ImportTable imports_;
  OriginalTable originals_;
  OriginTable contacts_;
  OriginTable items_;
  Statement insertGroup_;
  Statement insertLink_;

  std::int32_t import_ = 0;
  std::size_t importLevel_ = 0;  // of the transaction that its row goes with; 0: it is committed
  std::int64_t file_ = 0;
  std::size_t fileLevel_ = 0;
  std::string name_;             // of the file
  NarrowStringView bytes_;       // the same
  std::deque<Pending> pending_;  // records whose lines aren't told yet
  KeyRanges broughtContacts_;    // by the import
};

}  // namespace pim
