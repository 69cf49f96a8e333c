// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/ImportAccount.h"

#include <algorithm>

#include "app/output/Output.h"

namespace pim::app {
namespace {

// Of one length, so that the one can take the place of the other.
constexpr std::string_view kFalse = "false";
constexpr std::string_view kTrue = "true ";

}  // namespace

ImportAccount::ImportAccount(TextForm form, const std::optional<std::string>& report, bool force)
    : form_(form) {
  if (report) report_.emplace(*report, force);
}

template <class Write>
void ImportAccount::ToReport(Write write) {
  if (!report_) return;
  try {
    write(*report_);
  } catch (const Failure& failure) {
    problem_ = failure.what();
    report_.reset();
  }
}

void ImportAccount::BeginFile(const std::string& path, const std::vector<RejectedPart>& parts) {
  parts_ = parts;
  nextPart_ = 0;
  lines_ = 0;
  record_ = -1;
  isRejected_ = !parts.empty();
  file_ = {};
  file_.lastPath = path;
  file_.hasParts = !parts.empty();
  ToReport([&](ReportFile& report) {
    reportedTo_ = report.size();
    const std::string head = AccountJson::Head(path, form_, false);
    verdictAt_ = reportedTo_ + static_cast<std::int64_t>(head.rfind(kFalse));
    report.Append(head);
    json_.emplace(form_);
  });
}

void ImportAccount::Take(const AccountEntry& entry) {
  if (parts_.empty()) return TakeMapped(entry);
  AccountEntry mapped = entry;
  std::int64_t left = entry.last - entry.first + 1;
  while (left > 0) {
    TakeParts(lines_ + 1);
    mapped.first = lines_ + 1;
    mapped.last = lines_ + left;
    // Blank lines on both sides of a part are one entry to the reader.
    if (nextPart_ < parts_.size())
      mapped.last = std::min(mapped.last, parts_[nextPart_].firstLine - 1);
    left -= mapped.last - mapped.first + 1;
    TakeMapped(mapped);
  }
}

// The parts that begin at the line.
void ImportAccount::TakeParts(std::int64_t line) {
  for (; nextPart_ < parts_.size() && parts_[nextPart_].firstLine <= line; ++nextPart_) {
    const RejectedPart& part = parts_[nextPart_];
    AccountEntry entry;
    entry.first = part.firstLine;
    entry.last = part.lastLine;
    entry.record = record_;
    entry.name = part.property;
    entry.verdict = Verdict::Rejected;
    TakeMapped(entry);
    line = entry.last + 1;
  }
}

void ImportAccount::TakeMapped(const AccountEntry& entry) {
  lines_ = entry.last;
  record_ = entry.record;
  isRejected_ = isRejected_ || entry.verdict == Verdict::Rejected;
  Count(entry, file_);
  ToReport([&](ReportFile& report) { report.Append(json_->Text(entry)); });
}

void ImportAccount::Count(const AccountEntry& entry, Counts& counts) {
  counts.totals.Add(entry);
  if ((entry.why & LOSS_INVALID_BYTES) != 0) counts.hasInvalidBytes = true;
  if (entry.verdict != Verdict::Changed && entry.verdict != Verdict::Dropped) return;
  if (entry.why != 0) ++counts.entries[static_cast<std::size_t>(&FirstOf(entry.why) - kLosses)];
}

void ImportAccount::TakeBack() {
  ToReport([this](ReportFile& report) { report.Truncate(reportedTo_); });
  file_ = {};
}

void ImportAccount::EndFile() {
  TakeParts(lines_ + 1);
  ToReport([this](ReportFile& report) {
    report.Append(AccountJson::Tail(file_.totals));
    if (isRejected_) report.Overwrite(verdictAt_, kTrue);
  });
}

void ImportAccount::CountFile() {
  done_.totals += file_.totals;
  for (std::size_t i = 0; i < done_.entries.size(); ++i) done_.entries[i] += file_.entries[i];
  done_.hasInvalidBytes = done_.hasInvalidBytes || file_.hasInvalidBytes;
  if (file_.totals.changed + file_.totals.dropped == 0) return;
  ++done_.files;
  done_.hasParts = done_.hasParts || file_.hasParts;
  done_.lastPath = file_.lastPath;
}

void ImportAccount::GoBackTo(const Mark& mark) {
  ToReport([&mark](ReportFile& report) { report.Truncate(mark.reported); });
  file_ = {};
  done_ = mark.done;
}

std::string ImportAccount::Summary(bool isPrepared) const {
  const std::int64_t lost = done_.totals.changed + done_.totals.dropped;
  if (lost == 0) return {};
  std::string line =
      std::to_string(lost) + " of " + Counted(done_.totals.lines, "line") + " not kept";
  const char* mark = " (";
  for (std::size_t i = 0; i < done_.entries.size(); ++i) {
    if (done_.entries[i] == 0) continue;
    line.append(mark).append(std::to_string(done_.entries[i])).append(" ");
    line += done_.entries[i] == 1 ? kLosses[i].one : kLosses[i].many;
    mark = ", ";
  }
  line += "); ";
  // An inspection ends with the first line that is rejected.
  const bool isOneFile = done_.files == 1 && done_.lastPath != "-";
  const std::string file = isOneFile ? ShownName(done_.lastPath) : "FILE";
  line += done_.hasParts ? "--report FILE"
          : isPrepared   ? "pimvobj prepare " + file + " | pimvobj inspect --losses -"
                         : "pimvobj inspect --losses " + file;
  line += " tells each";
  if (done_.hasInvalidBytes) line += "; --code-page NAME reads texts of another charset than UTF-8";
  return line += '\n';
}

void ImportAccount::Publish() {
  ToReport([](ReportFile& report) { report.Publish(); });
  if (!problem_.empty()) throw Failure(problem_);
}

}  // namespace pim::app
