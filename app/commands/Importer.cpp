// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/Importer.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "app/commands/ImportPreview.h"
#include "app/commands/Prepare.h"
#include "app/input/Inputs.h"
#include "app/input/Interrupt.h"
#include "app/output/Output.h"
#include "pim/support/FileNames.h"
#include "support/CallerIdPictures.h"

namespace pim::app {
namespace {

constexpr auto kCommitInterval = std::chrono::milliseconds(700);

}  // namespace

Importer::Importer(Session& session, const Options& options,
                   std::vector<std::string_view> extensions, std::string_view noun, TextForm form,
                   ByteOrderMark mark)
    : options_(options),
      extensions_(std::move(extensions)),
      noun_(noun),
      form_(form),
      mark_(mark),
      session_(session),
      records_(session.records()),
      binding_(records_),
      progress_(options.quiet),
      account_(form, options.report, options.force),
      diary_(options.dryRun ? PreviewDiary(session_, options, form, progress_)
                            : HistoryDiary(session_, options)) {
  if (options.rejects) rejects_.emplace(*options.rejects, options.force);
  if (form == TextForm::VCard) SetPictureReader();
}

std::int32_t Importer::CountedGroups::SaveContactGroups(CContactGroups& groups, bool saveFlag) {
  const std::int32_t saved = ForwardingStore::SaveContactGroups(groups, saveFlag);
  made += std::max(saved, 0);
  return saved;
}

// One that is only looked at puts pictures where temporary files are.
void Importer::SetPictureReader() {
  if (!options_.dryRun) {
    pictures_.emplace(session_.store());
    return;
  }
  const WideString callerIdFolder = GetCallerIdPath();
  looked_.emplace(TemporaryFolder());
  session_.preview()->SetPictureReader([this, callerIdFolder](WideStringView name) {
    NarrowString bytes = ReadCallerIdPicture(name);
    if (bytes.empty() && session_.hasStore()) bytes = session_.store().ReadPicture(name);
    if (!bytes.empty()) return bytes;
    return ReadPictureFile(NativePath(WideString(callerIdFolder).append(u"\\").append(name)));
  });
}

int Importer::Run() {
  FindFiles();
  CheckTargets();
  bool isWhole = true;
  try {
    ImportAll();
  } catch (const Failure& failure) {
    if (options_.dryRun) throw;
    GiveUp(failure);
    isWhole = false;
  }
  progress_.Clear();
  held_.reset();
  if (!isWhole && now_.next == 0) return now_.status;
  if (options_.listForm != ListForm::Json) {
    Print(Summary());
    Print(account_.Summary(options_.prepare));
  }
  account_.Publish();
  return now_.status;
}

// Told in one line: what the files held, and what else was done.
std::string Importer::Summary() const {
  const Totals& all = now_.totals;
  const long long there = all.inText - all.stored - all.otherKind - all.refused;
  const std::string willBe = options_.dryRun ? " would be " : " ";
  std::string line =
      Counted(all.stored, noun_) + willBe + "imported: " + std::to_string(all.inText) + " in " +
      Counted(all.files, "file") + ", " + std::to_string(all.stored) + " new, " +
      std::to_string(there) + " already there, " + std::to_string(all.refused) + " refused";
  if (all.otherKind != 0) line += ", " + std::to_string(all.otherKind) + " of another kind";
  if (now_.refusedFiles != 0) line += "; " + Counted(now_.refusedFiles, "file") + " refused";
  if (all.pictures != 0) line += "; " + Counted(all.pictures, "picture") + willBe + "kept";
  if (all.groups != 0) line += "; " + Counted(all.groups, "group") + willBe + "made";
  if (!options_.dryRun && session_.store().IsNew()) line += "; the store is " + session_.name();
  return line + "\n";
}

// The files of all paths, and how much there is to read.
void Importer::FindFiles() {
  std::int64_t bytes = 0;
  for (const std::string& path : options_.operands) {
    try {
      for (std::string& file : FilesOf(path, extensions_)) {
        std::error_code error;
        const auto size = std::filesystem::file_size(file, error);
        if (!error) bytes += static_cast<std::int64_t>(size);
        files_.push_back(std::move(file));
      }
    } catch (const Failure& failure) {
      CheckInterrupt();
      Complain(failure.what());
      now_.status = kFailed;
    }
  }
  progress_.SetTotal(bytes);
}

// What is written must take the place of nothing that is read or kept.
void Importer::CheckTargets() const {
  for (const auto& target : {options_.rejects, options_.report}) {
    if (!target) continue;
    if (session_.place().IsFile(*target)) throw Failure(ShownName(*target) + ": is the store");
    for (const std::string& file : files_) {
      if (AreOneFile(*target, file))
        throw Failure(ShownName(*target) + ": is one of the files to read");
    }
  }
  if (options_.rejects && options_.report && AreOneFile(*options_.rejects, *options_.report))
    throw Failure(ShownName(*options_.report) + ": is named for the rejects too");
}

void Importer::ImportAll() {
  // A preview tells each record at once, and what it reads isn't tried again.
  if (!options_.dryRun) held_.emplace();
  committed_ = Here();
  for (bool goesOn = true; goesOn;) {
    begun_ = Here();
    try {
      goesOn = Step();
    } catch (const PassingFailure& failure) {
      GoBack();
      retries_.Wait(failure);
    }
  }
}

// Imports the next file, or ends the import behind the last one; false then.
bool Importer::Step() {
  CheckInterrupt();
  if (now_.next == files_.size()) {
    if (now_.hasBegun || options_.dryRun) diary_->End();
    Commit();
    return false;
  }
  const std::string& file = files_[now_.next];
  // Whoever writes a stream may take long, and others wait for the store. It can't be read again
  // either, so that it gets a transaction of its own.
  const bool isStream = stream_ == now_.next || IsStream(file);
  if (isStream && committed_.state.next != now_.next) {
    Commit();
    return true;
  }
  if (ReadFile(file, isStream)) {
    Begin();
    ImportFile(file);
  }
  ++now_.next;
  if (isStream || (transaction_ && std::chrono::steady_clock::now() >= commitAt_)) Commit();
  return true;
}

// A file that can't be read adds no records to the counts: nobody knows how many are in it.
bool Importer::ReadFile(const std::string& path, bool isStream) {
  if (stream_ == now_.next) return true;
  stream_.reset();
  try {
    ReadInput(path, ByteOrderMark::Kept, bytes_);
    if (isStream) stream_ = now_.next;
    if (options_.prepare) {
      progress_.Clear();
      prepared_.emplace(bytes_.view(), options_.steps, TellPreparing(path, preparing_));
    }
    return true;
  } catch (const Failure& failure) {
    FailFile(failure.what(), 0);
  } catch (const FileError& failure) {
    FailFile(failure.what(), 0);
  }
  return false;
}

void Importer::Begin() {
  if (transaction_) return;
  transaction_.emplace(session_.records());
  if (!transaction_->IsOpen()) session_.Fail();
  if (!std::exchange(now_.hasBegun, true)) diary_->Begin();
  commitAt_ = std::chrono::steady_clock::now() + kCommitInterval;
}

// What came of the files until now is told.
void Importer::Commit() {
  if (transaction_) {
    if (!transaction_->Commit()) session_.Fail();
    retries_.Reset();
    transaction_.reset();
    now_.totals.pictures += std::ssize(unpublished_);
    if (pictures_) pictures_->Publish(unpublished_);
    if (looked_)
      for (const WideString& name : unpublished_) looked_->Remove(name);
    unpublished_.clear();
  }
  if (held_ && held_->size() != 0) {
    progress_.Clear();
    held_->Release();
  }
  committed_ = Here();
}

Importer::Mark Importer::Here() const {
  return {now_,
          account_.Here(),
          rejects_ ? rejects_->size() : 0,
          held_ ? held_->size() : 0,
          unpublished_.size(),
          transaction_.has_value()};
}

void Importer::GoBackTo(const Mark& mark) {
  now_ = mark.state;
  account_.GoBackTo(mark.account);
  unpublished_.resize(mark.pictures);
  if (held_) held_->Truncate(mark.warnings);
  if (rejects_) rejects_->Truncate(mark.rejects);
}

// To the beginning of the last step, where the files ahead of it can be committed, else to the last
// commit.
void Importer::GoBack() {
  progress_.Clear();
  GoBackTo(begun_);
  if (begun_.inTransaction && transaction_ && transaction_->IsOpen()) {
    try {
      Commit();
      return;
    } catch (const PassingFailure&) {
    }
  }
  transaction_.reset();
  GoBackTo(committed_);
}

// What was committed stays. What was said of the files behind it may tell why.
void Importer::GiveUp(const Failure& failure) {
  transaction_.reset();
  if (held_) committed_.warnings = held_->size();
  GoBackTo(committed_);
  now_.status = Worse(now_.status, kFailed);
  std::string message = failure.what();
  if (now_.next == 0) {
    message += "; nothing is imported";
  } else if (now_.next != files_.size()) {
    message += "; " + std::to_string(files_.size() - now_.next) + " of " +
               Counted(std::ssize(files_), "file") + " aren't imported, from " +
               ShownName(files_[now_.next]) + " on";
  }
  Complain(message);
}

}  // namespace pim::app
