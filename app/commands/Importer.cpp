#include "app/commands/Importer.h"

#include <algorithm>
#include <iterator>

#include "app/input/Inputs.h"
#include "app/input/Interrupt.h"
#include "app/input/TextKind.h"
#include "app/output/Output.h"
#include "pim/support/ParseFailure.h"
#include "platform/Visible.h"

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
      session_(options),
      progress_(options.quiet) {
  if (form == TextForm::VCard) pictures_.emplace(session_.store(), session_.path());
}

int Importer::Run() {
  for (const std::string& path : options_.paths) ImportPath(path);
  Commit();
  progress_.Clear();
  const long long there = done_.inText - done_.stored - done_.otherKind - done_.refused;
  std::string counts = Counted(done_.stored, noun_) + " imported: " + std::to_string(done_.inText) +
                       " in " + Counted(done_.files, "file") + ", " + std::to_string(done_.stored) +
                       " new, " + std::to_string(there) + " already there, " +
                       std::to_string(done_.refused) + " refused";
  if (done_.otherKind != 0) counts += ", " + std::to_string(done_.otherKind) + " of another kind";
  Print(counts + "\n");
  return status_;
}

void Importer::ImportPath(const std::string& path) {
  std::vector<std::string> files;
  try {
    files = FilesOf(path, extensions_);
  } catch (const Failure& failure) {
    progress_.Clear();
    Complain(failure.what());
    status_ = kFailed;
  }
  for (const std::string& file : files) {
    CheckInterrupt();
    if (file == "-") Commit();  // whoever writes it may take long, and others wait for the store
    if (!ReadFile(file)) continue;
    Begin();
    ImportFile(file);
    if (std::chrono::steady_clock::now() >= commitAt_) Commit();
  }
}

void Importer::Begin() {
  if (transaction_) return;
  transaction_.emplace(session_.store());
  if (!transaction_->IsOpen()) session_.Fail();
  commitAt_ = std::chrono::steady_clock::now() + kCommitInterval;
}

// A file that can't be read isn't refused: nobody knows what is in it.
bool Importer::ReadFile(const std::string& path) {
  try {
    ReadInput(path, mark_, text_);
    return true;
  } catch (const Failure& failure) {
    progress_.Clear();
    Complain(failure.what());
    Refuse(0, kFailed);
    return false;
  }
}

void Importer::ImportFile(const std::string& path) {
  long long inText = 0;
  try {
    ++open_.files;
    StoreTransaction savepoint(session_.store());
    if (!savepoint.IsOpen()) session_.Fail();
    FileCounts counts = StoreText(text_.view(), [&](const FileCounts& soFar) {
      inText = soFar.inText;
      CheckInterrupt();
      progress_.Show(done_.files + open_.files, done_.inText + open_.inText + inText);
    });
    inText = counts.inText;
    if (!savepoint.Commit()) session_.Fail();
    open_.inText += counts.inText;
    open_.stored += counts.stored;
    open_.otherKind += counts.otherKind;
    std::ranges::move(counts.pictures, std::back_inserter(unpublished_));
    TellMessages(path, {});
    if (counts.inText == 0) {
      const std::string hint = LooksLike(text_.view(), form_);
      progress_.Clear();
      Complain(ShownName(path) + ": no " + std::string(noun_) + " begins in it" +
               (hint.empty() ? "" : ": " + hint));
    }
    progress_.Show(done_.files + open_.files, done_.inText + open_.inText);
  } catch (ParseFailure) {
    TellMessages(path, "; nothing of this file is imported");
    Refuse(inText, kRejected);
  } catch (const Failure& failure) {
    progress_.Clear();
    Complain(failure.what());
    Refuse(inText, kFailed);
  } catch (const FileError& failure) {
    progress_.Clear();
    Complain(std::string(failure.what()) + "; nothing of " + ShownName(path) + " is imported");
    Refuse(inText, kFailed);
  }
}

void Importer::TellMessages(const std::string& path, std::string_view consequence) {
  const std::vector<std::u16string> texts = messages_.Take();
  if (texts.empty()) return;
  progress_.Clear();
  for (const std::u16string& text : texts) {
    Complain(ShownName(path) + ": " + VisibleUtf8(text, LineFeeds::Kept) +
             (&text == &texts.back() ? std::string(consequence) : ""));
  }
}

// A file or a store that fails weighs more than a text that is rejected.
void Importer::Refuse(long long inText, int status) {
  open_.inText += inText;
  open_.refused += inText;
  if (status_ != kFailed) status_ = status;
}

void Importer::Commit() {
  if (!transaction_) return;
  if (pictures_) pictures_->Publish(unpublished_);
  if (!transaction_->Commit()) session_.Fail();
  if (pictures_) pictures_->Committed();
  transaction_.reset();
  unpublished_.clear();
  done_.files += open_.files;
  done_.inText += open_.inText;
  done_.stored += open_.stored;
  done_.otherKind += open_.otherKind;
  done_.refused += open_.refused;
  open_ = {};
}

}  // namespace pim::app
