// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// What an importer does with one file.
#include <algorithm>
#include <iterator>
#include <utility>

#include "app/commands/Importer.h"
#include "app/commands/RefusedRecords.h"
#include "app/input/Interrupt.h"
#include "app/input/TextReading.h"
#include "app/output/Output.h"
#include "pim/support/ParseFailure.h"

namespace pim::app {

NarrowStringView Importer::text() const {
  const NarrowStringView whole = prepared_ ? prepared_->text() : bytes_.view();
  return mark_ == ByteOrderMark::Skipped ? WithoutMark(whole) : whole;
}

void Importer::ImportFile(const std::string& path) {
  ++now_.totals.files;
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
    const long long files = now_.totals.files;
    const long long records = now_.totals.inText + inText;
    progress_.Show(now_.bytesDone,
                   [&] { return Counted(files, "file") + ", " + Counted(records, "record"); });
  };
  const std::int64_t before = now_.bytesDone;
  const LineMap lines(rejected.parts, prepared_ ? &*prepared_ : nullptr);
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
    now_.bytesDone = before + soFar.bytes;
    CheckInterrupt();
    show();
  };
  try {
    std::optional<StoreTransaction> savepoint(std::in_place, session_.records());
    if (!savepoint->IsOpen()) session_.Fail();
    records_.made = 0;
    diary_->BeginFile(path, bytes_.view(), lines);
    FileCounts counts = StoreText(text, goOn, {noteLine, takeEntry, takeSaved});
    now_.bytesDone = before + bytes;
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
    now_.totals.inText += std::exchange(inText, 0);
    now_.totals.stored += counts.stored;
    now_.totals.otherKind += counts.otherKind;
    now_.totals.groups += records_.made;
    std::ranges::move(counts.pictures, std::back_inserter(unpublished_));
    progress_.Clear();
    TellVersion(path, text, form_);
    show();
  } catch (ParseFailure) {
    now_.bytesDone = before;
    static_cast<void>(messages_.Take());
    return false;
  } catch (const PassingFailure&) {
    throw;  // the file is done again
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
  const long long refused = now_.refusedFiles;
  const NarrowString rest = WithoutParts(text(), rejected.parts);
  if (!Store(path, rest, rejected)) {
    TellRejection(path);
    NoteRefused(path, rejected.records);
    Refuse(rejected.records, kRejected);
  }
  if (now_.refusedFiles != refused) return;
  TellPutAside(path, rejected);
  now_.totals.inText += RecordsIn(rejected);
  now_.totals.refused += RecordsIn(rejected);
  now_.status = Worse(now_.status, kRejected);
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
  now_.totals.inText += inText;
  now_.totals.refused += inText;
  ++now_.refusedFiles;
  now_.status = Worse(now_.status, status);
}

}  // namespace pim::app
