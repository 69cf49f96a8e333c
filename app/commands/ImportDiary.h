// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <span>
#include <string>

#include "app/commands/LineMap.h"
#include "app/commands/LinesOfRecords.h"
#include "app/commands/Session.h"
#include "pim/store/ImportHistory.h"
#include "pim/stream/TextObserver.h"

namespace pim::app {

// What is kept of an import while it goes on: its entry in the store's history, or, for one that is
// only looked at, what is printed of each record. Operations throw Failure.
class ImportDiary {
 public:
  virtual ~ImportDiary() = default;

  // Behind the beginning of the first transaction.
  virtual void Begin() = 0;
  // A file and its own bytes, of which a text is read with the lines of `lines`, in the savepoint
  // that also holds EndFile. Both stay until then.
  void BeginFile(const std::string& path, NarrowStringView bytes, const LineMap& lines);
  void Take(const AccountEntry& entry) { recordLines_.Take(entry); }
  void Take(std::span<const SavedRecord> records);
  // Parts of the file that were taken out of the text.
  virtual void AddRejected(NarrowStringView, const std::vector<RejectedPart>&) {}
  virtual void EndFile(const ImportCounts& counts) = 0;
  // Nothing of a file is imported; what was begun of it counts no more. `text` is what would have
  // been read of its bytes.
  virtual void Refuse(const std::string& path, NarrowStringView bytes, NarrowStringView text,
                      const ImportCounts& counts) = 0;
  // Ahead of the last transaction's end.
  virtual void End() = 0;

 protected:
  virtual void StartFile(const std::string& path, NarrowStringView bytes) = 0;
  virtual void AddSaved(std::span<const RecordLines> records) = 0;

 private:
  const LineMap* lines_ = nullptr;
  LinesOfRecords recordLines_;
  std::vector<RecordLines> saved_;  // one piece of memory for all files
};

// For an import into a store.
std::unique_ptr<ImportDiary> HistoryDiary(Session& session, const Options& options);

}  // namespace pim::app
