// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/Importer.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <utility>

#include "app/commands/ImportPreview.h"
#include "app/commands/RefusedRecords.h"
#include "app/input/Inputs.h"
#include "app/input/Interrupt.h"
#include "app/input/TextReading.h"
#include "app/output/Output.h"
#include "pim/records/ContactGroups.h"
#include "pim/support/FileNames.h"
#include "pim/support/ParseFailure.h"
#include "support/CallerIdPictures.h"

namespace pim::app {
namespace {

constexpr auto kCommitInterval = std::chrono::milliseconds(700);

bool AreOneFile(const std::string& one, const std::string& other) {
  std::error_code error;
  if (std::filesystem::equivalent(one, other, error)) return true;
  const auto whole = [](const std::string& path) {
    std::error_code ignored;
    return std::filesystem::weakly_canonical(std::filesystem::absolute(path, ignored), ignored);
  };
  return whole(one) == whole(other);
}

}  // namespace

Importer::Importer(const Options& options, std::vector<std::string_view> extensions,
                   std::string_view noun, TextForm form, ByteOrderMark mark)
    : options_(options),
      extensions_(std::move(extensions)),
      noun_(noun),
      form_(form),
      mark_(mark),
      session_(options.dryRun ? Session(options, Session::Preview())
                              : Session(options, StoreAccess::Create)),
      progress_(options.quiet),
      account_(form, options.report, options.force),
      diary_(options.dryRun ? PreviewDiary(session_, options, form, progress_)
                            : HistoryDiary(session_, options)) {
  if (options.rejects) rejects_.emplace(*options.rejects, options.force);
  if (form == TextForm::VCard) SetPictureReader();
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
    if (bytes.empty() && session_.hasFile()) bytes = session_.store().ReadPicture(name);
    if (!bytes.empty()) return bytes;
    return ReadPictureFile(NativePath(WideString(callerIdFolder).append(u"\\").append(name)));
  });
}

int Importer::Run() {
  const std::int32_t groupsBefore = GroupCount();
  const std::vector<std::string> files = AllFiles();
  CheckTargets(files);
  for (const std::string& file : files) {
    CheckInterrupt();
    if (IsStream(file)) Commit();  // whoever writes it may take long, and others wait for the store
    if (!ReadFile(file)) continue;
    Begin();
    ImportFile(file);
    if (std::chrono::steady_clock::now() >= commitAt_) Commit();
  }
  if (hasBegun_ || options_.dryRun) diary_->End();
  Commit();
  progress_.Clear();
  if (options_.listForm != ListForm::Json) {
    Print(Summary(GroupCount() - groupsBefore));
    Print(account_.Summary());
  }
  account_.Publish();
  return status_;
}

// Told in one line: what the files held, and what else was done.
std::string Importer::Summary(long long newGroups) const {
  const long long there = done_.inText - done_.stored - done_.otherKind - done_.refused;
  std::string line = Counted(done_.stored, noun_) +
                     (options_.dryRun ? " would be imported: " : " imported: ") +
                     std::to_string(done_.inText) + " in " + Counted(done_.files, "file") + ", " +
                     std::to_string(done_.stored) + " new, " + std::to_string(there) +
                     " already there, " + std::to_string(done_.refused) + " refused";
  if (done_.otherKind != 0) line += ", " + std::to_string(done_.otherKind) + " of another kind";
  if (refusedFiles_ != 0) line += "; " + Counted(refusedFiles_, "file") + " refused";
  const std::string_view willBe = options_.dryRun ? " would be " : " ";
  if (done_.pictures != 0)
    line.append("; ").append(Counted(done_.pictures, "picture")).append(willBe).append("kept");
  if (newGroups > 0)
    line.append("; ").append(Counted(newGroups, "group")).append(willBe).append("made");
  if (session_.isNew() && !options_.dryRun) line += "; the store is " + ShownName(session_.path());
  return line + "\n";
}

std::int32_t Importer::GroupCount() {
  if (form_ != TextForm::VCard) return 0;
  CContactGroups groups;
  const std::int32_t count = groups.OpenFromDB(session_.db());
  if (count < 0) session_.Fail();
  return count;
}

// The files of all paths, and how much there is to read.
std::vector<std::string> Importer::AllFiles() {
  std::vector<std::string> files;
  std::int64_t bytes = 0;
  for (const std::string& path : options_.operands) {
    try {
      for (std::string& file : FilesOf(path, extensions_)) {
        std::error_code error;
        const auto size = std::filesystem::file_size(file, error);
        if (!error) bytes += static_cast<std::int64_t>(size);
        files.push_back(std::move(file));
      }
    } catch (const Failure& failure) {
      CheckInterrupt();
      Complain(failure.what());
      status_ = kFailed;
    }
  }
  progress_.SetTotal(bytes);
  return files;
}

