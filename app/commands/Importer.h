// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "app/commands/FormatAccount.h"
#include "app/commands/ImportAccount.h"
#include "app/commands/ImportDiary.h"
#include "app/commands/RejectsFile.h"
#include "app/commands/Retries.h"
#include "app/commands/Session.h"
#include "app/input/PictureStaging.h"
#include "app/input/PreparedText.h"
#include "app/input/TextReading.h"
#include "app/output/Messages.h"
#include "app/output/Progress.h"
#include "pim/records/ForwardingStore.h"
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
// is committed about once a second. A failure doesn't stop the files behind it. What the store
// loses in passing is done again from the last commit on: all that comes of a file stays within the
// importer until then.
class Importer {
 public:
  using ProgressCall = std::function<void(const FileCounts&)>;

  // `noun` names one record in messages. The session must outlive this.
  Importer(Session& session, const Options& options, std::vector<std::string_view> extensions,
           std::string_view noun, TextForm form, ByteOrderMark mark);
  Importer(const Importer&) = delete;
  Importer& operator=(const Importer&) = delete;
  virtual ~Importer() = default;

  // Imports all, tells the counts and gives the exit status.
  int Run();

 protected:
  const Options& options() const { return options_; }
  const Session& session() const { return session_; }
  // The handle that texts are stored with.
  std::int32_t db() const { return binding_.db(); }

 private:
  // Passes all on, and counts the groups that are new. Others may make some meanwhile.
  class CountedGroups final : public ForwardingStore {
   public:
    explicit CountedGroups(RecordStore& store) : ForwardingStore(store) {}
    std::int32_t SaveContactGroups(CContactGroups& groups, bool saveFlag) override;

    long long made = 0;
  };
  struct Totals {
    long long files = 0;
    long long inText = 0;
    long long stored = 0;
    long long otherKind = 0;
    long long refused = 0;
    long long pictures = 0;
    long long groups = 0;
  };
  // What has come of the files so far.
  struct State {
    std::size_t next = 0;  // the file that is next
    Totals totals;
    long long refusedFiles = 0;
    std::int64_t bytesDone = 0;
    int status = kDone;
    bool hasBegun = false;  // the diary
  };
  // The same with what it has left elsewhere, to go back to.
  struct Mark {
    State state;
    ImportAccount::Mark account;
    std::int64_t rejects = 0;
    std::size_t warnings = 0;
    std::size_t pictures = 0;
    bool inTransaction = false;
  };

  // Stores one text in the open transaction. Throws kParseFailure, Failure or FileError, after all
  // of which the text is taken back.
  virtual FileCounts StoreText(NarrowStringView text, const ProgressCall& progress,
                               const TextObserver& observer) = 0;

  void SetPictureReader();
  void FindFiles();
  void CheckTargets() const;
  std::string Summary() const;
  void ImportAll();
  bool Step();
  void Begin();
  void Commit();
  Mark Here() const;
  void GoBackTo(const Mark& mark);
  void GoBack();
  void GiveUp(const Failure& failure);

  bool ReadFile(const std::string& path, bool isStream);
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

  const Options& options_;
  std::vector<std::string_view> extensions_;
  std::string_view noun_;
  TextForm form_;
  ByteOrderMark mark_;
  Session& session_;
  CountedGroups records_;
  StoreBinding binding_;
  // Where the texts can hold pictures: those of an import, or of one that is only looked at.
  std::optional<PictureStaging> pictures_;
  std::optional<PrivatePictures> looked_;
  std::optional<HeldWarnings> held_;  // ahead of the progress, whose line goes first
  Progress progress_;
  Messages messages_;
  ImportAccount account_;
  std::optional<RejectsFile> rejects_;
  std::unique_ptr<ImportDiary> diary_;
  std::vector<std::string> files_;
  ByteBuffer bytes_;  // of the file; one piece of memory for all of them
  // What is read of it, where it was prepared, and what was lost of files by that.
  std::optional<PreparedText> prepared_;
  FormatAccount preparing_{"record", "prepared", std::nullopt, false};
  // The file whose bytes these are, where they can't be read again.
  std::optional<std::size_t> stream_;
  std::optional<StoreTransaction> transaction_;
  std::chrono::steady_clock::time_point commitAt_;
  std::vector<WideString> unpublished_;
  Retries retries_;
  State now_;
  Mark begun_;      // ahead of the last step
  Mark committed_;  // behind the last commit
};

}  // namespace pim::app
