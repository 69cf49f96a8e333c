// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "app/commands/FormatAccount.h"
#include "app/commands/Options.h"
#include "app/output/ReportFile.h"
#include "formats/RecordForm.h"
#include "pim/stream/TextHead.h"
#include "support/FileNames.h"

namespace pim::app {

// The form of text that has the records which a target is for.
TextForm RecordsOf(TargetForm target);

// Records on their way out in one of today's forms: into standard output, into a file that is there
// as a whole or not at all, or into a folder with one file a record. All of it throws Failure.
template <class Record>
class FormOutput {
 public:
  // Looks at the target first, so that nothing is done in vain. `path` is "-" for standard output.
  // `options.to` must be one of the forms that have such records.
  FormOutput(const Options& options, std::string path);

  void Add(const Record& record);
  // Ends the text, tells what was lost, and how many records there are. A text without any isn't
  // written. Gives the exit status.
  int End();

  std::int64_t count() const { return count_; }
  // Where what is lost on the way to the records may be told, too.
  FormatAccount& account() { return account_; }

 private:
  using Form = RecordForm<Record>;

  std::unique_ptr<Form> NewForm() const;
  void WriteOne(const Record& record, const TellFormatLoss& tell);
  void Write(bool all);
  void Tell(const std::string& line) const;

  const Options& options_;
  TargetForm target_;
  std::string path_;
  std::string columns_;  // of CSV, the text of their file
  FormatAccount account_;
  std::unique_ptr<Form> form_;      // of one text for all
  std::optional<ReportFile> file_;  // where that goes, unless to standard output
  UniqueNames names_;               // of a folder
  std::string text_;
  std::int64_t count_ = 0;
};

}  // namespace pim::app