// What is written must take the place of nothing that is read or kept.
void Importer::CheckTargets(const std::vector<std::string>& files) const {
  for (const auto& target : {options_.rejects, options_.report}) {
    if (!target) continue;
    if (AreOneFile(*target, session_.path())) throw Failure(ShownName(*target) + ": is the store");
    for (const std::string& file : files) {
      if (AreOneFile(*target, file))
        throw Failure(ShownName(*target) + ": is one of the files to read");
    }
  }
  if (options_.rejects && options_.report && AreOneFile(*options_.rejects, *options_.report))
    throw Failure(ShownName(*options_.report) + ": is named for the rejects too");
}

void Importer::Begin() {
  if (transaction_) return;
  transaction_.emplace(session_.records());
  if (!transaction_->IsOpen()) session_.Fail();
  if (!std::exchange(hasBegun_, true)) diary_->Begin();
  commitAt_ = std::chrono::steady_clock::now() + kCommitInterval;
}

// A file that can't be read adds no records to the counts: nobody knows how many are in it.
bool Importer::ReadFile(const std::string& path) {
  try {
    ReadInput(path, ByteOrderMark::Kept, bytes_);
    return true;
  } catch (const Failure& failure) {
    FailFile(failure.what(), 0);
  } catch (const FileError& failure) {
    FailFile(failure.what(), 0);
  }
  return false;
}

NarrowStringView Importer::text() const {
  return mark_ == ByteOrderMark::Skipped ? WithoutMark(bytes_.view()) : bytes_.view();
}

void Importer::ImportFile(const std::string& path) {
  ++open_.files;
  account_.BeginFile(path);
  if (Store(path, text(), {})) return;
  progress_.Clear();
  const RejectedParts rejected = RejectedPartsOf(text(), form_);
  if (options_.rejects && rejected.records != 0) return ImportRest(path, rejected);
  account_.EndFile();
  TellRejection(path);
  NoteRefused(path, rejected.records);
  Refuse(rejected.records, kRejected);
}

bool Importer::Store(const std::string& path, NarrowStringView text,
                     const RejectedParts& rejected) {
  const auto bytes = static_cast<std::int64_t>(text.size());
  long long inText = 0;
  Outcome outcome;
  const auto show = [&] {
    const long long files = done_.files + open_.files;
    const long long records = done_.inText + open_.inText + inText;
    progress_.Show(bytesDone_,
                   [&] { return Counted(files, "file") + ", " + Counted(records, "record"); });
  };
  const std::int64_t before = bytesDone_;
  const LineMap lines(rejected.parts);
  const auto noteLine = [&](const TextNotice& notice) {
    outcome.notices.push_back(notice);
    outcome.notices.back().line = lines.Original(notice.line);
  };
  const auto takeEntry = [this](const AccountEntry& entry) {
    account_.Take(entry);
    diary_->Take(entry);
  };
  const auto takeSaved = [this](std::span<const SavedRecord> records) { diary_->Take(records); };
  const auto goOn = [&](const FileCounts& soFar) {
    inText = soFar.inText;
    bytesDone_ = before + soFar.bytes;
    CheckInterrupt();
    show();
  };
  try {
    std::optional<StoreTransaction> savepoint(std::in_place, session_.records());
    if (!savepoint->IsOpen()) session_.Fail();
    diary_->BeginFile(path, bytes_.view(), lines);
    FileCounts counts = StoreText(text, goOn, {noteLine, takeEntry, takeSaved});
    bytesDone_ = before + bytes;
    inText = counts.inText;
    account_.EndFile();
    static_cast<void>(messages_.Take());  // notices say it better
    const bool isNothing = inText == 0 && rejected.parts.empty();
    if (!isNothing) {
      if (rejects_ && !rejected.parts.empty() && !options_.dryRun)
        rejects_->Add(this->text(), rejected.parts);
      diary_->AddRejected(this->text(), rejected.parts);
      diary_->EndFile(CountsOf(counts, rejected));
      if (!savepoint->Commit()) session_.Fail();
      if (inText != 0) account_.CountFile();
    }
    if (!outcome.notices.empty()) progress_.Clear();
    TellMessages(path, outcome, text, {});
    if (isNothing) {
      savepoint.reset();
      RefuseAsNothing(path);
      return true;
    }
    open_.inText += std::exchange(inText, 0);
    open_.stored += counts.stored;
    open_.otherKind += counts.otherKind;
    std::ranges::move(counts.pictures, std::back_inserter(unpublished_));
    progress_.Clear();
    TellVersion(path, text, form_);
    show();
  } catch (ParseFailure) {
    bytesDone_ = before;
    static_cast<void>(messages_.Take());
    return false;
  } catch (const Failure& failure) {
    account_.TakeBack();
    FailFile(failure.what(), inText + RecordsIn(rejected));
  } catch (const FileError& failure) {
    account_.TakeBack();
    NoteRefused(path, inText + RecordsIn(rejected));
    FailFile(std::string(failure.what()) + "; nothing of " + ShownName(path) + " is imported",
             inText + RecordsIn(rejected));
  }
  return true;
}

