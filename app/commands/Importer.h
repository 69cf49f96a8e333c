// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "app/commands/ImportAccount.h"
#include "app/commands/ImportDiary.h"
#include "app/commands/RejectsFile.h"
#include "app/commands/Session.h"
#include "app/input/PictureStaging.h"
#include "app/input/TextReading.h"
#include "app/output/Messages.h"
#include "app/output/Progress.h"
#include "support/TextFiles.h"

namespace pim::app {

// What one file brought.
struct FileCounts {
  long long inText = 0;
  long long stored = 0;     // the others are there already
  long long otherKind = 0;  // or of a kind that this import leaves out
  std::int64_t bytes = 0;   // of the text, read so far
  std::vector<WideString> pictures = {};
};

// Imports files one by one, each wholly or not at all: a savepoint for each in a transaction that
// is committed about once a second. A failure doesn't stop the files behind it.
class Importer {
 public:
  using ProgressCall = std::function<void(const FileCounts&)>;

  // `noun` names one record in messages.
  Importer(const Options& options, std::vector<std::string_view> extensions, std::string_view noun,
           TextForm form, ByteOrderMark mark);
  Importer(const Importer&) = delete;
  Importer& operator=(const Importer&) = delete;
  virtual ~Importer() = default;

  // Imports all, tells the counts and gives the exit status.
  int Run();

 protected:
  const Options& options() const { return options_; }
  Session& session() { return session_; }

 private:
  struct Totals {
    long long files = 0;
    long long inText = 0;
    long long stored = 0;
    long long otherKind = 0;
    long long refused = 0;
    long long pictures = 0;
  };

  // Stores one text in the open transaction. Throws kParseFailure, Failure or FileError, after all
  // of which the text is taken back.
  virtual FileCounts StoreText(NarrowStringView text, const ProgressCall& progress,
                               const TextObserver& observer) = 0;

  std::vector<std::string> AllFiles();
  std::int32_t GroupCount();
  void CheckTargets(const std::vector<std::string>& files) const;
  std::string Summary(long long newGroups) const;
  void Begin();
  void SetPictureReader();
  bool ReadFile(const std::string& path);
  // What is read of the file's bytes.
  NarrowStringView text() const;
  void ImportFile(const std::string& path);
  // False when the text is rejected. `rejected` was taken out of it.
  bool Store(const std::string& path, NarrowStringView text, const RejectedParts& rejected);
  ImportCounts CountsOf(const FileCounts& counts, const RejectedParts& rejected) const;
  void ImportRest(const std::string& path, const RejectedParts& rejected);
  void TellRejection(const std::string& path);
  void TellPutAside(const std::string& path, const RejectedParts& rejected);
  void RefuseAsNothing(const std::string& path);
  void FailFile(std::string_view problem, long long inText);
  // Of a file that was read, ahead of Refuse or FailFile.
  void NoteRefused(const std::string& path, long long inText);
  void Refuse(long long inText, int status);
  void Commit();

  const Options& options_;
  std::vector<std::string_view> extensions_;
  std::string_view noun_;
  TextForm form_;
  ByteOrderMark mark_;
  Session session_;
  // Where the texts can hold pictures: those of an import, or of one that is only looked at.
  std::optional<PictureStaging> pictures_;
  std::optional<PrivatePictures> looked_;
  Progress progress_;
  Messages messages_;
  ImportAccount account_;
  std::optional<RejectsFile> rejects_;
  std::unique_ptr<ImportDiary> diary_;
  bool hasBegun_ = false;  // the diary
  ByteBuffer bytes_;       // of the file; one piece of memory for all of them
  std::optional<StoreTransaction> transaction_;
  std::chrono::steady_clock::time_point commitAt_;
  std::vector<WideString> unpublished_;
  Totals open_;  // of the open transaction
  Totals done_;
  long long refusedFiles_ = 0;
  std::int64_t bytesDone_ = 0;
  int status_ = 0;
};

}  // namespace pim::app
