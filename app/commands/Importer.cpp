#include "app/commands/Importer.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <utility>

#include "app/input/Inputs.h"
#include "app/input/Interrupt.h"
#include "app/input/TextReading.h"
#include "app/output/Fields.h"
#include "app/output/ItemText.h"
#include "app/output/Output.h"
#include "pim/records/ContactGroups.h"
#include "pim/support/ParseFailure.h"
#include "platform/CodePages.h"

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

long long RecordsIn(const RejectedParts& rejected) {
  return std::ranges::count_if(rejected.parts,
                               [](const RejectedPart& part) { return part.object.has_value(); });
}

// The lines of a text by those of the text without its rejected parts.
class LineMap {
 public:
  explicit LineMap(const std::vector<RejectedPart>& parts) {
    std::int64_t left = 0;
    for (const RejectedPart& part : parts) {
      left += part.lastLine - part.firstLine + 1;
      rows_.push_back({part.lastLine + 1 - left, left});
    }
  }
  std::int64_t Original(std::int64_t line) const {
    const auto next = std::ranges::upper_bound(rows_, line, {}, &Row::first);
    return next == rows_.begin() ? line : line + std::prev(next)->left;
  }

 private:
  struct Row {
    std::int64_t first;  // line behind a part
    std::int64_t left;   // lines that are left out ahead of it
  };
  std::vector<Row> rows_;
};

}  // namespace

Importer::Importer(const Options& options, std::vector<std::string_view> extensions,
                   std::string_view noun, TextForm form, ByteOrderMark mark)
    : options_(options),
      extensions_(std::move(extensions)),
      noun_(noun),
      form_(form),
      mark_(mark),
      session_(options, StoreAccess::Create),
      progress_(options.quiet),
      account_(form, options.report, options.force) {
  if (options.rejects) rejects_.emplace(*options.rejects, options.force);
  if (form == TextForm::VCard) pictures_.emplace(session_.store(), session_.path());
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
  Commit();
  progress_.Clear();
  Print(Summary(GroupCount() - groupsBefore));
  Print(account_.Summary());
  account_.Publish();
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
  ++open_.files;
  account_.BeginFile(path);
  if (Store(path, text_.view(), {})) return;
  progress_.Clear();
  const RejectedParts rejected = RejectedPartsOf(text_.view(), form_);
  if (rejects_ && rejected.records != 0) return ImportRest(path, rejected);
  account_.EndFile();
  TellRejection(path);
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
  try {
    StoreTransaction savepoint(session_.store());
    if (!savepoint.IsOpen()) session_.Fail();
    FileCounts counts = StoreText(text,
                                  [&](const FileCounts& soFar) {
                                    inText = soFar.inText;
                                    bytesDone_ = before + soFar.bytes;
                                    CheckInterrupt();
                                    show();
                                  },
                                  {[&](const TextNotice& notice) {
                                     outcome.notices.push_back(notice);
                                     outcome.notices.back().line = lines.Original(notice.line);
                                   },
                                   [this](const AccountEntry& entry) { account_.Take(entry); }});
    bytesDone_ = before + bytes;
    inText = counts.inText;
    if (!rejected.parts.empty()) rejects_->Add(text_.view(), rejected.parts);
    account_.EndFile();
    if (!savepoint.Commit()) session_.Fail();
    if (inText != 0) account_.CountFile();
    static_cast<void>(messages_.Take());  // notices say it better
    if (!outcome.notices.empty()) progress_.Clear();
    TellMessages(path, outcome, text, {});
    if (inText == 0 && rejected.parts.empty()) {
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
    FailFile(std::string(failure.what()) + "; nothing of " + ShownName(path) + " is imported",
             inText + RecordsIn(rejected));
  }
  return true;
}

// Reads the text anew without the records that are rejected.
void Importer::ImportRest(const std::string& path, const RejectedParts& rejected) {
  account_.TakeBack();
  account_.BeginFile(path, rejected.parts);
  const long long refused = refusedFiles_;
  const NarrowString rest = WithoutParts(text_.view(), rejected.parts);
  if (!Store(path, rest, rejected)) {
    TellRejection(path);
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
  outcome.result = form_ == TextForm::VCard ? ReadContacts(text_.view(), goOn, observer)
                                            : ReadCalendars(text_.view(), goOn, observer);
  outcome.messages = messages_.Take();
  TellMessages(path, outcome, text_.view(),
               rejects_ ? "; nothing of this file is imported"
                        : "; nothing of this file is imported; --rejects FILE takes the others");
}

void Importer::TellPutAside(const std::string& path, const RejectedParts& rejected) {
  for (const RejectedPart& part : rejected.parts) {
    const std::string property = part.property.empty() ? "" : ShownHead(part.property) + ": ";
    Complain(ShownName(path) + ":" + std::to_string(part.line) + ": " + property +
             "rejected: " + std::string(TextOf(part.fault)) + ", " + OwnerOf(part) + "; put into " +
             ShownName(rejects_->path()));
  }
  static_cast<void>(messages_.Take());
}

// "in the card of Ann Berg", by what stands ahead of the fault.
std::string Importer::OwnerOf(const RejectedPart& part) {
  if (!part.object) return "outside all records";
  const NarrowStringView head = text_.view().substr(part.offset, part.lineOffset - part.offset);
  std::string noun = "card";
  WideString name;
  if (form_ == TextForm::VCard) {
    static_cast<void>(ReadContacts(head, [&name](const CContact& contact) {
      name = DisplayName(contact);
      return true;
    }));
  } else {
    noun = NounOf(static_cast<CalendarType>(*part.object));
    static_cast<void>(ReadCalendars(head, [&name](const CCalendar& item) {
      name = (item.summary.empty() ? item.description : item.summary).view();
      return true;
    }));
  }
  if (name.empty())
    return "in the " + noun + " that begins in line " + std::to_string(part.firstLine);
  return "in the " + noun + " of " + ShownInOneLine(name);
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