ImportCounts Importer::CountsOf(const FileCounts& counts, const RejectedParts& rejected) const {
  const AccountTotals& totals = account_.FileTotals();
  ImportCounts all;
  all.refused = RecordsIn(rejected);
  all.inFile = counts.inText + all.refused;
  all.stored = counts.stored;
  all.otherKind = counts.otherKind;
  all.lines = totals.lines;
  all.linesNotKept = totals.changed + totals.dropped + totals.unread;
  return all;
}

// Reads the text anew without the records that are rejected.
void Importer::ImportRest(const std::string& path, const RejectedParts& rejected) {
  account_.TakeBack();
  account_.BeginFile(path, rejected.parts);
  const long long refused = refusedFiles_;
  const NarrowString rest = WithoutParts(text(), rejected.parts);
  if (!Store(path, rest, rejected)) {
    TellRejection(path);
    NoteRefused(path, rejected.records);
    Refuse(rejected.records, kRejected);
  }
  if (refusedFiles_ != refused) return;
  TellPutAside(path, rejected);
  open_.inText += RecordsIn(rejected);
  open_.refused += RecordsIn(rejected);
  status_ = Worse(status_, kRejected);
}

// Reads the text once more, which tells the place.
void Importer::TellRejection(const std::string& path) {
  const auto goOn = [](const auto&) {
    CheckInterrupt();
    return true;
  };
  Outcome outcome;
  const TextObserver observer{
      [&outcome](const TextNotice& notice) { outcome.notices.push_back(notice); }, {}};
  outcome.result = form_ == TextForm::VCard ? ReadContacts(text(), goOn, observer)
                                            : ReadCalendars(text(), goOn, observer);
  outcome.messages = messages_.Take();
  TellMessages(path, outcome, text(),
               options_.rejects
                   ? "; nothing of this file is imported"
                   : "; nothing of this file is imported; --rejects FILE takes the others");
}

void Importer::TellPutAside(const std::string& path, const RejectedParts& rejected) {
  for (const RejectedPart& part : rejected.parts) {
    const std::string property = part.property.empty() ? "" : ShownHead(part.property) + ": ";
    Complain(ShownName(path) + ":" + std::to_string(part.line) + ": " + property +
             "rejected: " + std::string(TextOf(part.fault)) + ", " + OwnerOf(part, text(), form_) +
             (options_.dryRun ? "; would be put into " : "; put into ") +
             ShownName(*options_.rejects));
  }
  static_cast<void>(messages_.Take());
}

void Importer::RefuseAsNothing(const std::string& path) {
  progress_.Clear();
  TellNothingBegins(path, noun_, text(), form_);
  NoteRefused(path, 0);
  Refuse(0, kRejected);
}

void Importer::NoteRefused(const std::string& path, long long inText) {
  ImportCounts counts;
  counts.inFile = inText;
  counts.refused = inText;
  counts.lines = account_.FileTotals().lines;
  counts.linesNotKept = counts.lines;
  diary_->Refuse(path, bytes_.view(), text(), counts);
}

// What fails once the program was asked to end is no failure of the file.
void Importer::FailFile(std::string_view problem, long long inText) {
  CheckInterrupt();
  progress_.Clear();
  Complain(problem);
  Refuse(inText, kFailed);
}

// A file or a store that fails weighs more than a text that is rejected.
void Importer::Refuse(long long inText, int status) {
  open_.inText += inText;
  open_.refused += inText;
  ++refusedFiles_;
  status_ = Worse(status_, status);
}

void Importer::Commit() {
  if (!transaction_) return;
  open_.pictures = std::ssize(unpublished_);
  if (!transaction_->Commit()) session_.Fail();
  if (pictures_) pictures_->Publish(unpublished_);
  if (looked_)
    for (const WideString& name : unpublished_) looked_->Remove(name);
  transaction_.reset();
  unpublished_.clear();
  done_.files += open_.files;
  done_.inText += open_.inText;
  done_.stored += open_.stored;
  done_.otherKind += open_.otherKind;
  done_.refused += open_.refused;
  done_.pictures += open_.pictures;
  open_ = {};
}

}  // namespace pim::app
