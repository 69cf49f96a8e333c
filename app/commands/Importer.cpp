#include "app/commands/Importer.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <utility>

#include "app/input/Inputs.h"
#include "app/input/Interrupt.h"
#include "app/input/TextReading.h"
#include "app/output/Output.h"
#include "pim/records/ContactGroups.h"
#include "pim/support/ParseFailure.h"

namespace pim::app {
namespace {

constexpr auto kCommitInterval = std::chrono::milliseconds(700);

}  // namespace

Importer::Importer(const Options& options, std::vector<std::string_view> extensions,
                   std::string_view noun, TextForm form, ByteOrderMark mark)
    : options_(options),
      extensions_(std::move(extensions)),
      noun_(noun),
      form_(form),
      mark_(mark),
      session_(options, StoreAccess::Create),
      progress_(options.quiet) {
  if (form == TextForm::VCard) pictures_.emplace(session_.store(), session_.path());
}

int Importer::Run() {
  const std::int32_t groupsBefore = GroupCount();
  const std::vector<std::string> files = AllFiles();
  for (const std::string& file : files) {
    CheckInterrupt();
    if (IsStream(file)) Commit();  // whoever writes it may take long, and others wait for the store
    if (!ReadFile(file)) continue;
    Begin();
    ImportFile(file);
    if (std::chrono::steady_clock::now() >= commitAt_) Commit();
  }
  Commit();
  progress_.Clear();
  Print(Summary(GroupCount() - groupsBefore));
  return status_;
}

// Told in one line: what the files held, and what else was done.
std::string Importer::Summary(long long newGroups) const {
  const long long there = done_.inText - done_.stored - done_.otherKind - done_.refused;
  std::string line = Counted(done_.stored, noun_) + " imported: " + std::to_string(done_.inText) +
                     " in " + Counted(done_.files, "file") + ", " + std::to_string(done_.stored) +
                     " new, " + std::to_string(there) + " already there, " +
                     std::to_string(done_.refused) + " refused";
  if (done_.otherKind != 0) line += ", " + std::to_string(done_.otherKind) + " of another kind";
  if (refusedFiles_ != 0) line += "; " + Counted(refusedFiles_, "file") + " refused";
  if (done_.pictures != 0) line += "; " + Counted(done_.pictures, "picture") + " kept";
  if (newGroups > 0) line += "; " + Counted(newGroups, "group") + " made";
  if (session_.isNew()) line += "; the store is " + ShownName(session_.path());
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

void Importer::Begin() {
  if (transaction_) return;
  transaction_.emplace(session_.store());
  if (!transaction_->IsOpen()) session_.Fail();
  commitAt_ = std::chrono::steady_clock::now() + kCommitInterval;
}

// A file that can't be read adds no records to the counts: nobody knows how many are in it.
bool Importer::ReadFile(const std::string& path) {
  try {
    ReadInput(path, mark_, text_);
    return true;
  } catch (const Failure& failure) {
    FailFile(failure.what(), 0);
  } catch (const FileError& failure) {
    FailFile(failure.what(), 0);
  }
  return false;
}

void Importer::ImportFile(const std::string& path) {
  const auto bytes = static_cast<std::int64_t>(text_.view().size());
  long long inText = 0;
  Outcome outcome;
  const auto show = [&] {
    const long long files = done_.files + open_.files;
    const long long records = done_.inText + open_.inText + inText;
    progress_.Show(bytesDone_,
                   [&] { return Counted(files, "file") + ", " + Counted(records, "record"); });
  };
  try {
    ++open_.files;
    StoreTransaction savepoint(session_.store());
    if (!savepoint.IsOpen()) session_.Fail();
    const std::int64_t before = bytesDone_;
    FileCounts counts = StoreText(
        text_.view(),
        [&](const FileCounts& soFar) {
          inText = soFar.inText;
          bytesDone_ = before + soFar.bytes;
          CheckInterrupt();
          show();
        },
        {[&outcome](const TextNotice& notice) { outcome.notices.push_back(notice); }, {}});
    bytesDone_ = before + bytes;
    inText = counts.inText;
    if (!savepoint.Commit()) session_.Fail();
    static_cast<void>(messages_.Take());  // notices say it better
    if (!outcome.notices.empty()) progress_.Clear();
    TellMessages(path, outcome, {});
    if (inText == 0) return RefuseAsNothing(path);
    open_.inText += std::exchange(inText, 0);
    open_.stored += counts.stored;
    open_.otherKind += counts.otherKind;
    std::ranges::move(counts.pictures, std::back_inserter(unpublished_));
    progress_.Clear();
    TellVersion(path, text_.view(), form_);
    show();
  } catch (ParseFailure) {
    progress_.Clear();
    TellRejection(path, outcome);
    Refuse(inText, kRejected);
  } catch (const Failure& failure) {
    FailFile(failure.what(), inText);
  } catch (const FileError& failure) {
    FailFile(std::string(failure.what()) + "; nothing of " + ShownName(path) + " is imported",
             inText);
  }
}

// Reads the text once more, which tells the place.
void Importer::TellRejection(const std::string& path, Outcome& outcome) {
  const auto goOn = [](const auto&) {
    CheckInterrupt();
    return true;
  };
  outcome.result = form_ == TextForm::VCard ? ReadContacts(text_.view(), goOn)
                                            : ReadCalendars(text_.view(), goOn);
  outcome.messages = messages_.Take();
  TellMessages(path, outcome, "; nothing of this file is imported");
}

void Importer::RefuseAsNothing(const std::string& path) {
  progress_.Clear();
  TellNothingBegins(path, noun_, text_.view(), form_);
  Refuse(0, kRejected);
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
  if (pictures_) pictures_->Publish(unpublished_);
  open_.pictures = std::ssize(unpublished_);
  if (!transaction_->Commit()) session_.Fail();
  if (pictures_) pictures_->Committed();
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
