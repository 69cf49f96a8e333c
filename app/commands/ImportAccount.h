// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "app/output/Account.h"
#include "app/output/ReportFile.h"
#include "pim/stream/TextRejects.h"

namespace pim::app {

// What an import makes of the lines of its files: counted for its last line, and in full for a
// report, if one is wanted.
class ImportAccount {
  struct Counts {
    AccountTotals totals;
    std::array<std::int64_t, std::size(kLosses)> entries{};  // by the first of their losses
    bool hasInvalidBytes = false;
    bool hasParts = false;  // some that weren't read
    int files = 0;
    std::string lastPath;
  };

 public:
  // `report` names the report's file. Throws Failure.
  ImportAccount(TextForm form, const std::optional<std::string>& report, bool force);

  // The account of one file, from its begin to its end. `parts` are those that aren't read: their
  // lines go between those of the entries, which are of the text without them.
  void BeginFile(const std::string& path, const std::vector<RejectedPart>& parts = {});
  void Take(const AccountEntry& entry);
  // Nothing of the file so far counts.
  void TakeBack();
  void EndFile();
  // What became of its lines.
  const AccountTotals& FileTotals() const { return file_.totals; }
  // The file is imported: its lines count.
  void CountFile();

  // What goes back with files that are done again.
  struct Mark {
    Counts done;
    std::int64_t reported = 0;  // bytes of the report
  };
  // Between two files, or two tries of one.
  Mark Here() const { return {done_, report_ ? report_->size() : 0}; }
  void GoBackTo(const Mark& mark);

  // "12 of 340 lines not kept (3 unknown properties, 9 types ignored); ..." with a line end; empty
  // when all were kept. `isPrepared` says that the lines are those of files that were prepared.
  std::string Summary(bool isPrepared = false) const;
  // Puts the report in its place. Throws Failure, also when it couldn't be written on the way: an
  // import goes on without it.
  void Publish();

 private:
  void TakeParts(std::int64_t line);
  void TakeMapped(const AccountEntry& entry);
  template <class Write>
  void ToReport(Write write);
  static void Count(const AccountEntry& entry, Counts& counts);

  TextForm form_;
  std::optional<ReportFile> report_;
  std::string problem_;          // why there is no report any more
  std::int64_t reportedTo_ = 0;  // the report's size ahead of the file
  std::int64_t verdictAt_ = 0;   // where it says whether the text is rejected
  std::optional<AccountJson> json_;
  bool isRejected_ = false;
  std::vector<RejectedPart> parts_;
  std::size_t nextPart_ = 0;
  std::int64_t lines_ = 0;    // of the file, up to the last entry
  std::int64_t record_ = -1;  // of the last entry
  Counts file_;
  Counts done_;
};

}  // namespace pim::app
