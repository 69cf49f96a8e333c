// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include "app/commands/Convert.h"

#include "app/commands/FileTarget.h"
#include "app/commands/FormOutput.h"
#include "app/commands/ImportAccount.h"
#include "app/commands/OptionValues.h"
#include "app/commands/Prepare.h"
#include "app/input/PictureStaging.h"
#include "app/input/TextReading.h"
#include "app/input/TextWindows.h"
#include "app/output/Output.h"
#include "app/output/Progress.h"

namespace pim::app {
namespace {

// What is read of files, and what becomes of it.
template <class Record>
class Converter {
 public:
  Converter(const Options& options, TextForm form)
      : options_(options),
        form_(form),
        output_(options, options.output.value_or("-")),
        pictures_(TemporaryFolder()),
        account_(form, std::nullopt, false),
        progress_(options.quiet) {}

  int Run() {
    int status = kDone;
    for (const std::string& path : options_.operands)
      status = Worse(status, ForInput([&] { return Convert(path); }));
    progress_.Clear();
    const std::string lost = account_.Summary(options_.prepare);
    if (!lost.empty()) Warn(lost);
    return Worse(status, output_.End());
  }

 private:
  int Convert(const std::string& path) {
    const std::unique_ptr<ByteSource> source = SourceOf(path, options_, output_.account());
    TextWindows windows(*source, form_);
    account_.BeginFile(path);
    const std::int64_t before = output_.count();
    int status = kDone;
    while (status == kDone && windows.Next()) status = ConvertWindow(path, windows);
    account_.EndFile();
    if (output_.count() != before) {
      account_.CountFile();
    } else if (status == kDone) {
      progress_.Clear();
      TellNothingBegins(path, form_ == TextForm::VCard ? "contact" : "item", windows.text(), form_);
      status = kRejected;
    }
    return status;
  }

  int ConvertWindow(const std::string& path, const TextWindows& windows) {
    const std::function<void(Record&)> take = [this](Record& record) {
      output_.Add(record);
      RemovePicture(record);
      progress_.Show(output_.count(), [this] { return Counted(output_.count(), "record"); });
    };
    Outcome outcome =
        ReadText(windows.text(), take, [this](const AccountEntry& entry) { account_.Take(entry); });
    return TellStretch(path, outcome, windows, form_, [this] { progress_.Clear(); });
  }

  void RemovePicture(const CContact& contact) { pictures_.Remove(contact.photo); }
  void RemovePicture(const CCalendar&) {}

  const Options& options_;
  TextForm form_;
  FormOutput<Record> output_;
  PrivatePictures pictures_;
  ImportAccount account_;
  Progress progress_;
};

}  // namespace

int ConvertFiles(const Options& options) {
  if (!options.to) throw WrongUsage("'convert' needs --to FORM");
  const TextForm form = RecordsOf(TargetFormOf(options));
  CheckTargets(options, options.operands);
  return form == TextForm::VCard ? Converter<CContact>(options, form).Run()
                                 : Converter<CCalendar>(options, form).Run();
}

}  // namespace pim::app
